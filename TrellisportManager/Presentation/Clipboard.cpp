#include "Presentation/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace trellisport {

void Clipboard::copy(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace trellisport
