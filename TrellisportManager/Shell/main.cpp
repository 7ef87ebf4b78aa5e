#include "Platform/Platform.h"
#include "Shell/TrellisportManagerApp.h"

#include <QGuiApplication>

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("trellisport-manager"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("TrellisportManager"));
    trellisport::TrellisportManagerApp app;
    if (!app.show()) {
        return 1;
    }
    return QGuiApplication::exec();
}
