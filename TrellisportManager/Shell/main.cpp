#include "Platform/Platform.h"
#include "ServiceAccess/ConfiguredAddress.h"
#include "Shell/TrellisportManagerApp.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

using namespace trellisport;

namespace {

/// Ends the program when the command line asks for no more than a text, or is wrong.
platform::LaunchReason readCommandLine(int &argc, char **argv)
{
    // The platform makes the application that runs; this one only reads the arguments.
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("The owner's console for an agent that works freelance projects.\n"
                       "TRELLISPORT_BASE_URL names the service (https://HOST/api/v1); "
                       "TRELLISPORT_CA_FILE adds a certificate authority."));
    parser.addHelpOption();
    parser.addVersionOption();
    // For the system, when a message has arrived.
    QCommandLineOption background(QStringLiteral("background"));
    background.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(background);
    parser.process(application);
    return parser.isSet(background) ? platform::LaunchReason::Message
                                    : platform::LaunchReason::User;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("trellisport-manager"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRELLISPORT_VERSION));
    const platform::LaunchReason reason = readCommandLine(argc, argv);
    platform::Platform &platform = platform::Platform::current();
    try {
        (void)configuredServiceAddress(platform.environment());
        if (const std::optional<std::string> problem = platform.setupProblem()) {
            throw std::invalid_argument(*problem);
        }
    } catch (const std::invalid_argument &problem) {
        std::cerr << "trellisport-manager: " << problem.what() << '\n';
        return 2;
    }
    return platform.application().run(argc, argv, reason,
                                      [] { return std::make_unique<TrellisportManagerApp>(); });
}
