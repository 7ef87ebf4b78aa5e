#include "Support/FakeHttpSession.h"
#include "Support/ManualClock.h"
#include "Support/TaskOutcome.h"
#include "Support/Waiting.h"

#include <QCoroTask>

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

namespace trellisport::test {
namespace {

using namespace std::chrono_literals;
using platform::HttpReply;
using platform::HttpResult;
using platform::TransportError;
using platform::TransportFailure;
using testing::ElementsAre;

struct Received {
    std::atomic<int> calls = 0;
    HttpResult result;

    platform::HttpSession::Completion completion()
    {
        return [this](HttpResult arrived) {
            result = std::move(arrived);
            ++calls;
        };
    }
};

TEST(FakeHttpSession, GivesQueuedRepliesInOrderAndListsTheRequests)
{
    FakeHttpSession session;
    session.queueReply(200, "first");
    session.queueReply(404, "second");
    Received first;
    Received second;
    const auto one = session.send({"GET", "https://h/a", {}, {}}, first.completion());
    const auto two = session.send({"POST", "https://h/b", {}, "{}"}, second.completion());
    ASSERT_TRUE(waitUntil([&] { return first.calls == 1 && second.calls == 1; }));
    EXPECT_EQ(std::get<HttpReply>(first.result).body, "first");
    EXPECT_EQ(std::get<HttpReply>(second.result).status, 404);
    ASSERT_EQ(session.requestCount(), 2U);
    EXPECT_EQ(session.requests().back().method, "POST");
}

TEST(FakeHttpSession, FailsWhenNothingIsQueued)
{
    FakeHttpSession session;
    Received received;
    const auto exchange = session.send({"GET", "https://h/a", {}, {}}, received.completion());
    ASSERT_TRUE(waitUntil([&] { return received.calls == 1; }));
    EXPECT_TRUE(std::holds_alternative<TransportError>(received.result));
}

TEST(FakeHttpSession, KeepsRepliesBackUntilReleasedByAddress)
{
    FakeHttpSession session;
    session.alwaysReply("", 200, "{}");
    session.hold();
    Received a;
    Received b;
    const auto one = session.send({"GET", "https://h/a", {}, {}}, a.completion());
    const auto two = session.send({"GET", "https://h/b", {}, {}}, b.completion());
    EXPECT_EQ(session.held(), 2U);
    EXPECT_TRUE(session.releaseOne("/b"));
    ASSERT_TRUE(waitUntil([&] { return b.calls == 1; }));
    EXPECT_EQ(a.calls, 0);
    session.release();
    ASSERT_TRUE(waitUntil([&] { return a.calls == 1; }));
}

TEST(FakeHttpSession, CancellingEndsAHeldExchangeOnce)
{
    FakeHttpSession session;
    session.hold();
    Received received;
    auto exchange = session.send({"GET", "https://h/a", {}, {}}, received.completion());
    exchange->cancel();
    exchange.reset();
    session.release();
    ASSERT_TRUE(waitUntil([&] { return received.calls == 1; }));
    EXPECT_EQ(std::get<TransportError>(received.result).failure(), TransportFailure::Cancelled);
    EXPECT_EQ(session.cancelled(), 1U);
}

TEST(FakeHttpSession, EndingCancelsWhatIsHeld)
{
    Received received;
    std::unique_ptr<platform::HttpExchange> exchange;
    {
        FakeHttpSession session;
        session.hold();
        exchange = session.send({"GET", "https://h/a", {}, {}}, received.completion());
    }
    EXPECT_EQ(received.calls, 1);
}

TEST(FakeHttpSession, FinishingEndsWhatIsHeldAndWhatIsSentBecauseOfIt)
{
    FakeHttpSession session;
    session.hold();
    Received received;
    std::unique_ptr<platform::HttpExchange> next;
    const auto exchange = session.send({"GET", "https://h/a", {}, {}}, [&](const auto &) {
        next = session.send({"GET", "https://h/b", {}, {}}, received.completion());
    });
    session.finish();
    EXPECT_EQ(received.calls, 1);
    EXPECT_EQ(session.requestCount(), 2U);
    EXPECT_EQ(session.held(), 0U);
}

TEST(ManualClock, CallsWhatFallsDueInOrder)
{
    ManualClock clock;
    std::vector<std::string> calls;
    const auto often = clock.every(20ms, [&] { calls.emplace_back("often"); });
    const auto once = clock.after(30ms, [&] { calls.emplace_back("once"); });
    clock.advance(19ms);
    EXPECT_THAT(calls, ElementsAre());
    clock.advance(41ms);
    EXPECT_THAT(calls, ElementsAre("often", "once", "often", "often"));
    EXPECT_THAT(clock.runningTimers(), ElementsAre(20ms));
}

TEST(ManualClock, ADestroyedTimerIsSilent)
{
    ManualClock clock;
    int calls = 0;
    std::unique_ptr<platform::Timer> timer;
    timer = clock.every(10ms, [&] {
        ++calls;
        timer.reset();
    });
    clock.advance(100ms);
    EXPECT_EQ(calls, 1);
}

QCoro::Task<int> fails()
{
    throw std::invalid_argument("no");
    co_return 1;
}

QCoro::Task<std::string> succeeds()
{
    co_return std::string("yes");
}

TEST(TaskOutcome, GivesTheValueOrTheError)
{
    EXPECT_EQ(finish(succeeds()), "yes");
    EXPECT_THROW(finish(fails()), std::invalid_argument);
}

} // namespace
} // namespace trellisport::test
