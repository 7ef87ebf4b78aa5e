#include "Platform/SessionProbe.h"

#include <gmock/gmock.h>

#include <string>

namespace trellisport::test {
namespace {

using platform::CurlHttpSession;
using platform::HttpReply;
using platform::TransportFailure;
using testing::SizeIs;

/// A server that reads one request of each connection, sends these bytes and ends the connection
/// like that.
enum class End { Keep, Close, Cut, Reset };

ScriptedServer::Script sending(std::string bytes, End end = End::Keep)
{
    return [bytes = std::move(bytes), end](ServerConnection &connection) {
        connection.readRequest();
        connection.send(bytes);
        switch (end) {
        case End::Keep:
            connection.hold();
            break;
        case End::Close:
            connection.close();
            break;
        case End::Cut:
            connection.cut();
            break;
        case End::Reset:
            connection.reset();
            break;
        }
    };
}

class CurlSessionReply : public testing::Test {
protected:
    CurlHttpSession m_session{trustingOptions()};

    HttpReply reply(const std::string &bytes, End end = End::Keep)
    {
        const ScriptedServer server(sending(bytes, end));
        return SessionProbe(m_session, getRequest(server.origin() + "/a")).waitForReply();
    }
    TransportFailure failure(const std::string &bytes, End end = End::Keep)
    {
        const ScriptedServer server(sending(bytes, end));
        return SessionProbe(m_session, getRequest(server.origin() + "/a")).waitForFailure();
    }
};

TEST_F(CurlSessionReply, EverySuccessIsPassedOnWithItsBody)
{
    for (const int status : {200, 201, 226, 299}) {
        const HttpReply given = reply(ScriptedServer::replyBytes(status, "text"));
        EXPECT_EQ(given.status, status);
        EXPECT_EQ(given.body, "text");
    }
}

TEST_F(CurlSessionReply, EveryOtherStatusIsPassedOnAlone)
{
    for (const int status : {300, 305, 399, 400, 404, 417, 499, 500, 599, 999}) {
        const HttpReply given = reply(ScriptedServer::replyBytes(status, "text"));
        EXPECT_EQ(given.status, status);
        EXPECT_EQ(given.body, "");
    }
}

TEST_F(CurlSessionReply, TheHeadersComeInTheirOrder)
{
    const HttpReply given =
        reply("HTTP/1.1 200 OK\r\nA: 1\r\nb:2 \r\nA:\t3\r\nC:\r\nContent-Length: 0\r\n\r\n");
    ASSERT_THAT(given.headers, SizeIs(5));
    EXPECT_EQ(given.headers[1].name, "b");
    EXPECT_EQ(given.headers[1].value, "2");
    EXPECT_EQ(given.headers[2].value, "3");
    EXPECT_EQ(given.headers[3].value, "");
}

TEST_F(CurlSessionReply, RedirectsAreRepliesNotDirections)
{
    for (const int status : {301, 302, 303, 307, 308}) {
        const ScriptedServer server(ScriptedServer::answering([status](const auto &) {
            return ScriptedServer::replyBytes(status, "", "Location: /elsewhere\r\n");
        }));
        SessionProbe probe(m_session, getRequest(server.origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().status, status);
        EXPECT_EQ(server.requestCount(), 1);
    }
}

TEST_F(CurlSessionReply, ARedirectToHttpConnectsToNobody)
{
    const ScriptedServer elsewhere([](ServerConnection &connection) { connection.hold(); },
                                   {.speaksTls = false});
    const std::string location =
        "Location: http://127.0.0.1:" + std::to_string(elsewhere.port()) + "/a\r\n";
    for (const int status : {301, 302, 303, 307, 308}) {
        const ScriptedServer server(ScriptedServer::answering(
            [&](const auto &) { return ScriptedServer::replyBytes(status, "", location); }));
        for (const platform::HttpRequest &request :
             {getRequest(server.origin() + "/a"), postRequest(server.origin() + "/a")}) {
            SessionProbe probe(m_session, request);
            EXPECT_EQ(probe.waitForReply().status, status);
        }
        EXPECT_EQ(server.requestCount(), 2);
    }
    EXPECT_EQ(elsewhere.connections(), 0);
}

TEST_F(CurlSessionReply, RefusedAccessIsAReply)
{
    const HttpReply unauthorized =
        reply(ScriptedServer::replyBytes(401, "", "WWW-Authenticate: Basic realm=\"a\"\r\n"));
    EXPECT_EQ(unauthorized.status, 401);
}

TEST_F(CurlSessionReply, RepliesWithoutABodyAreWhole)
{
    EXPECT_EQ(reply("HTTP/1.1 204 No Content\r\n\r\n").body, "");
    EXPECT_EQ(reply("HTTP/1.1 304 Not Modified\r\nContent-Length: 5\r\n\r\n").status, 304);
    EXPECT_EQ(reply(ScriptedServer::replyBytes(200, "")).body, "");
}

TEST_F(CurlSessionReply, InterimRepliesAreNotTheReply)
{
    const HttpReply given = reply("HTTP/1.1 100 Continue\r\n\r\n"
                                  "HTTP/1.1 103 Early Hints\r\nLink: </a>\r\n\r\n"
                                  "HTTP/1.1 102 Processing\r\n\r\n" +
                                  ScriptedServer::replyBytes(200, "{}"));
    EXPECT_EQ(given.status, 200);
    EXPECT_EQ(given.body, "{}");
    EXPECT_THAT(given.headers, SizeIs(1));
}

TEST_F(CurlSessionReply, OtherStatusesBelow200AreTheServersAnswer)
{
    for (const int status : {101, 110, 199}) {
        EXPECT_EQ(reply(ScriptedServer::replyBytes(status, "")).status, status);
        EXPECT_EQ(reply("HTTP/1.1 " + std::to_string(status) + " Odd\r\n\r\n").status, status);
    }
}

TEST_F(CurlSessionReply, NothingAfterAnInterimReplyIsALostConnection)
{
    EXPECT_EQ(failure("HTTP/1.1 103 Early Hints\r\n\r\n", End::Close),
              TransportFailure::ConnectionLost);
}

TEST_F(CurlSessionReply, ChunksAreJoined)
{
    EXPECT_EQ(reply("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                    "3;x=y\r\n{\"a\r\n4\r\n\":1}\r\n0\r\nTrailer: t\r\n\r\n")
                  .body,
              "{\"a\":1}");
}

TEST_F(CurlSessionReply, TrailersAreNoHeaders)
{
    EXPECT_THAT(reply("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                      "1\r\na\r\n0\r\nContent-Type: x\r\n\r\n")
                    .headers,
                SizeIs(1));
}

TEST_F(CurlSessionReply, ABodyMayEndWithTheConnection)
{
    EXPECT_EQ(reply("HTTP/1.1 200 OK\r\n\r\n{}", End::Close).body, "{}");
    EXPECT_EQ(reply("HTTP/1.0 200 OK\r\n\r\n{}", End::Close).body, "{}");
}

// Many small servers end like this. What is cut off of a JSON document shows when it is decoded.
TEST_F(CurlSessionReply, ABodyWithoutALengthMayEndWithoutTheLastWordOfTls)
{
    EXPECT_EQ(reply("HTTP/1.1 200 OK\r\n\r\n{}", End::Cut).body, "{}");
}

TEST_F(CurlSessionReply, WhatIsNotHttpHasTheStatus0)
{
    for (const char *bytes :
         {"hello\r\n\r\n", "\r\n\r\n\r\n", "SSH-2.0-OpenSSH_9.2\r\n", "{\"a\":1}\n",
          "<html></html>\r\n", "220 mail ready\r\n", "HTTPS/1.1 200 OK\r\n\r\n",
          "ICY 200 OK\r\n\r\n", "\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03"}) {
        const HttpReply given = reply(bytes, End::Close);
        EXPECT_EQ(given.status, 0) << bytes;
        EXPECT_EQ(given.body, "");
    }
}

TEST_F(CurlSessionReply, BinaryNoiseHasTheStatus0)
{
    EXPECT_EQ(
        reply(std::string("\0\x01\xff\xfe\0\0", 6) + std::string(5000, '\xee'), End::Close).status,
        0);
}

TEST_F(CurlSessionReply, AConnectionThatEndsTooEarlyIsLost)
{
    const std::string whole = ScriptedServer::replyBytes(200, "{\"a\":1}");
    const std::size_t head = whole.find("\r\n\r\n");
    for (const End end : {End::Close, End::Cut, End::Reset}) {
        for (const std::size_t length :
             {std::size_t{0}, head - 3, head + 2, head + 4, whole.size() - 1}) {
            EXPECT_EQ(failure(whole.substr(0, length), end), TransportFailure::ConnectionLost)
                << length << " bytes, end " << static_cast<int>(end);
        }
    }
}

TEST_F(CurlSessionReply, AStatusLineThatBreaksOffIsNoReply)
{
    for (const std::string &part :
         {std::string("HT"), std::string("HTTP/1.1 2"), std::string("HTTP/1.1 200 OK")}) {
        const ScriptedServer server(sending(part, End::Close));
        SessionProbe probe(m_session, getRequest(server.origin() + "/a"));
        const platform::HttpResult result = probe.wait();
        const auto *given = std::get_if<HttpReply>(&result);
        EXPECT_TRUE(given == nullptr || given->status == 0) << part;
    }
}

TEST_F(CurlSessionReply, ChunksThatBreakOffAreALostConnection)
{
    const std::string head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    EXPECT_EQ(failure(head + "5\r\nab", End::Close), TransportFailure::ConnectionLost);
    EXPECT_EQ(failure(head + "2\r\nab\r\n", End::Close), TransportFailure::ConnectionLost);
    EXPECT_EQ(failure(head + "2\r\nab\r\n0\r\n", End::Cut), TransportFailure::ConnectionLost);
}

TEST_F(CurlSessionReply, DamagedChunksAreAFailure)
{
    const ScriptedServer server(
        sending("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nxyz\r\n{}\r\n0\r\n\r\n"));
    EXPECT_NO_THROW(static_cast<void>(
        SessionProbe(m_session, getRequest(server.origin() + "/a")).waitForFailure()));
}

TEST_F(CurlSessionReply, AServerThatClosesUnreadIsALostConnection)
{
    for (const bool hard : {false, true}) {
        const ScriptedServer server([hard](ServerConnection &connection) {
            hard ? connection.reset() : connection.close();
        });
        SessionProbe probe(m_session, getRequest(server.origin() + "/a"));
        EXPECT_EQ(probe.waitForFailure(), TransportFailure::ConnectionLost);
    }
}

TEST_F(CurlSessionReply, ContradictingLengthsNeitherCrashNorHang)
{
    for (const char *lengths :
         {"Content-Length: 2\r\nContent-Length: 3\r\n",
          "Content-Length: 2\r\nContent-Length: 2\r\n", "Content-Length: -1\r\n",
          "Content-Length: x\r\n", "Content-Length: 2, 2\r\n", "Content-Length:\r\n",
          "Content-Length: 1\r\nTransfer-Encoding: chunked\r\n"}) {
        const ScriptedServer server(
            sending(std::string("HTTP/1.1 200 OK\r\n") + lengths + "\r\n{}", End::Close));
        SessionProbe probe(m_session, getRequest(server.origin() + "/a"));
        EXPECT_NO_THROW(static_cast<void>(probe.wait())) << lengths;
        EXPECT_EQ(probe.calls(), 1);
    }
}

TEST_F(CurlSessionReply, OfTwoLengthsTheLastCounts)
{
    const auto resultOf = [this](const std::string &lengths) {
        const ScriptedServer server(
            sending("HTTP/1.1 200 OK\r\n" + lengths + "\r\n{}", End::Close));
        return SessionProbe(m_session, getRequest(server.origin() + "/a")).wait();
    };
    const std::string two = "Content-Length: 2\r\n";
    const std::string three = "Content-Length: 3\r\n";
    const platform::HttpResult same = resultOf(two + two);
    ASSERT_TRUE(std::holds_alternative<HttpReply>(same));
    EXPECT_EQ(std::get<HttpReply>(same).body, "{}");
    // Of two that differ the last counts: two bytes are no reply of three.
    EXPECT_TRUE(std::holds_alternative<platform::TransportError>(resultOf(two + three)));
    const platform::HttpResult shorter = resultOf(three + two);
    ASSERT_TRUE(std::holds_alternative<HttpReply>(shorter));
    EXPECT_EQ(std::get<HttpReply>(shorter).body, "{}");
}

TEST_F(CurlSessionReply, ContradictingLengthsDoNotReachTheNextReply)
{
    const std::string body = "{}" + ScriptedServer::replyBytes(200, "bad");
    const std::string shorter = "Content-Length: 2\r\n";
    const std::string longer = "Content-Length: " + std::to_string(body.size()) + "\r\n";
    for (const std::string &lengths : {shorter + longer, longer + shorter}) {
        std::string bytes = "HTTP/1.1 200 OK\r\n";
        bytes.append(lengths).append("\r\n").append(body);
        const ScriptedServer server(ScriptedServer::answering([&](const std::string &request) {
            return request.starts_with("GET /odd ") ? bytes
                                                    : ScriptedServer::replyBytes(200, "good");
        }));
        for (int i = 0; i < 3; ++i) {
            SessionProbe odd(m_session, getRequest(server.origin() + "/odd"));
            static_cast<void>(odd.wait());
            SessionProbe next(m_session, getRequest(server.origin() + "/next"));
            EXPECT_EQ(next.waitForReply().body, "good");
        }
    }
}

TEST_F(CurlSessionReply, MoreThanWasAnnouncedDoesNotReachTheNextReply)
{
    ScriptedServer server(ScriptedServer::answering([](const auto &) {
        return ScriptedServer::replyBytes(200, "{}") +
               "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nbad";
    }));
    for (int i = 0; i < 3; ++i) {
        SessionProbe probe(m_session, getRequest(server.origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().body, "{}");
    }
}

TEST_F(CurlSessionReply, ALargeReplyArrivesWhole)
{
    std::string body;
    for (int i = 0; body.size() < (20U << 20); ++i) {
        body += std::to_string(i);
    }
    EXPECT_TRUE(reply(ScriptedServer::replyBytes(200, body)).body == body);
}

} // namespace
} // namespace trellisport::test
