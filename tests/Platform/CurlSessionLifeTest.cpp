#include "Platform/SessionProbe.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace trellisport::test {
namespace {

using platform::CurlHttpSession;
using platform::HttpReply;
using platform::TransportError;
using platform::TransportFailure;

ScriptedServer::Script agreeing()
{
    return ScriptedServer::answering(
        [](const auto &) { return ScriptedServer::replyBytes(200, "{}"); });
}

ScriptedServer::Script silent()
{
    return [](ServerConnection &connection) {
        connection.readRequest();
        connection.hold();
    };
}

TEST(CurlSessionLife, CancellingEndsAnExchangeAndItsConnection)
{
    CurlHttpSession session(trustingOptions());
    const ScriptedServer server(silent());
    SessionProbe probe(session, getRequest(server.origin() + "/a"));
    ASSERT_TRUE(waitUntil([&] { return server.requestCount() == 1; }));
    probe.cancel();
    EXPECT_EQ(probe.waitForFailure(), TransportFailure::Cancelled);
    EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    probe.cancel();
    probe.dropHandle();
    EXPECT_EQ(probe.calls(), 1);
}

TEST(CurlSessionLife, DroppingTheHandleCancels)
{
    CurlHttpSession session(trustingOptions());
    const ScriptedServer server(silent());
    SessionProbe probe(session, getRequest(server.origin() + "/a"));
    probe.dropHandle();
    EXPECT_EQ(probe.waitForFailure(), TransportFailure::Cancelled);
}

TEST(CurlSessionLife, CancellingWithinABodyEndsIt)
{
    CurlHttpSession session(trustingOptions());
    std::atomic<bool> hasBegun = false;
    const ScriptedServer server([&](ServerConnection &connection) {
        connection.readRequest();
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nab");
        hasBegun = true;
        connection.hold();
    });
    SessionProbe probe(session, getRequest(server.origin() + "/a"));
    ASSERT_TRUE(waitUntil([&] { return hasBegun.load(); }));
    probe.cancel();
    EXPECT_EQ(probe.waitForFailure(), TransportFailure::Cancelled);
}

TEST(CurlSessionLife, CancellingAfterTheReplyChangesNothing)
{
    CurlHttpSession session(trustingOptions());
    const ScriptedServer server(agreeing());
    SessionProbe probe(session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(probe.waitForReply().status, 200);
    probe.cancel();
    SessionProbe next(session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(next.waitForReply().status, 200);
    EXPECT_EQ(probe.calls(), 1);
}

TEST(CurlSessionLife, CancellingDoesNotWaitForANameThatIsBeingLookedUp)
{
    CurlHttpSession session(trustingOptions());
    SessionProbe probe(session, getRequest("https://slow.no-such-host.invalid/a"));
    probe.cancel();
    const TransportFailure failure = probe.waitForFailure();
    EXPECT_TRUE(failure == TransportFailure::Cancelled ||
                failure == TransportFailure::HostNotFound);
}

TEST(CurlSessionLife, EndingTheSessionCancelsWhatIsUnderWay)
{
    const ScriptedServer server(silent());
    std::vector<std::unique_ptr<SessionProbe>> probes;
    probes.reserve(20);
    std::optional<CurlHttpSession> session(trustingOptions());
    for (int i = 0; i < 10; ++i) {
        probes.push_back(
            std::make_unique<SessionProbe>(*session, getRequest(server.origin() + "/a")));
    }
    ASSERT_TRUE(waitUntil([&] { return server.requestCount() == 10; }));
    // Some that have not even started.
    for (int i = 0; i < 10; ++i) {
        probes.push_back(
            std::make_unique<SessionProbe>(*session, getRequest(server.origin() + "/a")));
    }
    session.reset();
    for (const auto &probe : probes) {
        EXPECT_EQ(probe->calls(), 1);
        EXPECT_EQ(probe->waitForFailure(), TransportFailure::Cancelled);
        probe->cancel();
    }
    probes.clear();
}

TEST(CurlSessionLife, EndingASessionThatDidNothingIsQuick)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 50; ++i) {
        const CurlHttpSession session(trustingOptions());
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(CurlSessionLife, CompletionsComeOnTheSessionsOwnThread)
{
    CurlHttpSession session(trustingOptions());
    const ScriptedServer server(agreeing());
    SessionProbe sent(session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(sent.waitForReply().status, 200);
    SessionProbe refused(session, getRequest("http://localhost/a"));
    EXPECT_EQ(refused.waitForFailure(), TransportFailure::Other);
    EXPECT_FALSE(sent.wasCalledInSend());
    EXPECT_FALSE(refused.wasCalledInSend());
    EXPECT_NE(sent.thread(), std::this_thread::get_id());
    EXPECT_EQ(sent.thread(), refused.thread());
}

TEST(CurlSessionLife, ACompletionMaySendAgain)
{
    CurlHttpSession session(trustingOptions());
    const ScriptedServer server(agreeing());
    std::atomic<int> status = 0;
    std::unique_ptr<platform::HttpExchange> second;
    const auto first = session.send(getRequest(server.origin() + "/a"), [&](platform::HttpResult) {
        second = session.send(getRequest(server.origin() + "/b"), [&](platform::HttpResult result) {
            status = std::get<HttpReply>(result).status;
        });
    });
    EXPECT_TRUE(waitUntil([&] { return status == 200; }));
}

TEST(CurlSessionLife, ManyExchangesAreUnderWayAtOnce)
{
    constexpr int calls = 64;
    CurlHttpSession session(trustingOptions());
    // Nobody is answered before all have asked.
    std::atomic<int> asked = 0;
    const ScriptedServer server([&](ServerConnection &connection) {
        connection.readRequest();
        ++asked;
        if (waitUntil([&] { return asked == calls; })) {
            connection.send(ScriptedServer::replyBytes(200, "{}"));
        }
        connection.hold();
    });
    std::vector<std::unique_ptr<SessionProbe>> probes(calls);
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = thread; i < calls; i += 4) {
                probes[static_cast<std::size_t>(i)] =
                    std::make_unique<SessionProbe>(session, getRequest(server.origin() + "/a"));
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    for (const auto &probe : probes) {
        EXPECT_EQ(probe->waitForReply().status, 200);
    }
}

TEST(CurlSessionLife, CancellingFromAnywhereAtAnyTimeEndsEachExchangeOnce)
{
    CurlHttpSession session(trustingOptions());
    const ScriptedServer server(agreeing());
    for (int round = 0; round < 100; ++round) {
        SessionProbe probe(session, getRequest(server.origin() + "/a"));
        std::thread other([&] {
            std::this_thread::sleep_for(std::chrono::microseconds(round * 20));
            probe.cancel();
        });
        probe.cancel();
        const platform::HttpResult result = probe.wait();
        other.join();
        probe.dropHandle();
        if (const auto *error = std::get_if<TransportError>(&result)) {
            EXPECT_EQ(error->failure(), TransportFailure::Cancelled);
        }
        EXPECT_EQ(probe.calls(), 1);
    }
}

} // namespace
} // namespace trellisport::test
