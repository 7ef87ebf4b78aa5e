#include "ServiceAccess/ClientFates.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace trellisport::test {
namespace {

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

} // namespace
} // namespace trellisport::test
