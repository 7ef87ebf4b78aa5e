#include "Live/LiveSources.h"
#include "Live/LiveWindow.h"
#include "Notifications/NotificationManager.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTextStream>
#include <QtQml/qqmlextensionplugin.h>

int main(int argc, char *argv[])
{
    using namespace trellisport;
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("The console with its QML from the sources, shown anew when one is saved.\n"
                       "TRELLISPORT_BASE_URL and TRELLISPORT_CA_FILE name the service. "
                       "It receives no messages."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("folder"),
                                 QStringLiteral("TrellisportManager of the sources"));
    parser.process(application);
    const QStringList folders = parser.positionalArguments();
    if (folders.size() != 1 || !QDir(folders.first()).exists()) {
        parser.showHelp(2);
    }
    live::LiveSources sources{QDir(QDir(folders.first()).absolutePath())};
    const live::LiveWindow window(sources, NotificationManager::shared());
    return QGuiApplication::exec();
}
