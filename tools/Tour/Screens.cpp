#include "Tour/Screens.h"

namespace trellisport::tour {

using Answers = ServiceControl::Answers;

void drawDashboard(Stage &stage, const ServiceControl &service)
{
    service.answer(Answers::Never);
    stage.open();
    stage.find(QStringLiteral("spinner"));
    stage.draw(QStringLiteral("dashboard-loading"));

    service.answer(Answers::Normally);
    stage.open();
    stage.find(QStringLiteral("statCard5"));
    stage.settle();
    stage.draw(QStringLiteral("dashboard"));

    service.answer(Answers::WithErrors);
    stage.open();
    stage.find(QStringLiteral("error"));
    stage.settle();
    stage.draw(QStringLiteral("dashboard-failed"));
}

} // namespace trellisport::tour
