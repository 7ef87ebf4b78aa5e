#include "EmptySpecimens.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTextStream>
#include <QtQml/qqmlextensionplugin.h>

#include <memory>

Q_IMPORT_QML_PLUGIN(TrellisportManager_PresentationPlugin)
Q_IMPORT_QML_PLUGIN(TrellisportGalleryPlugin)

namespace gallery = trellisport::gallery;

namespace {

QUrl source(const QString &type)
{
    return QUrl(QStringLiteral("qrc:/qt/qml/TrellisportGallery/%1.qml").arg(type));
}

int fail(const QString &sentence)
{
    QTextStream(stderr) << sentence << '\n';
    return 1;
}

/// Draws what is to have the keyboard again while it has it.
void drawFocused(QQuickWindow &window, const QQuickItem &page, QImage &picture)
{
    for (QQuickItem *place : gallery::places(page)) {
        auto *focused = place->parentItem()->property("keyboardAt").value<QQuickItem *>();
        if (focused != nullptr) {
            focused->forceActiveFocus(Qt::TabFocusReason);
            const QImage seen = window.grabWindow();
            const QRect part = gallery::partOf(picture, page, *place).marginsAdded({8, 8, 8, 8});
            QPainter painter(&picture);
            painter.drawImage(part.topLeft() / picture.devicePixelRatio(), seen.copy(part));
            focused->setFocus(false);
        }
    }
}

/// Draws each page, as high as it is, into a file of its own.
int draw(QQmlEngine &engine, const QDir &folder)
{
    if (!folder.mkpath(QStringLiteral("."))) {
        return fail(QStringLiteral("%1 can't be made.").arg(folder.path()));
    }
    QStringList problems;
    for (const char *name : {"Colors", "Text", "Controls", "Keyboard", "Rows", "Cards", "Bars"}) {
        const QString page = QLatin1String(name);
        QQmlComponent component(&engine, source(page + QStringLiteral("Page")));
        const std::unique_ptr<QObject> made(component.create());
        auto *item = qobject_cast<QQuickItem *>(made.get());
        if (!item) {
            return fail(component.errorString());
        }
        QQuickWindow window;
        item->setParentItem(window.contentItem());
        item->setWidth(item->implicitWidth());
        window.resize(static_cast<int>(item->width()), 1);
        window.show();
        window.requestActivate();
        // The first picture lays the columns out; only then is it known how high they are.
        (void)window.grabWindow();
        item->setHeight(item->implicitHeight());
        window.resize(static_cast<int>(item->width()), static_cast<int>(item->height()));
        QImage picture = window.grabWindow();
        drawFocused(window, *item, picture);
        for (const QString &empty : gallery::emptySpecimens(*item, picture)) {
            problems << QStringLiteral("%1: %2").arg(page, empty);
        }
        const QString file = folder.filePath(page.toLower() + QStringLiteral(".png"));
        if (!picture.save(file)) {
            return fail(QStringLiteral("%1 could not be written.").arg(file));
        }
        item->setParentItem(nullptr);
    }
    return problems.isEmpty() ? 0 : fail(problems.join(u'\n'));
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows every piece that screens are made of, in its states."));
    parser.addHelpOption();
    const QCommandLineOption drawOption(QStringLiteral("draw"),
                                        QStringLiteral("Draws them to PNG files instead."),
                                        QStringLiteral("folder"));
    parser.addOption(drawOption);
    parser.process(application);

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(":/qt/qml"));
    if (parser.isSet(drawOption)) {
        return draw(engine, QDir(parser.value(drawOption)));
    }
    engine.load(source(QStringLiteral("Gallery")));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
