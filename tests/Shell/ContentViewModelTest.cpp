#include "Shell/ContentViewModel.h"

#include <gtest/gtest.h>

namespace trellisport {
namespace {

constexpr int dashboard = 0;
constexpr int projects = 1;
constexpr int settings = 2;

class ContentViewModelTest : public ::testing::Test {
protected:
    NotificationManager notifications;
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

TEST_F(ContentViewModelTest, ResetsNothingItself)
{
    const ContentViewModel model(notifications);
    notifications.setPendingProjectId("p1");
    EXPECT_EQ(notifications.pendingProjectId(), "p1");
}

} // namespace
} // namespace trellisport
