// What the network does to calls; what they say is in ClientNetworkTest.cpp.

#include "ServiceAccess/ClientFates.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace trellisport::test {
namespace {

using namespace std::chrono_literals;
using platform::TransportError;
using platform::TransportFailure;
using testing::SizeIs;

TEST(ClientNetwork, TransportFailuresSayWhatHappened)
{
    EXPECT_EQ(dashboardFate([](ServerConnection &connection) { connection.close(); }),
              "transport: The connection to the server was lost.");
    EXPECT_EQ(dashboardFate(sending("")), "transport: The connection to the server was lost.");
    EXPECT_EQ(dashboardFate(sending("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{")),
              "transport: The connection to the server was lost.");
    EXPECT_EQ(dashboardFate(answering(200, dashboard), {.identity = Identity::SelfSigned}),
              "transport: The server's certificate could not be trusted.");
    EXPECT_EQ(dashboardFate([](ServerConnection &) {}, {.speaksTls = false}),
              "transport: A secure connection to the server could not be made.");
    EXPECT_EQ(dashboardFate(sending("HTTP/1.1 200 OK\r\nContent-Length: 2147483648\r\n\r\n{")),
              "transport: The server's reply is too large.");
}

TEST(ClientNetwork, ANameThatNobodyHasIsATransportFailure)
{
    platform::ThreadPoolExecutor executor;
    const TrellisportAPI api("https://no-such-host.invalid/api/v1",
                             std::make_shared<platform::CurlHttpSession>(), executor);
    EXPECT_EQ(fate(api.getDashboard()), "transport: The server could not be found.");
}

TEST(ClientNetwork, SilenceIsATransportFailure)
{
    ClientFixture fixture(
        [](ServerConnection &connection) {
            connection.readRequest();
            connection.hold();
        },
        {}, 2s);
    EXPECT_EQ(fate(fixture.api().registerDevice("00")),
              "transport: The server took too long to answer.");
    EXPECT_EQ(fixture.server().requestCount(), 1);
}

TEST(ClientNetwork, ASlowDripIsWaitedFor)
{
    const ClientFixture fixture(
        [](ServerConnection &connection) {
            connection.readRequest();
            connection.drip(ScriptedServer::replyBytes(200, "{}"), 40ms);
        },
        {}, 1s);
    EXPECT_EQ(fate(fixture.api().getConfig()), "success");
}

TEST(ClientNetwork, AWriteWhoseReplyIsLostIsNotSentAgain)
{
    ClientFixture fixture(ScriptedServer::answering([](const std::string &request) {
        return request.starts_with("GET ") ? ScriptedServer::replyBytes(200, "{}") : std::string();
    }));
    finish(fixture.api().getConfig());
    EXPECT_EQ(fate(fixture.api().answerDecision("p", "d", "yes")),
              "transport: The connection to the server was lost.");
    EXPECT_EQ(fate(fixture.api().updateConfig({})),
              "transport: The connection to the server was lost.");
    EXPECT_EQ(fixture.server().requestCount("POST "), 1);
    EXPECT_EQ(fixture.server().requestCount("PUT "), 1);
}

TEST(ClientNetwork, CancellingEndsTheCallAndTheConnection)
{
    ClientFixture fixture([](ServerConnection &connection) {
        connection.readRequest();
        connection.hold();
    });
    const CancellationSource source;
    const auto outcome = observe(fixture.api().getDashboard(source.token()));
    ASSERT_TRUE(waitUntil([&] { return fixture.server().requestCount() == 1; }));
    source.cancel();
    ASSERT_TRUE(waitUntil([&] { return outcome->isDone(); }));
    try {
        outcome->take();
        ADD_FAILURE() << "no failure";
    } catch (const TransportError &error) {
        EXPECT_EQ(error.failure(), TransportFailure::Cancelled);
    }
    EXPECT_TRUE(waitUntil([&] { return fixture.server().openConnections() == 0; }));
}

TEST(ClientNetwork, CallsOfManyThreadsOverlapAndEndWhereTheyBegan)
{
    constexpr int threadCount = 8;
    constexpr int callCount = 64;
    std::atomic<int> asked = 0;
    // Nobody is answered before all have asked.
    const ClientFixture fixture([&](ServerConnection &connection) {
        connection.readRequest();
        ++asked;
        if (waitUntil([&] { return asked == callCount; })) {
            connection.send(ScriptedServer::replyBytes(200, R"([{"id":"1","title":"a"}])"));
        }
        connection.hold();
    });
    std::atomic<int> good = 0;
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&] {
            std::vector<std::shared_ptr<TaskOutcome<std::vector<Project>>>> outcomes;
            outcomes.reserve(callCount / threadCount);
            for (int i = 0; i < callCount / threadCount; ++i) {
                outcomes.push_back(observe(fixture.api().getProjects()));
            }
            for (const auto &outcome : outcomes) {
                if (waitUntil([&] { return outcome->isDone(); }) && outcome->take().size() == 1 &&
                    outcome->endedOn() == std::this_thread::get_id()) {
                    ++good;
                }
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(good, callCount);
}

TEST(ClientNetwork, AHundredThousandRecordsArriveWhole)
{
    std::string body = "[";
    for (int i = 0; i < 100'000; ++i) {
        body += R"({"id":")" + std::to_string(i) + R"(","log_type":"tool_call","content":"text"},)";
    }
    body.back() = ']';
    const ClientFixture fixture(answering(200, body));
    const std::vector<DevLog> logs = finish(fixture.api().getLogs("p1"));
    ASSERT_THAT(logs, SizeIs(100'000));
    EXPECT_EQ(logs.back().id, "99999");
}

} // namespace
} // namespace trellisport::test
