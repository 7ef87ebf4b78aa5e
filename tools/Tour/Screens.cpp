#include "Tour/Screens.h"

namespace trellisport::tour {

namespace {

constexpr int projectsTab = 1;
constexpr int settingsTab = 2;

void openTab(Stage &stage, int tab)
{
    stage.open();
    stage.showTab(tab);
}

} // namespace

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

void drawProjectsList(Stage &stage, const ServiceControl &service)
{
    service.stall(QStringLiteral("/projects"));
    openTab(stage, projectsTab);
    stage.rest();
    stage.draw(QStringLiteral("projects-loading"));

    openTab(stage, projectsTab);
    stage.find(QStringLiteral("projectRow"));
    stage.settle();
    stage.draw(QStringLiteral("projects"));
    stage.scroll(QStringLiteral("projectsList"), 900);
    stage.draw(QStringLiteral("projects-scrolled"));
    stage.scroll(QStringLiteral("projectsList"), -2000);

    stage.tap(QStringLiteral("chip2"));
    stage.settle();
    stage.draw(QStringLiteral("projects-chip"));
    stage.tap(QStringLiteral("chip0"));

    stage.type(QStringLiteral("searchField"), QStringLiteral("re"));
    stage.settle();
    stage.draw(QStringLiteral("projects-search"));
    stage.type(QStringLiteral("searchField"), QStringLiteral("search that finds nothing"));
    stage.settle();
    stage.draw(QStringLiteral("projects-nothing-found"));

    service.fail(QStringLiteral("/projects"), 503);
    openTab(stage, projectsTab);
    stage.settle();
    stage.draw(QStringLiteral("projects-failed"));
}

void drawSettings(Stage &stage, const ServiceControl &service)
{
    service.stall(QStringLiteral("/config"));
    openTab(stage, settingsTab);
    stage.rest();
    stage.draw(QStringLiteral("settings-loading"));

    openTab(stage, settingsTab);
    stage.settle();
    stage.draw(QStringLiteral("settings"));
    stage.tap(QStringLiteral("saveButton"));
    stage.find(QStringLiteral("savedLabel"));
    stage.rest();
    stage.draw(QStringLiteral("settings-saved"));
    service.stall(QStringLiteral("/config"));
    stage.tap(QStringLiteral("saveButton"));
    stage.find(QStringLiteral("savingSpinner"));
    stage.draw(QStringLiteral("settings-saving"));

    service.fail(QStringLiteral("/config"), 503);
    openTab(stage, settingsTab);
    stage.settle();
    stage.draw(QStringLiteral("settings-failed"));
}

} // namespace trellisport::tour
