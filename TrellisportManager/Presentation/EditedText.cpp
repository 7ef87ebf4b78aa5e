#include "Presentation/EditedText.h"

#include <QTextDocument>

namespace trellisport {

QString EditedText::of(QQuickTextDocument *document)
{
    QString text = document->textDocument()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    return text;
}

} // namespace trellisport
