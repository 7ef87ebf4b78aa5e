#include "Platform/Web/Fonts.h"

#include "Platform/Web/JsText.h"

#include <QDir>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QWindow>

#include <emscripten.h>

#include <utility>

// Script/Fonts.js
extern "C" void trellisport_font_families();

namespace trellisport::platform {

namespace {

/// What arrives of a font; its own memory, since it is filled from outside.
QByteArray content;

} // namespace

extern "C" EMSCRIPTEN_KEEPALIVE char *trellisport_font_memory(int size)
{
    content.resize(size);
    return content.data();
}

/// The toolkit lays out anew whatever is drawn with fonts, but only with the next frame, for which
/// it does not ask.
extern "C" EMSCRIPTEN_KEEPALIVE void trellisport_font()
{
    QFontDatabase::addApplicationFontFromData(std::exchange(content, {}));
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        window->requestUpdate();
    }
}

void loadFonts()
{
    for (const QFileInfo &file :
         QDir(QStringLiteral(":/console-fonts")).entryInfoList(QDir::Files)) {
        QFontDatabase::addApplicationFont(file.filePath());
    }
    trellisport_font_families();
    const QStringList later =
        QString::fromStdString(takeText()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &generic : {QStringLiteral("sans-serif"), QStringLiteral("monospace")}) {
        QFont::insertSubstitutions(generic, later);
    }
}

} // namespace trellisport::platform
