#include "Platform/SessionProbe.h"
#include "Support/Http2Peer.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <chrono>
#include <string>

namespace trellisport::test {
namespace {

using platform::CurlHttpSession;
using platform::HttpReply;
using platform::HttpRequest;

/// Of the reply to a call that failed the status is all that counts: nobody waits for its body.
class CurlSessionErrorReply : public testing::TestWithParam<std::string> {
protected:
    CurlHttpSession m_session{trustingOptions()};

    [[nodiscard]] static HttpRequest request(const std::string &url)
    {
        HttpRequest request = GetParam() == "GET" ? getRequest(url) : postRequest(url);
        request.method = GetParam();
        return request;
    }

    /// Expects that the exchange ends with the status, soon, with one request sent.
    void expectStatus(int status, ScriptedServer::Script script, const ServerOptions &options = {})
    {
        const ScriptedServer server(std::move(script), options);
        SessionProbe probe(m_session, request(server.origin() + "/a"));
        const HttpReply given = probe.waitForReply();
        EXPECT_EQ(given.status, status);
        EXPECT_EQ(given.body, "");
        EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
        EXPECT_EQ(server.requestCount(), 1);
        EXPECT_EQ(server.connections(), 1);
        EXPECT_EQ(probe.calls(), 1);
    }

    /// Answers one request with these bytes and ends the connection like that.
    static ScriptedServer::Script sending(std::string bytes,
                                          void (ServerConnection::*end)() = &ServerConnection::hold)
    {
        return [bytes = std::move(bytes), end](ServerConnection &connection) {
            connection.readRequest();
            connection.send(bytes);
            (connection.*end)();
        };
    }
};

TEST_P(CurlSessionErrorReply, ABodyThatBreaksOffChangesNothing)
{
    for (const auto end :
         {&ServerConnection::close, &ServerConnection::cut, &ServerConnection::reset}) {
        expectStatus(404, sending("HTTP/1.1 404 No\r\nContent-Length: 9\r\n\r\n{\"a\"", end));
        expectStatus(500, sending("HTTP/1.1 500 No\r\nContent-Length: 9\r\n\r\n", end));
    }
    expectStatus(302, sending("HTTP/1.1 302 Go\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nab",
                              &ServerConnection::close));
}

TEST_P(CurlSessionErrorReply, ABodyThatIsDamagedChangesNothing)
{
    expectStatus(500, sending("HTTP/1.1 500 No\r\nTransfer-Encoding: chunked\r\n\r\nxyz\r\n{}"));
}

TEST_P(CurlSessionErrorReply, ABodyThatNeverComesIsNotWaitedFor)
{
    expectStatus(404, sending("HTTP/1.1 404 No\r\nContent-Length: 9\r\n\r\n"));
    expectStatus(500, sending("HTTP/1.1 500 No\r\nContent-Length: 9\r\n\r\n{"));
    expectStatus(300, sending("HTTP/1.1 300 No\r\n\r\n"));
}

TEST_P(CurlSessionErrorReply, ABodyThatNeverEndsIsNotRead)
{
    expectStatus(503, [](ServerConnection &connection) {
        connection.readRequest();
        connection.send("HTTP/1.1 503 No\r\n\r\n");
        while (connection.send(std::string(10'000, 'x'))) {
        }
    });
}

TEST_P(CurlSessionErrorReply, AnAnnouncedLengthBeyondEveryLimitChangesNothing)
{
    for (const char *length : {"9223372036854775807", "99999999999999999999999999999999"}) {
        expectStatus(
            404, sending(std::string("HTTP/1.1 404 No\r\nContent-Length: ") + length + "\r\n\r\n"));
    }
}

TEST_P(CurlSessionErrorReply, TheReplyBehindAnInterimOneCounts)
{
    expectStatus(404, sending("HTTP/1.1 100 Continue\r\n\r\n"
                              "HTTP/1.1 404 No\r\nContent-Length: 9\r\n\r\n"));
}

TEST_P(CurlSessionErrorReply, AConnectionWithAnUnreadBodyIsNotUsedAgain)
{
    const ScriptedServer server([](ServerConnection &connection) {
        connection.readRequest();
        connection.send("HTTP/1.1 404 No\r\nContent-Length: 9\r\n\r\n");
        connection.hold();
    });
    for (int i = 1; i <= 3; ++i) {
        SessionProbe probe(m_session, request(server.origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().status, 404);
        EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
        EXPECT_EQ(server.requestCount(), i);
        EXPECT_EQ(server.connections(), i);
    }
}

INSTANTIATE_TEST_SUITE_P(Methods, CurlSessionErrorReply, testing::Values("GET", "POST", "PUT"),
                         [](const auto &method) { return method.param; });

TEST(CurlSessionFailedRead, AConnectionIsKeptWhenTheBodyIsThere)
{
    const ScriptedServer server(ScriptedServer::answering(
        [](const auto &) { return ScriptedServer::replyBytes(404, "{\"error\":\"none\"}"); }));
    CurlHttpSession session(trustingOptions());
    for (int i = 1; i <= 3; ++i) {
        SessionProbe probe(session, getRequest(server.origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().status, 404);
    }
    EXPECT_EQ(server.connections(), 1);
    EXPECT_EQ(server.requestCount(), 3);
}

TEST(CurlSessionFailedRead, TheStatusCountsOverHttp2Too)
{
    const ScriptedServer server(
        [](ServerConnection &connection) {
            Http2Peer peer(connection);
            peer.beginReply(peer.nextRequest(), "{", 404);
            peer.reply(peer.nextRequest(), "{}");
            connection.hold();
        },
        {.offersHttp2 = true});
    CurlHttpSession session(trustingOptions());
    SessionProbe failed(session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(failed.waitForReply().status, 404);
    // The others on the connection are not disturbed.
    SessionProbe next(session, getRequest(server.origin() + "/b"));
    EXPECT_EQ(next.waitForReply().body, "{}");
    EXPECT_EQ(server.connections(), 1);
}

TEST(CurlSessionFailedWrite, AnAnswerBeforeTheWholeRequestWasReadCounts)
{
    const ScriptedServer server([](ServerConnection &connection) {
        connection.read(1000);
        connection.send("HTTP/1.1 413 Too Large\r\nContent-Length: 9\r\n\r\n");
        connection.hold();
    });
    CurlHttpSession session(trustingOptions());
    SessionProbe probe(session, postRequest(server.origin() + "/a", std::string(64 << 20, 'x')));
    EXPECT_EQ(probe.waitForReply().status, 413);
    EXPECT_EQ(server.connections(), 1);
}

} // namespace
} // namespace trellisport::test
