#include "ProjectDetail/ProjectDetailViewModel.h"
#include "ServiceFixture.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using Content = ProjectDetailViewModel::Content;

const char *const project =
    R"({"id":"p1","title":"Keep books","ref_number":"TP-1","bid_status":"awarded",)"
    R"("bid_amount":1500,"freelancer_project_id":38013194,)"
    R"("github_repo_url":"https://code.example/p1"})";

class ProjectDetailViewModelTest : public ServiceFixture {
protected:
    bool eventuallyShows(Content content)
    {
        return waitUntil([&] { return model.content() == content; });
    }
    void load(const char *record)
    {
        session->queueReply(200, record);
        model.appear();
        ASSERT_TRUE(eventuallyShows(Content::Workspace));
    }

    NotificationManager notifications;
    ProjectDetailViewModel model{api, rules(), notifications, "p1"};
};

TEST_F(ProjectDetailViewModelTest, StartsWithTheSpinnerTheOverviewAndTheTitleProject)
{
    EXPECT_EQ(model.content(), Content::Spinner);
    EXPECT_EQ(model.title(), u"Project");
    EXPECT_EQ(model.selectedTab(), 0);
    EXPECT_EQ(session->requestCount(), 0U);
}

TEST_F(ProjectDetailViewModelTest, HasTheEightTabsInTheirOrder)
{
    EXPECT_THAT(model.tabs(), ElementsAre(u"Overview", u"Questions", u"Chat", u"Bids", u"Dev",
                                          u"Logs", u"Decisions", u"Reports"));
}

TEST_F(ProjectDetailViewModelTest, LoadsItsProjectWhenItAppears)
{
    load(project);
    EXPECT_EQ(session->requests().at(0).url, "https://service.example/api/v1/projects/p1");
    EXPECT_EQ(model.title(), u"Keep books");
    const ProjectHeader header = model.header();
    EXPECT_TRUE(header.hasReference);
    EXPECT_EQ(header.reference, u"TP-1");
    EXPECT_EQ(header.status, u"awarded");
    EXPECT_EQ(header.bidAmount, u"$1500.00");
    EXPECT_EQ(header.marketplaceNumber, u"FL#38013194");
    EXPECT_TRUE(header.hasRepository);
    EXPECT_EQ(model.repositoryAddress(), u"https://code.example/p1");
}

TEST_F(ProjectDetailViewModelTest, AProjectThatHoldsNothingHasAnUnknownStatusAndTheNumberNought)
{
    load(R"({"id":"p1","title":""})");
    const ProjectHeader header = model.header();
    EXPECT_EQ(model.title(), u"");
    EXPECT_FALSE(header.hasReference);
    EXPECT_EQ(header.status, u"unknown");
    EXPECT_EQ(header.bidAmount, u"");
    EXPECT_EQ(header.marketplaceNumber, u"FL#0");
    EXPECT_FALSE(header.hasRepository);
}

TEST_F(ProjectDetailViewModelTest, AnEmptyReferenceIsAReference)
{
    load(R"({"id":"p1","title":"t","ref_number":"","bid_amount":0})");
    EXPECT_TRUE(model.header().hasReference);
    EXPECT_EQ(model.header().bidAmount, u"$0.00");
}

TEST_F(ProjectDetailViewModelTest, AFirstLoadThatFailsLeavesNothing)
{
    session->queueReply(500);
    model.appear();
    ASSERT_TRUE(eventuallyShows(Content::Nothing));
    EXPECT_EQ(model.title(), u"Project");
    EXPECT_FALSE(model.isLoading());
}

TEST_F(ProjectDetailViewModelTest, ALaterLoadThatFailsKeepsTheProject)
{
    load(project);
    model.disappear();
    session->queueReply(500);
    model.appear();
    EXPECT_TRUE(waitUntil([&] { return session->requestCount() == 2; }));
    runPendingEvents();
    EXPECT_EQ(model.content(), Content::Workspace);
    EXPECT_EQ(model.title(), u"Keep books");
}

TEST_F(ProjectDetailViewModelTest, LoadsAgainEachTimeItAppearsWithoutASpinner)
{
    load(project);
    model.disappear();
    session->hold();
    session->queueReply(200, R"({"id":"p1","title":"Renamed"})");
    model.appear();
    EXPECT_EQ(model.content(), Content::Workspace);
    session->release();
    EXPECT_TRUE(waitUntil([&] { return model.title() == u"Renamed"; }));
}

TEST_F(ProjectDetailViewModelTest, GoingAwayEndsTheLoad)
{
    session->hold();
    session->queueReply(200, project);
    model.appear();
    model.disappear();
    EXPECT_TRUE(waitUntil([&] { return session->cancelled() == 1; }));
    EXPECT_TRUE(eventuallyShows(Content::Nothing));
}

TEST_F(ProjectDetailViewModelTest, ANotificationThatAsksForTheDecisionsSelectsTheirTab)
{
    notifications.setPendingTab("decisions");
    EXPECT_EQ(model.selectedTab(), 6);
    EXPECT_FALSE(notifications.pendingTab());
}

TEST_F(ProjectDetailViewModelTest, ANotificationThatAsksForTheLogsSelectsTheirTab)
{
    notifications.setPendingTab("logs");
    EXPECT_EQ(model.selectedTab(), 5);
    EXPECT_FALSE(notifications.pendingTab());
}

TEST_F(ProjectDetailViewModelTest, AnyOtherPendingTabSelectsNothingAndIsCleared)
{
    model.setSelectedTab(3);
    for (const char *tab : {"overview", "Decisions", "LOGS", "", "chat"}) {
        notifications.setPendingTab(tab);
        EXPECT_EQ(model.selectedTab(), 3) << tab;
        EXPECT_FALSE(notifications.pendingTab()) << tab;
    }
}

TEST_F(ProjectDetailViewModelTest, ATabThatIsPendingWhenItOpensStaysPending)
{
    NotificationManager waiting;
    waiting.setPendingTab("decisions");
    const ProjectDetailViewModel later(api, rules(), waiting, "p1");
    EXPECT_EQ(later.selectedTab(), 0);
    EXPECT_EQ(waiting.pendingTab(), "decisions");
}

TEST_F(ProjectDetailViewModelTest, ReadsNeitherTheProjectNorTheDecisionThatAreNamed)
{
    notifications.setPendingProjectId("p9");
    notifications.setPendingDecisionId("d7");
    EXPECT_EQ(notifications.pendingProjectId(), "p9");
    EXPECT_EQ(notifications.pendingDecisionId(), "d7");
    EXPECT_EQ(model.selectedTab(), 0);
}

TEST_F(ProjectDetailViewModelTest, AModelThatGoesWhileItLoadsLeavesNothingBehind)
{
    session->hold();
    session->queueReply(200, project);
    {
        ProjectDetailViewModel shortLived(api, rules(), notifications, "p1");
        shortLived.appear();
    }
    session->release();
    EXPECT_TRUE(waitUntil([&] { return session->held() == 0; }));
    runPendingEvents();
}

} // namespace
} // namespace trellisport::test
