// How calls begin, end and are given up; what they say is in TrellisportAPITest.cpp.

#include "TrellisportAPIFixture.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace trellisport {
namespace {

using platform::TransportError;
using platform::TransportFailure;
using test::finish;
using testing::SizeIs;

TEST_F(TrellisportAPITest, OnlyLargeRepliesAreHandedOnToBeDecoded)
{
    class CountingExecutor : public test::InlineExecutor {
    public:
        void run(std::function<void()> work) override
        {
            ++works;
            InlineExecutor::run(std::move(work));
        }
        std::atomic<int> works = 0;
    };
    CountingExecutor executor;
    const TrellisportAPI api(base, m_session, executor);
    reply(200, dashboard);
    finish(api.getDashboard());
    EXPECT_EQ(executor.works, 0);
    reply(200, "[" + std::string(100000, ' ') + "]");
    finish(api.getProjects());
    EXPECT_EQ(executor.works, 1);
}

TEST_F(TrellisportAPITest, CancellingBeforehandSendsNothing)
{
    const CancellationSource source;
    source.cancel();
    try {
        finish(m_api.getDashboard(source.token()));
        ADD_FAILURE() << "no failure";
    } catch (const TransportError &error) {
        EXPECT_EQ(error.failure(), TransportFailure::Cancelled);
    }
    EXPECT_EQ(m_session->requestCount(), 0U);
}

TEST_F(TrellisportAPITest, AnAddressThatCannotBeCountsBeforeCancelling)
{
    const CancellationSource source;
    source.cancel();
    EXPECT_THROW(finish(m_api.getProject("a b", source.token())), APIError);
}

TEST_F(TrellisportAPITest, CancellingUnderWayEndsTheCallOnItsThread)
{
    m_session->hold();
    const CancellationSource source;
    const auto outcome = test::observe(m_api.getDashboard(source.token()));
    ASSERT_EQ(m_session->held(), 1U);
    std::thread([&] { source.cancel(); }).join();
    EXPECT_FALSE(outcome->isDone());
    ASSERT_TRUE(test::waitUntil([&] { return outcome->isDone(); }));
    EXPECT_EQ(outcome->endedOn(), std::this_thread::get_id());
    EXPECT_THROW(outcome->take(), TransportError);
    EXPECT_EQ(m_session->cancelled(), 1U);
}

TEST_F(TrellisportAPITest, CancellingAfterwardsChangesNothing)
{
    const CancellationSource source;
    reply(200, dashboard);
    finish(m_api.getDashboard(source.token()));
    source.cancel();
    reply(200, dashboard);
    EXPECT_NO_THROW(finish(m_api.getDashboard()));
}

TEST_F(TrellisportAPITest, OneTokenEndsAllItsCalls)
{
    m_session->hold();
    const CancellationSource source;
    std::vector<std::shared_ptr<test::TaskOutcome<std::vector<Project>>>> outcomes;
    outcomes.reserve(10);
    for (int i = 0; i < 10; ++i) {
        outcomes.push_back(test::observe(m_api.getProjects({}, source.token())));
    }
    source.cancel();
    for (const auto &outcome : outcomes) {
        ASSERT_TRUE(test::waitUntil([&] { return outcome->isDone(); }));
        EXPECT_THROW(outcome->take(), TransportError);
    }
}

TEST_F(TrellisportAPITest, ADroppedTaskRunsToItsEnd)
{
    reply(200, "{}");
    m_api.registerDevice("00");
    EXPECT_TRUE(test::waitUntil([&] { return m_session->queued() == 0; }));
    EXPECT_EQ(m_session->requestCount(), 1U);
    // Replies arrive in order: with the next one's end the first has ended, too.
    reply(200, dashboard);
    EXPECT_NO_THROW(finish(m_api.getDashboard()));
}

TEST_F(TrellisportAPITest, TheClientMayGoWhileCallsAreUnderWay)
{
    m_session->hold();
    reply(200, dashboard);
    reply(200, "{}");
    auto api = std::make_unique<TrellisportAPI>(base, m_session, m_executor);
    const auto read = test::observe(api->getDashboard());
    const auto write = test::observe(api->registerDevice("00"));
    api.reset();
    m_session->release();
    ASSERT_TRUE(test::waitUntil([&] { return read->isDone() && write->isDone(); }));
    EXPECT_EQ(read->take().pendingDecisions, 3);
    EXPECT_NO_THROW(write->take());
}

TEST_F(TrellisportAPITest, AThreadMayEndWhileItsCallsAreUnderWay)
{
    // Kept for good: nobody can end what waits on a thread that is gone.
    static auto &stranded = *new std::vector<QCoro::Task<DashboardData>>;
    m_session->hold();
    reply(200, dashboard);
    std::thread([&] { stranded.push_back(m_api.getDashboard()); }).join();
    m_session->release();
    EXPECT_TRUE(test::waitUntil([&] { return m_session->held() == 0; }));
    test::runPendingEvents();
    EXPECT_FALSE(stranded.back().isReady());
}

TEST_F(TrellisportAPITest, ANewCallMayBeginWhereAnotherEnded)
{
    reply(200, dashboard);
    reply(200, "{}");
    const auto chain = [](const TrellisportAPI *api) -> QCoro::Task<> {
        const DashboardData data = co_await api->getDashboard();
        co_await api->registerDevice(std::to_string(data.pendingDecisions));
    };
    finish(chain(&m_api));
    EXPECT_EQ(m_session->requests().back().body, R"({"device_token":"3"})");
}

TEST_F(TrellisportAPITest, ALargeListArrivesWhole)
{
    std::string body = "[";
    for (int i = 0; i < 100'000; ++i) {
        body += R"({"id":")" + std::to_string(i) + R"(","title":"t"},)";
    }
    body.back() = ']';
    reply(200, std::move(body));
    const std::vector<Project> projects = finish(m_api.getProjects());
    ASSERT_THAT(projects, SizeIs(100'000));
    EXPECT_EQ(projects.back().id, "99999");
}

} // namespace
} // namespace trellisport
