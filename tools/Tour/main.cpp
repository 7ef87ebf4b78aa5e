#include "Platform/Platform.h"
#include "Tour/Screens.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    using namespace trellisport;
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Draws every screen to PNG files, against a practice service that was "
                       "started with --control and is named by TRELLISPORT_BASE_URL."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("where the files go"));
    const QCommandLineOption sizeOption(QStringLiteral("size"),
                                        QStringLiteral("The window in points."),
                                        QStringLiteral("WIDTHxHEIGHT"), QStringLiteral("390x844"));
    parser.addOption(sizeOption);
    const QCommandLineOption textOption(QStringLiteral("text-scale"),
                                        QStringLiteral("How much larger than usual text is."),
                                        QStringLiteral("NUMBER"));
    parser.addOption(textOption);
    parser.process(application);
    const QStringList sides = parser.value(sizeOption).split(QLatin1Char('x'));
    const QSize size = sides.size() == 2 ? QSize(sides[0].toInt(), sides[1].toInt()) : QSize();
    if (parser.positionalArguments().size() != 1 || size.isEmpty()) {
        parser.showHelp(2);
    }
    if (parser.isSet(textOption)) {
        qputenv("TRELLISPORT_TEXT_SCALE", parser.value(textOption).toUtf8());
    }
    const QDir folder(parser.positionalArguments().first());
    if (!folder.mkpath(QStringLiteral("."))) {
        QTextStream(stderr) << folder.path() << " can't be made.\n";
        return 1;
    }
    const auto address =
        platform::Platform::current().environment().variable("TRELLISPORT_BASE_URL");
    const tour::ServiceControl service(QString::fromStdString(address.value_or("")));
    tour::Stage stage(size, folder);
    tour::drawDashboard(stage, service);
    tour::drawProjectsList(stage, service);
    tour::drawWorkspace(stage, service);
    tour::drawSettings(stage, service);
    QTextStream(stdout) << stage.drawn() << " pictures are in " << folder.path() << '\n';
    return 0;
}
