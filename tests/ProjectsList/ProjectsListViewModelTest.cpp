#include "ProjectsList/ProjectsListViewModel.h"
#include "Platform/Platform.h"
#include "ProjectSamples.h"
#include "ProjectsList/ProjectRowData.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/InlineExecutor.h"
#include "Support/Waiting.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ProjectsListViewModelTest : public ::testing::Test {
protected:
    /// Appears with these projects and waits until they are loaded.
    void load(const std::vector<std::string> &projects)
    {
        session->queueReply(200, listJson(projects));
        model.appear();
        ASSERT_TRUE(waitUntil([&] { return !model.isLoading(); }));
    }
    QStringList titles()
    {
        QStringList found;
        ProjectRowsModel &rows = *model.rows();
        for (int row = 0; row < rows.rowCount(); ++row) {
            found << rows.data(rows.index(row), ProjectRowsModel::ProjectRole)
                         .value<ProjectRowData>()
                         .title;
        }
        return found;
    }
    QStringList selectedChips() const
    {
        QStringList found;
        for (const FilterChipData &chip : model.chips()) {
            if (chip.isSelected) {
                found << chip.label;
            }
        }
        return found;
    }

    std::shared_ptr<FakeHttpSession> session = std::make_shared<FakeHttpSession>();
    TrellisportAPI api{"https://service.example/api/v1", session, InlineExecutor::shared()};
    CallsEnd callsEnd{*session};
    NotificationManager notifications;
    ProjectsListViewModel model{api, platform::Platform::current().textRules(),
                                InlineExecutor::shared(), notifications};
};

constexpr int awardedChip = 6;

TEST_F(ProjectsListViewModelTest, StartsLoadingWithNoRowsAndEverythingLetThrough)
{
    EXPECT_TRUE(model.isLoading());
    EXPECT_THAT(titles(), IsEmpty());
    EXPECT_EQ(model.searchText(), QString());
    EXPECT_EQ(model.selectedStatus(), std::nullopt);
    EXPECT_EQ(model.navigateToProjectId(), std::nullopt);
    EXPECT_EQ(session->requestCount(), 0U);
}

TEST_F(ProjectsListViewModelTest, ChipsAreAllAndTheEightStatusesInTheirOrder)
{
    QStringList labels;
    for (const FilterChipData &chip : model.chips()) {
        labels << chip.label;
    }
    EXPECT_THAT(labels,
                ElementsAre(u"All", u"Discovered", u"Questions Sent", u"Answers Received",
                            u"Plan Sent", u"Bid Placed", u"Awarded", u"Rejected", u"Completed"));
    EXPECT_THAT(selectedChips(), ElementsAre(u"All"));
}

TEST_F(ProjectsListViewModelTest, LoadsEveryProjectWhateverTheChipsSay)
{
    model.pressChip(awardedChip);
    load({projectJson("1", "discovered")});
    EXPECT_EQ(session->requests().at(0).url, "https://service.example/api/v1/projects");
    EXPECT_THAT(titles(), IsEmpty());
    model.pressChip(0);
    EXPECT_THAT(titles(), ElementsAre(u"A project"));
}

TEST_F(ProjectsListViewModelTest, TheAwardedChipShowsAwardedProjectsAndASecondTapShowsAllAgain)
{
    load({projectJson("1", "discovered", "One"), projectJson("2", "awarded", "Two"),
          projectJson("3", "completed", "Three")});
    model.pressChip(awardedChip);
    EXPECT_EQ(model.selectedStatus(), "awarded");
    EXPECT_THAT(selectedChips(), ElementsAre(u"Awarded"));
    EXPECT_THAT(titles(), ElementsAre(u"Two"));
    model.pressChip(awardedChip);
    EXPECT_EQ(model.selectedStatus(), std::nullopt);
    EXPECT_THAT(selectedChips(), ElementsAre(u"All"));
    EXPECT_THAT(titles(), ElementsAre(u"One", u"Two", u"Three"));
}

