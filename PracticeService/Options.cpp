#include "PracticeService/Options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace trellisport::practice {

namespace {

const QString description = QStringLiteral(
    "Stands in for the real service: plays a freelancing agent with a portfolio of projects and\n"
    "serves it over HTTPS on 127.0.0.1, so that the console can be used on any machine.\n"
    "\n"
    "With --control these paths make things happen at once (POST, no body). EVENT is one of\n"
    "discover, progress, bid, award, reject, complete, work, error, message, decision, expire,\n"
    "report:\n"
    "  /control/tick?event=EVENT[&project=ID]      the agent does it now\n"
    "  /control/advance?seconds=N                  the agent's time jumps ahead\n"
    "  /control/fault?path=PATH[&kind=KIND][&status=N][&delay_ms=N][&times=N]\n"
    "                                              the next replies to the path fail or are late;\n"
    "                                              KIND is one of drop, reset, cut, slow, garbage\n"
    "  /control/trouble[?seed=N][&one_of=N][&silence_ms=N]\n"
    "                                              from now on one of N requests fails by chance\n"
    "  /control/troubles (GET)                     how many did, by kind\n"
    "  /control/writes (GET)                       every PUT and POST that arrived\n"
    "  /control/devices (GET)                      the device tokens received");

Notice complaint(const QString &sentence)
{
    return {sentence.toStdString(), 2};
}

template <typename Number>
std::optional<Notice> readNumber(const QCommandLineParser &parser, const QCommandLineOption &option,
                                 Number low, Number high, Number &value)
{
    if (!parser.isSet(option))
        return std::nullopt;
    const QString text = parser.value(option);
    const QString name = option.names().constFirst();
    bool whole = false;
    const double number = text.toDouble(&whole);
    if constexpr (std::is_integral_v<Number>) {
        value = static_cast<Number>(text.toLongLong(&whole));
    } else {
        value = number;
    }
    // Written so that "nan" fails too.
    if (!whole || !(value >= low && value <= high)) {
        return complaint(QStringLiteral("--%1 takes a number from %2 to %3, not \"%4\".")
                             .arg(name)
                             .arg(low)
                             .arg(high)
                             .arg(text));
    }
    return std::nullopt;
}

QString defaultDataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/trellisport-practice-service");
}

} // namespace

std::variant<Options, Notice> readOptions(const QStringList &arguments)
{
    const QCommandLineOption port(QStringLiteral("port"),
                                  QStringLiteral("Port to listen on; 0 takes a free one."),
                                  QStringLiteral("N"), QStringLiteral("8443"));
    const QCommandLineOption data(QStringLiteral("data"),
                                  QStringLiteral("Folder for the state and the certificates."),
                                  QStringLiteral("DIR"), defaultDataFolder());
    const QCommandLineOption app(
        QStringLiteral("app"),
        QStringLiteral("Folder with the console for browsers, to offer at /app/."),
        QStringLiteral("DIR"));
    const QCommandLineOption seed(
        QStringLiteral("seed"),
        QStringLiteral("The same seed gives the same portfolio. Counts only for a new folder."),
        QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption begin(
        QStringLiteral("begin"),
        QStringLiteral("When the agent's time begins, like 2026-03-09T08:15:00Z; now unless told. "
                       "Counts only for a new folder."),
        QStringLiteral("TIME"));
    const QCommandLineOption scale(
        QStringLiteral("scale"),
        QStringLiteral("N times the usual number of projects. Counts only for a new folder."),
        QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption speed(
        QStringLiteral("speed"),
        QStringLiteral("How fast the agent's time passes; 60: a minute a second, 0: stands still."),
        QStringLiteral("X"), QStringLiteral("1"));
    const QCommandLineOption control(QStringLiteral("control"),
                                     QStringLiteral("Offer the /control paths, for tests."));
    const QCommandLineOption verbose(QStringLiteral("verbose"),
                                     QStringLiteral("Name every request on standard error."));

    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    parser.addOptions({port, data, app, seed, begin, scale, speed, control, verbose});
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    if (!parser.parse(arguments)) {
        const QString error = parser.errorText();
        return complaint(error.endsWith(u'.') ? error : error + u'.');
    }
    if (parser.isSet(help))
        return Notice{parser.helpText().toStdString(), 0};
    if (parser.isSet(version)) {
        return Notice{(QCoreApplication::applicationName() + u' ' +
                       QCoreApplication::applicationVersion() + u'\n')
                          .toStdString(),
                      0};
    }
    if (!parser.positionalArguments().isEmpty()) {
        return complaint(QStringLiteral("Unexpected argument \"%1\".")
                             .arg(parser.positionalArguments().constFirst()));
    }

    Options options;
    long long seedNumber = 1;
    if (auto wrong = readNumber(parser, port, 0, 65535, options.port))
        return *wrong;
    if (auto wrong = readNumber(parser, seed, 0LL, 1'000'000'000'000LL, seedNumber))
        return *wrong;
    if (auto wrong = readNumber(parser, scale, 1, 1000, options.scale))
        return *wrong;
    if (auto wrong = readNumber(parser, speed, 0.0, 100000.0, options.speed))
        return *wrong;
    if (parser.isSet(begin)) {
        options.begin = momentOf(parser.value(begin).toStdString());
        if (!options.begin) {
            return complaint(
                QStringLiteral("--begin takes a time like 2026-03-09T08:15:00Z, not \"%1\".")
                    .arg(parser.value(begin)));
        }
    }
    if (parser.value(data).isEmpty())
        return complaint(QStringLiteral("--data takes a folder."));
    if (parser.isSet(app)) {
        if (parser.value(app).isEmpty())
            return complaint(QStringLiteral("--app takes a folder."));
        options.appFolder = QDir(parser.value(app)).absolutePath().toStdString();
    }
    options.seed = static_cast<std::uint64_t>(seedNumber);
    options.dataFolder = QDir(parser.value(data)).absolutePath().toStdString();
    options.control = parser.isSet(control);
    options.verbose = parser.isSet(verbose);
    return options;
}

} // namespace trellisport::practice
