#include "Shell/ContentViewModel.h"
#include "Support/NotificationsBench.h"

#include <gtest/gtest.h>

namespace trellisport {
namespace {

constexpr int dashboard = 0;
constexpr int projects = 1;
constexpr int settings = 2;

class ContentViewModelTest : public ::testing::Test {
protected:
    void open(platform::UserInfo userInfo)
    {
        bench.center.delegate()->didReceive({{std::move(userInfo)}}, [] {});
        bench.queue.run();
    }

    test::NotificationsBench bench;
    NotificationManager &notifications = bench.manager;
};

TEST_F(ContentViewModelTest, StartsOnTheDashboard)
{
    EXPECT_EQ(ContentViewModel(notifications).selectedTab(), dashboard);
}

TEST_F(ContentViewModelTest, ANotificationThatNamesAProjectSwitchesToTheProjectsTab)
{
    ContentViewModel model(notifications);
    model.setSelectedTab(settings);
    notifications.setPendingProjectId("p1");
    EXPECT_EQ(model.selectedTab(), projects);
}

TEST_F(ContentViewModelTest, ANotificationWithoutAProjectLeavesTheTab)
{
    notifications.setPendingProjectId("p1");
    ContentViewModel model(notifications);
    model.setSelectedTab(settings);
    notifications.setPendingProjectId(std::nullopt);
    EXPECT_EQ(model.selectedTab(), settings);
}

TEST_F(ContentViewModelTest, TheSameProjectAgainWithoutAResetSwitchesNothing)
{
    ContentViewModel model(notifications);
    notifications.setPendingProjectId("p1");
    model.setSelectedTab(settings);
    notifications.setPendingProjectId("p1");
    EXPECT_EQ(model.selectedTab(), settings);
}

TEST_F(ContentViewModelTest, TheSameProjectAgainAfterAResetSwitches)
{
    ContentViewModel model(notifications);
    notifications.setPendingProjectId("p1");
    notifications.setPendingProjectId(std::nullopt);
    model.setSelectedTab(settings);
    notifications.setPendingProjectId("p1");
    EXPECT_EQ(model.selectedTab(), projects);
}

TEST_F(ContentViewModelTest, AProjectThatWasPendingBeforeItAppearedSwitchesNothing)
{
    notifications.setPendingProjectId("p1");
    EXPECT_EQ(ContentViewModel(notifications).selectedTab(), dashboard);
}

TEST_F(ContentViewModelTest, AnEmptyProjectIdentifierIsPresentAllTheSame)
{
    ContentViewModel model(notifications);
    notifications.setPendingProjectId("");
    EXPECT_EQ(model.selectedTab(), projects);
}

TEST_F(ContentViewModelTest, AnOpenedNotificationLeadsToTheProjectsTab)
{
    ContentViewModel model(notifications);
    model.setSelectedTab(settings);
    open({{"type", {"dev_error"}}, {"project_id", {"p1"}}});
    EXPECT_EQ(model.selectedTab(), projects);
}

TEST_F(ContentViewModelTest, AnOpenedNotificationWithoutAProjectLeavesTheTab)
{
    ContentViewModel model(notifications);
    model.setSelectedTab(settings);
    open({{"type", {"dev_error"}}});
    EXPECT_EQ(model.selectedTab(), settings);
}

TEST_F(ContentViewModelTest, ResetsNothingItself)
{
    const ContentViewModel model(notifications);
    notifications.setPendingProjectId("p1");
    EXPECT_EQ(notifications.pendingProjectId(), "p1");
}

} // namespace
} // namespace trellisport