TEST_F(ProjectsListViewModelTest, AnotherChipTakesOverAndAllTurnsTheFilterOff)
{
    load({projectJson("1", "discovered", "One"), projectJson("2", "awarded", "Two")});
    model.pressChip(awardedChip);
    model.pressChip(1);
    EXPECT_THAT(titles(), ElementsAre(u"One"));
    EXPECT_THAT(selectedChips(), ElementsAre(u"Discovered"));
    model.pressChip(0);
    EXPECT_THAT(titles(), ElementsAre(u"One", u"Two"));
    model.pressChip(0);
    EXPECT_THAT(selectedChips(), ElementsAre(u"All"));
}

TEST_F(ProjectsListViewModelTest, AChipThatIsNotThereDoesNothing)
{
    model.pressChip(9);
    model.pressChip(-1);
    EXPECT_THAT(selectedChips(), ElementsAre(u"All"));
}

TEST_F(ProjectsListViewModelTest, ChipsAndSearchAskTheServiceForNothing)
{
    load({projectJson("1", "awarded")});
    model.pressChip(awardedChip);
    model.setSearchText(QStringLiteral("a"));
    runPendingEvents();
    EXPECT_EQ(session->requestCount(), 1U);
}

TEST_F(ProjectsListViewModelTest, AProjectOfAnUnlistedStatusIsShownUnderNoChipAndNoSearch)
{
    load({projectJson("1", nullptr, "Hidden"), projectJson("2", "pending", "Hidden"),
          projectJson("3", "unknown", "Hidden"), projectJson("4", "awarded", "Seen")});
    for (int chip = 0; chip < model.chips().size(); ++chip) {
        model.pressChip(0);
        model.pressChip(chip);
        EXPECT_FALSE(titles().contains(QStringLiteral("Hidden"))) << chip;
    }
    model.pressChip(0);
    model.setSearchText(QStringLiteral("Hidden"));
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(ProjectsListViewModelTest, AnEmptySearchShowsAllOfTheSelectedStatus)
{
    load({projectJson("1", "discovered", "One"), projectJson("2", "awarded", "Two"),
          projectJson("3", "awarded", "Three")});
    model.pressChip(awardedChip);
    model.setSearchText(QStringLiteral("thr"));
    EXPECT_THAT(titles(), ElementsAre(u"Three"));
    model.setSearchText(QString());
    EXPECT_THAT(titles(), ElementsAre(u"Two", u"Three"));
}

TEST_F(ProjectsListViewModelTest, ASearchThatMatchesNothingShowsNoRows)
{
    load({projectJson("1", "discovered", "One")});
    model.setSearchText(QStringLiteral("zebra"));
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(ProjectsListViewModelTest, ASearchAppliesToWhatIsLoadedLater)
{
    model.setSearchText(QStringLiteral("two"));
    load({projectJson("1", "discovered", "One"), projectJson("2", "awarded", "Two")});
    EXPECT_THAT(titles(), ElementsAre(u"Two"));
}

TEST_F(ProjectsListViewModelTest, AFailedFirstLoadEndsTheSpinnerWithAnEmptyList)
{
    session->queueReply(500);
    model.appear();
    EXPECT_TRUE(waitUntil([&] { return !model.isLoading(); }));
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(ProjectsListViewModelTest, AFailedLaterLoadKeepsWhatThereWas)
{
    load({projectJson("1", "discovered", "One")});
    model.disappear();
    session->queueReply(500);
    model.appear();
    EXPECT_TRUE(waitUntil([&] { return session->queued() == 0; }));
    runPendingEvents();
    EXPECT_THAT(titles(), ElementsAre(u"One"));
    EXPECT_FALSE(model.isLoading());
}

TEST_F(ProjectsListViewModelTest, EachAppearanceLoadsAgainWithoutTheSpinner)
{
    load({projectJson("1", "discovered", "One")});
    model.disappear();
    session->queueReply(200, listJson({projectJson("1", "discovered", "Two")}));
    model.appear();
    EXPECT_FALSE(model.isLoading());
    EXPECT_TRUE(waitUntil([&] { return titles() == QStringList{QStringLiteral("Two")}; }));
}

TEST_F(ProjectsListViewModelTest, LeavingCancelsTheLoadAndEndsTheSpinner)
{
    session->hold();
    session->queueReply(200, listJson({projectJson("1", "discovered")}));
    model.appear();
    model.disappear();
    EXPECT_TRUE(waitUntil([&] { return !model.isLoading(); }));
    EXPECT_EQ(session->cancelled(), 1U);
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(ProjectsListViewModelTest, ARefreshLoadsAndEndsWithItsLoad)
{
    load({projectJson("1", "discovered", "One")});
    session->hold();
    session->queueReply(200, listJson({projectJson("1", "discovered", "Two")}));
    model.refresh();
    EXPECT_TRUE(model.isRefreshing());
    EXPECT_FALSE(model.isLoading());
    session->release();
    EXPECT_TRUE(waitUntil([&] { return !model.isRefreshing(); }));
    EXPECT_THAT(titles(), ElementsAre(u"Two"));
}

TEST_F(ProjectsListViewModelTest, ARefreshThatFailsEndsToo)
{
    load({projectJson("1", "discovered", "One")});
    session->queueFailure(platform::TransportFailure::ConnectionLost, "gone");
    model.refresh();
    EXPECT_TRUE(waitUntil([&] { return !model.isRefreshing(); }));
    EXPECT_THAT(titles(), ElementsAre(u"One"));
}

TEST_F(ProjectsListViewModelTest, OfTwoOverlappingLoadsTheLastToEndWins)
{
    session->hold();
    session->queueReply(200, listJson({projectJson("1", "discovered", "Appeared")}));
    session->queueReply(200, listJson({projectJson("1", "discovered", "Pulled")}));
    model.appear();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 1; }));
    model.refresh();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 2; }));
    session->release();
    EXPECT_TRUE(waitUntil([&] { return !model.isRefreshing(); }));
    EXPECT_THAT(titles(), ElementsAre(u"Pulled"));
}

