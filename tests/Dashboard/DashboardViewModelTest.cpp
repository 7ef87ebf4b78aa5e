#include "Dashboard/DashboardViewModel.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/InlineExecutor.h"
#include "Support/ManualClock.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <chrono>

namespace trellisport::test {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using Content = DashboardViewModel::Content;

const char *const summary = R"({"status_counts":{"awarded":4},"bids_pending":2500,)"
                            R"("total_earned":10,"pending_decisions":1})";
const char *const laterSummary = R"({"status_counts":{"awarded":5},"bids_pending":1,)"
                                 R"("total_earned":2,"pending_decisions":0})";

class DashboardViewModelTest : public ::testing::Test {
protected:
    bool eventuallyShows(Content content)
    {
        return waitUntil([&] { return model.content() == content; });
    }

    std::shared_ptr<FakeHttpSession> session = std::make_shared<FakeHttpSession>();
    ManualClock clock;
    TrellisportAPI api{"https://service.example/api/v1", session, InlineExecutor::shared()};
    CallsEnd callsEnd{*session};
    DashboardViewModel model{api, clock};
};

TEST_F(DashboardViewModelTest, StartsWithTheSpinnerAndAsksForNothing)
{
    EXPECT_TRUE(model.isLoading());
    EXPECT_EQ(model.content(), Content::Spinner);
    EXPECT_EQ(session->requestCount(), 0U);
}

TEST_F(DashboardViewModelTest, LoadsWhenItAppears)
{
    session->queueReply(200, summary);
    model.appear();
    ASSERT_TRUE(eventuallyShows(Content::Cards));
    EXPECT_FALSE(model.isLoading());
    EXPECT_EQ(model.statCards()[3].value, u"4");
    EXPECT_EQ(model.revenueCards()[0].amount, u"$2500.00");
    EXPECT_EQ(session->requests().at(0).url, "https://service.example/api/v1/dashboard");
}

TEST_F(DashboardViewModelTest, AFirstLoadThatFailsShowsTheErrorAlone)
{
    session->queueReply(503);
    model.appear();
    ASSERT_TRUE(eventuallyShows(Content::Error));
    EXPECT_EQ(model.error(), u"HTTP error 503");
    EXPECT_TRUE(model.statCards().isEmpty());
    EXPECT_FALSE(model.isLoading());
}

TEST_F(DashboardViewModelTest, ATransportFailureShowsItsOwnWords)
{
    session->queueFailure(platform::TransportFailure::HostNotFound, "The server was not found.");
    model.appear();
    ASSERT_TRUE(eventuallyShows(Content::Error));
    EXPECT_EQ(model.error(), u"The server was not found.");
}

TEST_F(DashboardViewModelTest, AReplyOfAnotherShapeShowsWhatIsMissing)
{
    session->queueReply(200, "{}");
    model.appear();
    ASSERT_TRUE(eventuallyShows(Content::Error));
    EXPECT_THAT(model.error().toStdString(), HasSubstr("status_counts"));
}

TEST_F(DashboardViewModelTest, AFailedReloadHidesTheTilesUntilOneSucceeds)
{
    session->queueReply(200, summary);
    model.appear();
    ASSERT_TRUE(eventuallyShows(Content::Cards));

    session->queueReply(500);
    model.refresh();
    ASSERT_TRUE(eventuallyShows(Content::Error));

    session->queueReply(200, laterSummary);
    model.refresh();
    ASSERT_TRUE(eventuallyShows(Content::Cards));
    EXPECT_EQ(model.error(), QString());
    EXPECT_EQ(model.statCards()[3].value, u"5");
}

TEST_F(DashboardViewModelTest, ReloadsEverySixtySecondsByItself)
{
    session->alwaysReply("/dashboard", 200, summary);
    model.appear();
    ASSERT_TRUE(eventuallyShows(Content::Cards));
    ASSERT_EQ(session->requestCount(), 1U);

    clock.advance(59999ms);
    EXPECT_EQ(session->requestCount(), 1U);
    clock.advance(1ms);
    EXPECT_EQ(session->requestCount(), 2U);
    clock.advance(120s);
    EXPECT_EQ(session->requestCount(), 4U);
}

TEST_F(DashboardViewModelTest, TicksDoNotWaitForAnEarlierLoad)
{
    session->hold();
    session->queueReply(200, summary);
    session->queueReply(200, laterSummary);
    clock.advance(120s);
    EXPECT_EQ(session->requestCount(), 2U);
    session->release();
    EXPECT_TRUE(eventuallyShows(Content::Cards));
}

TEST_F(DashboardViewModelTest, OfOverlappingLoadsTheLastToEndWins)
{
    session->hold();
    session->queueReply(200, summary);
    session->queueReply(500);
    model.refresh();
    model.refresh();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 2; }));
    session->releaseOne();
    ASSERT_TRUE(eventuallyShows(Content::Cards));
    EXPECT_TRUE(model.isRefreshing());
    session->releaseOne();
    ASSERT_TRUE(eventuallyShows(Content::Error));
    EXPECT_FALSE(model.isRefreshing());
}

TEST_F(DashboardViewModelTest, LaterLoadsShowNoSpinner)
{
    session->queueReply(200, summary);
    model.appear();
    ASSERT_TRUE(eventuallyShows(Content::Cards));
    session->hold();
    session->queueReply(200, laterSummary);
    model.refresh();
    EXPECT_FALSE(model.isLoading());
    EXPECT_EQ(model.content(), Content::Cards);
}

TEST_F(DashboardViewModelTest, APulledReloadKeepsItsIndicatorUntilItEnds)
{
    session->hold();
    session->queueReply(200, summary);
    model.refresh();
    EXPECT_TRUE(model.isRefreshing());
    session->release();
    EXPECT_TRUE(waitUntil([&] { return !model.isRefreshing(); }));
    EXPECT_EQ(model.content(), Content::Cards);
}

TEST_F(DashboardViewModelTest, GoingAwayCancelsTheLoadOfThatAppearance)
{
    session->hold();
    session->queueReply(200, summary);
    model.appear();
    model.disappear();
    EXPECT_TRUE(waitUntil([&] { return session->cancelled() == 1; }));
    EXPECT_TRUE(eventuallyShows(Content::Error));

    session->release();
    session->queueReply(200, summary);
    model.appear();
    EXPECT_TRUE(eventuallyShows(Content::Cards));
}

TEST_F(DashboardViewModelTest, AModelThatGoesWhileItLoadsLeavesNothingBehind)
{
    session->hold();
    session->queueReply(200, summary);
    {
        DashboardViewModel shortLived(api, clock);
        shortLived.appear();
        shortLived.refresh();
    }
    session->release();
    EXPECT_TRUE(waitUntil([&] { return session->held() == 0; }));
    runPendingEvents();
    EXPECT_EQ(clock.runningTimers().size(), 1U);
}

} // namespace
} // namespace trellisport::test
