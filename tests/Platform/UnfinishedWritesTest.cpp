#include "Platform/Linux/UnfinishedWrites.h"
#include "Support/FakeHttpSession.h"
#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <future>

namespace trellisport::platform {
namespace {

using namespace std::chrono_literals;

class UnfinishedWritesTest : public ::testing::Test {
protected:
    std::unique_ptr<HttpExchange> send(const char *method)
    {
        m_server->queueReply(200);
        return m_session.send({method, "https://a/api/v1/x", {}, {}},
                              [this](const HttpResult &) { ++m_replies; });
    }

    std::shared_ptr<test::FakeHttpSession> m_server = std::make_shared<test::FakeHttpSession>();
    std::shared_ptr<UnfinishedWrites> m_writes = std::make_shared<UnfinishedWrites>();
    CountingHttpSession m_session{m_server, m_writes};
    std::atomic<int> m_replies = 0;
};

TEST_F(UnfinishedWritesTest, WithNothingUnderWayThereIsNoWait)
{
    EXPECT_TRUE(m_writes->waitUntilNone(0ms));
}

TEST_F(UnfinishedWritesTest, AWriteIsWaitedForUntilItsReplyIsHandedOn)
{
    for (const char *method : {"POST", "PUT"}) {
        m_replies = 0;
        m_server->hold();
        const auto exchange = send(method);
        ASSERT_TRUE(test::waitUntil([&] { return m_server->held() == 1; }));
        EXPECT_FALSE(m_writes->waitUntilNone(20ms));
        auto isFinished =
            std::async(std::launch::async, [&] { return m_writes->waitUntilNone(20s); });
        m_server->release();
        EXPECT_TRUE(isFinished.get());
        EXPECT_EQ(m_replies, 1);
    }
}

TEST_F(UnfinishedWritesTest, ReadsAreNotWaitedFor)
{
    m_server->hold();
    const auto exchange = send("GET");
    EXPECT_TRUE(m_writes->waitUntilNone(0ms));
    m_server->release();
    EXPECT_TRUE(test::waitUntil([&] { return m_replies == 1; }));
}

TEST_F(UnfinishedWritesTest, ACancelledWriteIsFinished)
{
    m_server->hold();
    send("POST").reset();
    EXPECT_TRUE(m_writes->waitUntilNone(20s));
}

} // namespace
} // namespace trellisport::platform
