#include "ServiceAccess/ClientFixture.h"
#include "ServiceAccess/CodingErrors.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace trellisport::test {
namespace {

using namespace std::chrono_literals;
using platform::TransportError;
using platform::TransportFailure;
using testing::SizeIs;

constexpr const char *dashboard =
    R"({"status_counts":{"awarded":2},"bids_pending":1,"total_earned":2,"pending_decisions":3})";

ScriptedServer::Script answering(int status, std::string body)
{
    return ScriptedServer::answering([status, body = std::move(body)](const auto &) {
        return ScriptedServer::replyBytes(status, body);
    });
}

/// Reads one request, sends the bytes and closes.
ScriptedServer::Script sending(std::string bytes)
{
    return [bytes = std::move(bytes)](ServerConnection &connection) {
        connection.readRequest();
        connection.send(bytes);
        connection.close();
    };
}

/// What became of a call, in a line: the type of the error and what a screen would show.
template <typename T>
std::string fate(QCoro::Task<T> task)
{
    try {
        finish(std::move(task));
        return "success";
    } catch (const APIError &error) {
        return std::string("API: ") + error.what();
    } catch (const TransportError &error) {
        return std::string("transport: ") + error.what();
    } catch (const DecodingError &) {
        return "decoding";
    } catch (const EncodingError &) {
        return "encoding";
    }
}

std::string dashboardFate(ScriptedServer::Script script, const ServerOptions &options = {})
{
    const ClientFixture fixture(std::move(script), options);
    return fate(fixture.api().getDashboard());
}

TEST(ClientNetwork, AReadReachesTheServerByteForByte)
{
    ClientFixture fixture(answering(200, dashboard));
    EXPECT_EQ(finish(fixture.api().getDashboard()).totalEarned, 2);
    EXPECT_THAT(fixture.server().requests(),
                testing::ElementsAre("GET /api/v1/dashboard HTTP/1.1\r\n"
                                     "Host: localhost:" +
                                     std::to_string(fixture.server().port()) +
                                     "\r\n"
                                     "Content-Type: application/json\r\n\r\n"));
}

TEST(ClientNetwork, AWriteReachesTheServerByteForByte)
{
    ClientFixture fixture(answering(200, R"({"status":"ok"})"));
    finish(fixture.api().answerDecision("p1", "d2", "Yes, \"do\" it"));
    EXPECT_THAT(fixture.server().requests(),
                testing::ElementsAre("POST /api/v1/projects/p1/decisions/d2/answer HTTP/1.1\r\n"
                                     "Host: localhost:" +
                                     std::to_string(fixture.server().port()) +
                                     "\r\n"
                                     "Content-Type: application/json\r\n"
                                     "Content-Length: 27\r\n\r\n"
                                     R"({"answer":"Yes, \"do\" it"})"));
}

TEST(ClientNetwork, AnEmptyMapIsSentAsAnEmptyObject)
{
    ClientFixture fixture(answering(200, "{}"));
    finish(fixture.api().updateConfig({}));
    ASSERT_EQ(fixture.server().requestCount("PUT /api/v1/config "), 1);
    EXPECT_TRUE(fixture.server().requests().front().ends_with("\r\n\r\n{}"));
}

TEST(ClientNetwork, TheStatusFilterStandsInTheRequestAsGiven)
{
    ClientFixture fixture(answering(200, "[]"));
    const auto target = [&](std::optional<std::string> status) {
        finish(fixture.api().getProjects(std::move(status)));
        const std::string request = fixture.server().requests().back();
        return request.substr(4, request.find(" HTTP/1.1") - 4);
    };
    EXPECT_EQ(target({}), "/api/v1/projects");
    EXPECT_EQ(target("awarded"), "/api/v1/projects?status=awarded");
    EXPECT_EQ(target(""), "/api/v1/projects?status=");
    EXPECT_EQ(target("a&b=c"), "/api/v1/projects?status=a&b=c");
    EXPECT_EQ(target("a/../b"), "/api/v1/projects?status=a/../b");
    EXPECT_EQ(target("a#b"), "/api/v1/projects?status=a");
    EXPECT_EQ(target("%41"), "/api/v1/projects?status=%41");
}

TEST(ClientNetwork, AnIdentifierMayChangeThePathTheQueryAndTheFragment)
{
    ClientFixture fixture(answering(200, "[]"));
    const auto target = [&](const std::string &id) {
        finish(fixture.api().getLogs(id));
        const std::string request = fixture.server().requests().back();
        return request.substr(4, request.find(" HTTP/1.1") - 4);
    };
    EXPECT_EQ(target("a/b"), "/api/v1/projects/a/b/logs");
    EXPECT_EQ(target("../.."), "/api/v1/projects/../../logs");
    EXPECT_EQ(target("a?b"), "/api/v1/projects/a?b/logs");
    EXPECT_EQ(target("a#b"), "/api/v1/projects/a");
    EXPECT_EQ(target(""), "/api/v1/projects//logs");
}

TEST(ClientNetwork, TextThatIsNoAddressIsNotSent)
{
    ClientFixture fixture(answering(200, "[]"));
    EXPECT_EQ(fate(fixture.api().getLogs("a b")), "API: Invalid URL");
    EXPECT_EQ(fate(fixture.api().getProjects("a b")), "API: Invalid URL");
    EXPECT_EQ(fate(fixture.api().answerDecision("p", "é", "yes")), "API: Invalid URL");
    EXPECT_EQ(fixture.server().connections(), 0);
}

TEST(ClientNetwork, StatusesFrom200To299Succeed)
{
    for (const int status : {200, 201, 206, 299}) {
        EXPECT_EQ(dashboardFate(answering(status, dashboard)), "success") << status;
    }
}

TEST(ClientNetwork, EveryOtherStatusIsAnHttpErrorWithItsNumber)
{
    for (const int status : {199, 300, 301, 302, 304, 307, 400, 401, 404, 500, 503, 599}) {
        EXPECT_EQ(dashboardFate(answering(status, dashboard)),
                  "API: HTTP error " + std::to_string(status));
    }
}

TEST(ClientNetwork, ARedirectIsNotFollowed)
{
    ClientFixture fixture(ScriptedServer::answering([](const auto &) {
        return ScriptedServer::replyBytes(307, "{}", "Location: /api/v1/config\r\n");
    }));
    EXPECT_EQ(fate(fixture.api().updateConfig({})), "API: HTTP error 307");
    EXPECT_EQ(fixture.server().requestCount(), 1);
}

TEST(ClientNetwork, TheBodyOfAnErrorIsIgnored)
{
    EXPECT_EQ(dashboardFate(answering(404, R"({"error":"not found"})")), "API: HTTP error 404");
    EXPECT_EQ(dashboardFate(answering(500, "<html>")), "API: HTTP error 500");
}

TEST(ClientNetwork, ABrokenOffBodyOfAnErrorIsIgnored)
{
    ClientFixture fixture(sending("HTTP/1.1 503 No\r\nContent-Length: 100\r\n\r\n{"));
    EXPECT_EQ(fate(fixture.api().getDashboard()), "API: HTTP error 503");
    EXPECT_EQ(fate(fixture.api().updateConfig({})), "API: HTTP error 503");
    EXPECT_EQ(fixture.server().requestCount("GET "), 1);
    EXPECT_EQ(fixture.server().requestCount("PUT "), 1);
}

TEST(ClientNetwork, WhatIsNotHttpIsHttpError0)
{
    EXPECT_EQ(dashboardFate(sending("220 mail.example ready\r\n")), "API: HTTP error 0");
    EXPECT_EQ(dashboardFate(sending(dashboard)), "API: HTTP error 0");
}

TEST(ClientNetwork, AReplyThatDoesNotDecodeIsADecodingError)
{
    EXPECT_EQ(dashboardFate(answering(200, "")), "decoding");
    EXPECT_EQ(dashboardFate(answering(204, "")), "decoding");
    EXPECT_EQ(dashboardFate(answering(200, "{}")), "decoding");
    EXPECT_EQ(dashboardFate(answering(200, "[]")), "decoding");
    EXPECT_EQ(dashboardFate(answering(200, "\x1f\x8b\x08")), "decoding");
}

TEST(ClientNetwork, ACompressedReplyThatNobodyAskedForIsADecodingError)
{
    const auto compressed = [](std::string_view body) {
        return ScriptedServer::answering(
            [reply = ScriptedServer::replyBytes(200, body, "Content-Encoding: gzip\r\n")](
                const auto &) { return reply; });
    };
    // A whole gzip stream of "{}", one whose checksum is wrong, one that breaks off, and none.
    const std::string whole("\x1f\x8b\x08\0\0\0\0\0\0\x03\xab\xae\x05\0\x43\xbf\xa6\xa3\x02\0\0\0",
                            22);
    std::string wrong = whole;
    wrong[14] = '\x44';
    for (const std::string &body :
         {whole, wrong, whole.substr(0, 12), std::string("noise \xff\xfe")}) {
        EXPECT_EQ(dashboardFate(compressed(body)), "decoding");
    }
    // The mark alone changes nothing: what can be read is read.
    EXPECT_EQ(dashboardFate(compressed(dashboard)), "success");
}

TEST(ClientNetwork, AReplyWithoutABodyFailsAWriteThatArrived)
{
    ClientFixture fixture(
        ScriptedServer::answering([](const auto &) { return "HTTP/1.1 204 No Content\r\n\r\n"; }));
    EXPECT_EQ(fate(fixture.api().registerDevice("00")), "decoding");
    EXPECT_EQ(fixture.server().requestCount("POST "), 1);
}

TEST(ClientNetwork, AnAnswerThatIsNoMapOfTextsFailsAWriteThatArrived)
{
    for (const char *body : {R"({"ok":true})", R"({"count":1})", R"({"a":null})", "[]", ""}) {
        ClientFixture fixture(answering(200, body));
        EXPECT_EQ(fate(fixture.api().answerDecision("p", "d", "yes")), "decoding") << body;
        EXPECT_EQ(fate(fixture.api().updateConfig({})), "decoding") << body;
        EXPECT_EQ(fate(fixture.api().registerDevice("00")), "decoding") << body;
        EXPECT_EQ(fixture.server().requestCount("POST "), 2);
        EXPECT_EQ(fixture.server().requestCount("PUT "), 1);
    }
}

TEST(ClientNetwork, TextThatCannotBeEncodedIsNotSent)
{
    ClientFixture fixture(answering(200, "{}"));
    EXPECT_EQ(fate(fixture.api().answerDecision("p", "d", "cut \xf0\x9f")), "encoding");
    EXPECT_EQ(fate(fixture.api().updateConfig({{"max_daily_bids", "\xff"}})), "encoding");
    EXPECT_EQ(fate(fixture.api().updateConfig({{"\xff", "5"}})), "encoding");
    EXPECT_EQ(fate(fixture.api().registerDevice("\x80")), "encoding");
    // The body is made before the address is looked at.
    EXPECT_EQ(fate(fixture.api().answerDecision("p p", "d", "\xff")), "encoding");
    EXPECT_EQ(fixture.server().connections(), 0);
}

TEST(ClientNetwork, OneBadElementFailsTheList)
{
    const ClientFixture fixture(answering(200, R"([{"id":"1","title":"a"},{"title":"b"}])"));
    EXPECT_EQ(fate(fixture.api().getProjects()), "decoding");
}

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
