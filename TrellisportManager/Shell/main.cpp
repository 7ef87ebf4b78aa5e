#include "Platform/Platform.h"
#include "ServiceAccess/ConfiguredAddress.h"
#include "Shell/SetupProblemApp.h"
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

/// What is wrong with how the program was set up, as one sentence.
std::optional<std::string> setupProblem(platform::Platform &platform)
{
    try {
        (void)configuredServiceAddress(platform.environment());
    } catch (const std::invalid_argument &problem) {
        return problem.what();
    }
    return platform.setupProblem();
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("trellisport-manager"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRELLISPORT_VERSION));
    const platform::LaunchReason reason = readCommandLine(argc, argv);
    platform::Platform &platform = platform::Platform::current();
    if (const auto problem = setupProblem(platform)) {
        std::cerr << "trellisport-manager: " << *problem << '\n';
        // A launcher shows no standard error, and may start the program without a window first.
        if (reason == platform::LaunchReason::Message || platform.application().canShowWindow()) {
            (void)platform.application().run(argc, argv, reason, [&problem] {
                return std::make_unique<SetupProblemApp>(*problem);
            });
        }
        return 2;
    }
    return platform.application().run(argc, argv, reason,
                                      [] { return std::make_unique<TrellisportManagerApp>(); });
}