TEST_F(ProjectsListViewModelTest, ANotificationsProjectIsTakenOverAndClearedAndOpensNothing)
{
    notifications.setPendingProjectId("p-7");
    EXPECT_TRUE(waitUntil([&] { return !notifications.pendingProjectId(); }));
    EXPECT_EQ(model.navigateToProjectId(), "p-7");
    EXPECT_EQ(session->requestCount(), 0U);
}

TEST_F(ProjectsListViewModelTest, EveryoneWhoWatchesSeesAPendingProjectBeforeItIsCleared)
{
    std::vector<std::optional<std::string>> seen;
    QObject::connect(&notifications, &NotificationManager::pendingProjectIdChanged, &notifications,
                     [&] { seen.push_back(notifications.pendingProjectId()); });
    notifications.setPendingProjectId("p-7");
    EXPECT_TRUE(waitUntil([&] { return seen.size() == 2; }));
    EXPECT_THAT(seen, ElementsAre("p-7", std::nullopt));
}

TEST_F(ProjectsListViewModelTest, ClearingThePendingProjectChangesNothing)
{
    notifications.setPendingProjectId("p-7");
    ASSERT_TRUE(waitUntil([&] { return !notifications.pendingProjectId(); }));
    notifications.setPendingProjectId(std::nullopt);
    runPendingEvents();
    EXPECT_EQ(model.navigateToProjectId(), "p-7");
}

TEST_F(ProjectsListViewModelTest, ALoadOutlivesTheModelWithoutHarm)
{
    session->hold();
    session->queueReply(200, listJson({projectJson("1", "discovered")}));
    auto other = std::make_unique<ProjectsListViewModel>(
        api, platform::Platform::current().textRules(), InlineExecutor::shared(), notifications);
    other->refresh();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 1; }));
    other.reset();
    session->release();
    runPendingEvents();
    EXPECT_EQ(session->held(), 0U);
}

} // namespace
} // namespace trellisport::test
