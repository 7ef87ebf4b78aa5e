#include "Tour/Portfolio.h"
#include "Tour/Screens.h"

#include <array>

namespace trellisport::tour {

namespace {

struct Tab {
    const char *name;
    int index;
    const char *part; ///< the path of the list it loads; null when it loads none
};

constexpr std::array tabs{
    Tab{"overview", 0, nullptr},        Tab{"questions", 1, nullptr},
    Tab{"chat", 2, "/messages"},        Tab{"bids", 3, "/bids"},
    Tab{"development", 4, "/timeline"}, Tab{"logs", 5, "/logs"},
    Tab{"decisions", 6, "/decisions"},  Tab{"reports", 7, "/reports"},
};

QString pictureName(const Tab &tab, const char *state = "")
{
    return QLatin1String("workspace-") + QLatin1String(tab.name) + QLatin1String(state);
}

void drawTabs(Stage &stage, const QString &project, const char *state)
{
    stage.openProject(project);
    for (const Tab &tab : tabs) {
        stage.showWorkspaceTab(tab.index);
        stage.settle();
        stage.draw(pictureName(tab, state));
    }
}

void drawShell(Stage &stage, const ServiceControl &service, const QString &project)
{
    const QString path = QStringLiteral("/projects/%1").arg(project);
    service.stall(path);
    stage.openProject(project);
    stage.find(QStringLiteral("spinner"));
    stage.rest();
    stage.draw(QStringLiteral("workspace-loading"));

    service.fail(path, 500);
    stage.openProject(project);
    stage.settle();
    stage.draw(QStringLiteral("workspace-failed"));
}

void drawLoadingTabs(Stage &stage, const ServiceControl &service, const QString &project)
{
    stage.openProject(project);
    stage.settle();
    for (const Tab &tab : tabs) {
        if (tab.part != nullptr) {
            service.stall(QStringLiteral("/projects/%1").arg(project) + QLatin1String(tab.part));
            stage.showWorkspaceTab(tab.index);
            stage.rest();
            stage.draw(pictureName(tab, "-loading"));
        }
    }
}

} // namespace

void drawWorkspace(Stage &stage, const ServiceControl &service)
{
    const Portfolio portfolio(service);
    const QString rich = portfolio.richest(QStringLiteral("completed"));
    drawShell(stage, service, rich);
    drawLoadingTabs(stage, service, rich);
    drawTabs(stage, rich, "");
    drawTabs(stage, portfolio.richest(QStringLiteral("discovered")), "-empty");

    stage.openProject(portfolio.richest(QStringLiteral("awarded")));
    stage.showWorkspaceTab(tabs[7].index);
    stage.settle();
    stage.draw(QStringLiteral("workspace-reports-awarded"));

    stage.openProject(portfolio.undecided());
    stage.showWorkspaceTab(tabs[6].index);
    stage.settle();
    stage.draw(QStringLiteral("workspace-decisions-pending"));
    stage.type(QStringLiteral("field"),
               QStringLiteral("Go with the smaller scope, and say so in the report."));
    stage.rest(); // the card comes into view
    stage.draw(QStringLiteral("workspace-decisions-typed"));
}

} // namespace trellisport::tour
