#include "Tour/Screens.h"

namespace trellisport::tour {

void drawDashboard(Stage &stage, const ServiceControl &service)
{
    service.stall(QStringLiteral("/dashboard"));
    stage.open();
    stage.find(QStringLiteral("spinner"));
    stage.draw(QStringLiteral("dashboard-loading"));

    stage.open();
    stage.find(QStringLiteral("statCard5"));
    stage.settle();
    stage.draw(QStringLiteral("dashboard"));

    service.fail(QStringLiteral("/dashboard"), 503);
    stage.open();
    stage.find(QStringLiteral("error"));
    stage.settle();
    stage.draw(QStringLiteral("dashboard-failed"));
}

} // namespace trellisport::tour
