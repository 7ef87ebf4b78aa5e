#include "ScreenFaults/AnyScreen.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/InlineExecutor.h"
#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace trellisport::test {
namespace {

using platform::TransportFailure;

/// What holds for every screen, whatever becomes of its loads.
class ScreenFaults : public testing::TestWithParam<ScreenKind> {
protected:
    void SetUp() override
    {
        first = shownOf(GetParam().first);
        second = shownOf(GetParam().second);
        ASSERT_NE(first, second);
    }

    /// What a screen shows of a reply.
    std::string shownOf(const std::string &reply)
    {
        const AnyScreen other = GetParam().make(api);
        const std::string before = other.shown();
        session->queueReply(200, reply);
        other.model->appear();
        EXPECT_TRUE(waitUntil([&] { return other.shown() != before; }));
        return other.shown();
    }
    void queue(const std::string &reply) { session->queueReply(200, reply, GetParam().url); }
    bool eventuallyShows(const std::string &text)
    {
        return waitUntil([&] { return screen.shown() == text; });
    }
    /// The first reply is shown, and the load has ended.
    void load()
    {
        queue(GetParam().first);
        screen.model->appear();
        ASSERT_TRUE(eventuallyShows(first));
        ASSERT_FALSE(screen.model->isLoading());
    }
    std::shared_ptr<FakeHttpSession> session = std::make_shared<FakeHttpSession>();
    TrellisportAPI api{"https://service.example/api/v1", session, InlineExecutor::shared()};
    CallsEnd callsEnd{*session};
    AnyScreen screen = GetParam().make(api);
    std::string first;
    std::string second;
};

TEST_P(ScreenFaults, AFirstLoadThatFailsEndsTheSpinnerAndShowsNothing)
{
    const std::string nothing = screen.shown();
    session->queueFailure(TransportFailure::ConnectionLost, "lost", GetParam().url);
    screen.model->appear();
    EXPECT_TRUE(waitUntil([&] { return !screen.model->isLoading(); }));
    EXPECT_EQ(screen.shown(), nothing);
}

TEST_P(ScreenFaults, ALaterLoadThatFailsInAnyWayKeepsWhatWasThere)
{
    load();
    const std::string &whole = GetParam().second;
    const std::string half = whole.substr(0, whole.size() / 2);
    const std::string endless = whole.substr(0, whole.size() - 1);
    const auto fails = [&](const char *how, auto queueIt) {
        screen.model->disappear();
        queueIt();
        const std::size_t asked = session->requestCount();
        screen.model->appear();
        ASSERT_TRUE(waitUntil([&] { return session->requestCount() == asked + 1; })) << how;
        ASSERT_TRUE(waitUntil([&] { return session->queued() == 0; })) << how;
        runPendingEvents();
        EXPECT_EQ(screen.shown(), first) << how;
        EXPECT_FALSE(screen.model->isLoading()) << how;
    };
    for (const auto failure :
         {TransportFailure::TimedOut, TransportFailure::ConnectionLost,
          TransportFailure::SecureConnectionFailed, TransportFailure::ReplyTooLarge}) {
        fails("transport", [&] { session->queueFailure(failure, "failed", GetParam().url); });
    }
    for (const int status : {0, 204, 302, 404, 500}) {
        fails("status", [&] { session->queueReply(status, {}, GetParam().url); });
    }
    for (const std::string &body : {std::string(), half, endless, std::string("<html>"),
                                    whole + "]", std::string("null"), std::string("\xff")}) {
        fails(body.c_str(), [&] { queue(body); });
    }
    if (whole.front() == '[') {
        // One record that is not whole fails the list: nothing of it is shown.
        fails("a bad element", [&] { queue(endless + ",{\"id\":7,\"amount\":\"x\"}]"); });
    }
    screen.model->disappear();
    queue(GetParam().second);
    screen.model->appear();
    EXPECT_TRUE(eventuallyShows(second)) << "and a load that succeeds shows again";
}

TEST_P(ScreenFaults, GoingAwayEndsTheLoadAndNothingOfItIsShown)
{
    load();
    screen.model->disappear();
    session->hold();
    queue(GetParam().second);
    screen.model->appear();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 1; }));
    screen.model->disappear();
    EXPECT_TRUE(waitUntil([&] { return session->cancelled() == 1; }));
    session->release();
    runPendingEvents();
    EXPECT_EQ(screen.shown(), first);
}

TEST_P(ScreenFaults, ComingBackDuringALoadShowsTheNewOne)
{
    session->hold();
    queue(GetParam().first);
    queue(GetParam().second);
    screen.model->appear();
    screen.model->disappear();
    screen.model->appear();
    ASSERT_TRUE(waitUntil([&] { return session->cancelled() == 1 && session->held() == 1; }));
    session->release();
    EXPECT_TRUE(eventuallyShows(second));
    EXPECT_FALSE(screen.model->isLoading());
}

TEST_P(ScreenFaults, ComingAndGoingQuicklyLeavesOneLoad)
{
    session->hold();
    constexpr int times = 50;
    for (int i = 0; i < times; ++i) {
        queue(GetParam().first);
    }
    queue(GetParam().second);
    for (int i = 0; i < times; ++i) {
        screen.model->appear();
        screen.model->disappear();
    }
    screen.model->appear();
    ASSERT_TRUE(waitUntil([&] { return session->cancelled() == times && session->held() == 1; }));
    session->release();
    EXPECT_TRUE(eventuallyShows(second));
}

TEST_P(ScreenFaults, AScreenThatGoesForGoodDuringALoadLeavesNothingBehind)
{
    session->hold();
    queue(GetParam().first);
    screen.model->appear();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 1; }));
    screen = {};
    EXPECT_TRUE(waitUntil([&] { return session->cancelled() == 1; }));
    session->release();
    runPendingEvents();
    EXPECT_EQ(session->held(), 0U);
}

TEST_P(ScreenFaults, TheSpinnerNeverComesBack)
{
    load();
    for (int i = 0; i < 3; ++i) {
        screen.model->disappear();
        session->hold();
        queue(GetParam().second);
        screen.model->appear();
        ASSERT_TRUE(waitUntil([&] { return session->held() == 1; }));
        EXPECT_FALSE(screen.model->isLoading());
        session->release();
        ASSERT_TRUE(eventuallyShows(second));
    }
}

/// Of the screens that may load while they load.
class OverlappingLoads : public ScreenFaults {};

TEST_P(OverlappingLoads, TheLastToEndWinsThoughItBeganFirst)
{
    session->hold();
    queue(GetParam().second);
    screen.model->appear();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 1; }));
    queue(GetParam().first);
    screen.loadAgain();
    ASSERT_TRUE(waitUntil([&] { return session->held() == 2; }));
    ASSERT_TRUE(session->releaseNewest());
    ASSERT_TRUE(eventuallyShows(first));
    ASSERT_TRUE(session->releaseNewest());
    EXPECT_TRUE(eventuallyShows(second));
}

std::string nameOf(const testing::TestParamInfo<ScreenKind> &kind)
{
    return kind.param.name;
}

INSTANTIATE_TEST_SUITE_P(Every, ScreenFaults, testing::ValuesIn(screenKinds()), nameOf);
INSTANTIATE_TEST_SUITE_P(Those, OverlappingLoads, testing::ValuesIn(reloadingScreenKinds()),
                         nameOf);

} // namespace
} // namespace trellisport::test
