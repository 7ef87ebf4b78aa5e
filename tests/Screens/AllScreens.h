#pragma once

#include "Dashboard/DashboardViewModel.h"
#include "Presentation/LinkController.h"
#include "ProjectDetail/ProjectDetailViewModel.h"
#include "ProjectsList/ProjectsListViewModel.h"
#include "QmlSupport/QmlScene.h"
#include "Settings/SettingsViewModel.h"
#include "Shell/ContentViewModel.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/FakeLinkOpener.h"
#include "Support/InlineExecutor.h"
#include "Support/ManualClock.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace trellisport::test {

/// The whole content over a service that a test plays, to be walked through screen by screen.
class AllScreens : public ::testing::Test {
protected:
    static constexpr int workspaceTabs = 8;

    AllScreens();
    void TearDown() override;

    /// The service has something to show everywhere.
    void fill();
    /// It has nothing to show, but for one bare project.
    void fillWithNothing();

    /// Shows the content with text of this scale.
    void show(QSize size = {390, 844}, double textScale = 1);
    void showTab(int tab);
    /// Opens the project from the projects list, which is shown.
    void openProject();
    void closeProject();
    void showWorkspaceTab(int tab);
    /// From any screen that is shown, waiting in between: the project and a tab of it.
    void openTab(int tab);
    /// Waits until nothing is loading any longer and nothing moves.
    void settle();

    /// Shows one screen after the other, and each tab of the project, and lets the test look at it.
    void visitAll(const std::function<void(const std::string &name)> &look);
    void visitProject(const std::function<void(const std::string &name)> &look);

    [[nodiscard]] QQuickItem *item(const char *name) const;
    [[nodiscard]] bool has(const char *name) const;

    std::shared_ptr<FakeHttpSession> session = std::make_shared<FakeHttpSession>();
    ManualClock clock;
    FakeLinkOpener opener;
    LinkController links{opener};
    TrellisportAPI api{"https://service.example/api/v1", session, InlineExecutor::shared()};
    CallsEnd callsEnd{*session};
    NotificationManager notifications;
    ContentViewModel content{notifications};
    DashboardViewModel dashboard{api, clock};
    ProjectsListViewModel projects;
    SettingsViewModel settings{api, clock,
                               parseServiceAddress("https://agent.example:8443/api/v1")};
    ProjectDetailViewModel detail;
    std::unique_ptr<QmlScene> scene;
};

} // namespace trellisport::test
