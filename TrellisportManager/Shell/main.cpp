#include "Platform/Platform.h"
#include "ServiceAccess/ConfiguredAddress.h"
#include "Shell/TrellisportManagerApp.h"

#include <QCommandLineParser>
#include <QGuiApplication>

#include <iostream>
#include <stdexcept>

using namespace trellisport;

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("trellisport-manager"));
    QGuiApplication::setApplicationVersion(QStringLiteral(TRELLISPORT_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("TrellisportManager"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("The owner's console for an agent that works freelance projects.\n"
                       "TRELLISPORT_BASE_URL names the service (https://HOST/api/v1); "
                       "TRELLISPORT_CA_FILE adds a certificate authority."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);

    try {
        (void)configuredServiceAddress(platform::Platform::current().environment());
    } catch (const std::invalid_argument &problem) {
        std::cerr << "trellisport-manager: " << problem.what() << '\n';
        return 2;
    }
    TrellisportManagerApp app;
    return app.show() ? QGuiApplication::exec() : 1;
}
