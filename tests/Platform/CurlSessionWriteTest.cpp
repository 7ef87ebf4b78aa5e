#include "Platform/SessionProbe.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace trellisport::test {
namespace {

using platform::CurlHttpSession;
using platform::HttpRequest;
using platform::TransportFailure;

HttpRequest write(const std::string &method, const std::string &url)
{
    HttpRequest request = postRequest(url);
    request.method = method;
    return request;
}

bool isRead(const std::string &request)
{
    return request.starts_with("GET ");
}

/// A write must reach the server once at most, whatever becomes of the connection.
class CurlSessionWrite : public testing::TestWithParam<std::string> {
protected:
    CurlHttpSession m_session{trustingOptions()};

    /// Warms the connections up with reads, then writes, and counts the writes that arrived.
    void expectOneArrival(ScriptedServer &server)
    {
        for (int i = 0; i < 2; ++i) {
            SessionProbe read(m_session, getRequest(server.origin() + "/a"));
            EXPECT_EQ(read.waitForReply().status, 200);
        }
        SessionProbe probe(m_session, write(GetParam(), server.origin() + "/a"));
        EXPECT_EQ(probe.waitForFailure(), TransportFailure::ConnectionLost);
        // What libcurl would send again it sends before it reports, or never.
        EXPECT_EQ(server.requestCount(GetParam() + ' '), 1);
        EXPECT_EQ(probe.calls(), 1);
    }
};

TEST_P(CurlSessionWrite, ArrivesOnceWhenTheConnectionIsClosedUnanswered)
{
    ScriptedServer server(ScriptedServer::answering([](const std::string &request) {
        return isRead(request) ? ScriptedServer::replyBytes(200, "{}") : std::string();
    }));
    expectOneArrival(server);
}

TEST_P(CurlSessionWrite, ArrivesOnceWhenTheConnectionIsResetUnanswered)
{
    ScriptedServer server([](ServerConnection &connection) {
        while (const auto request = connection.readRequest()) {
            if (!isRead(*request)) {
                connection.reset();
                return;
            }
            connection.send(ScriptedServer::replyBytes(200, "{}"));
        }
    });
    expectOneArrival(server);
}

TEST_P(CurlSessionWrite, ArrivesOnceWhenTheReplyBreaksOff)
{
    for (const std::string &part : {std::string("HTTP/1.1 200 OK\r\n"),
                                    std::string("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nab"),
                                    std::string("HTTP/1.1 100 Continue\r\n\r\n")}) {
        ScriptedServer server([&](ServerConnection &connection) {
            while (const auto request = connection.readRequest()) {
                if (!isRead(*request)) {
                    connection.send(part);
                    connection.close();
                    return;
                }
                connection.send(ScriptedServer::replyBytes(200, "{}"));
            }
        });
        expectOneArrival(server);
    }
}

TEST_P(CurlSessionWrite, DoesNotUseAKeptConnectionThatDiedInTheMeantime)
{
    // The second request on any connection meets its end, read or not.
    ScriptedServer server([](ServerConnection &connection) {
        connection.readRequest();
        connection.send(ScriptedServer::replyBytes(200, "{}"));
        connection.readRequest();
        connection.reset();
    });
    SessionProbe read(m_session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(read.waitForReply().status, 200);
    for (int i = 1; i <= 3; ++i) {
        SessionProbe probe(m_session, write(GetParam(), server.origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().status, 200);
        EXPECT_EQ(server.requestCount(GetParam() + ' '), i);
    }
}

TEST_P(CurlSessionWrite, ArrivesOnceWhenTheServerWantsCredentials)
{
    for (const int status : {401, 407, 417, 408, 425, 503}) {
        ScriptedServer server(ScriptedServer::answering([status](const auto &) {
            return ScriptedServer::replyBytes(
                status, "", "WWW-Authenticate: Basic realm=\"a\"\r\nRetry-After: 0\r\n");
        }));
        SessionProbe probe(m_session, write(GetParam(), server.origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().status, status);
        EXPECT_EQ(server.requestCount(), 1);
    }
}

TEST_P(CurlSessionWrite, ArrivesOnceWhenItTimesOut)
{
    CurlHttpSession session(trustingOptions(std::chrono::seconds(2)));
    ScriptedServer server([](ServerConnection &connection) {
        connection.readRequest();
        connection.hold();
    });
    SessionProbe probe(session, write(GetParam(), server.origin() + "/a"));
    EXPECT_EQ(probe.waitForFailure(), TransportFailure::TimedOut);
    EXPECT_EQ(server.requestCount(), 1);
    EXPECT_EQ(server.connections(), 1);
}

TEST_P(CurlSessionWrite, AnsweredWritesArriveOnceEach)
{
    ScriptedServer server(ScriptedServer::answering(
        [](const auto &) { return ScriptedServer::replyBytes(200, "{}"); }));
    std::vector<std::unique_ptr<SessionProbe>> probes;
    probes.reserve(20);
    for (int i = 0; i < 20; ++i) {
        probes.push_back(std::make_unique<SessionProbe>(
            m_session, write(GetParam(), server.origin() + "/" + std::to_string(i))));
    }
    for (const auto &probe : probes) {
        EXPECT_EQ(probe->waitForReply().status, 200);
    }
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(server.requestCount(GetParam() + " /" + std::to_string(i) + ' '), 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Methods, CurlSessionWrite, testing::Values("POST", "PUT"),
                         [](const auto &method) { return method.param; });

TEST(CurlSessionRead, IsSentOnceOnAFreshConnection)
{
    for (const auto end :
         {&ServerConnection::close, &ServerConnection::cut, &ServerConnection::reset}) {
        ScriptedServer server([end](ServerConnection &connection) {
            connection.readRequest();
            (connection.*end)();
        });
        CurlHttpSession session(trustingOptions());
        SessionProbe probe(session, getRequest(server.origin() + "/a"));
        EXPECT_EQ(probe.waitForFailure(), TransportFailure::ConnectionLost);
        EXPECT_EQ(server.requestCount("GET "), 1);
        EXPECT_EQ(server.connections(), 1);
    }
}

TEST(CurlSessionRead, ReachesTheServerOnceThoughItClosesAfterEachReply)
{
    CurlHttpSession session(trustingOptions());
    ScriptedServer server([](ServerConnection &connection) {
        connection.readRequest();
        connection.send(ScriptedServer::replyBytes(200, "{}"));
        connection.close();
    });
    for (int i = 0; i < 3; ++i) {
        SessionProbe probe(session, getRequest(server.origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().status, 200);
        EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    }
    EXPECT_EQ(server.requestCount(), 3);
}

TEST(CurlSessionRead, IsSentAgainWhenAKeptConnectionHasDied)
{
    CurlHttpSession session(trustingOptions());
    ScriptedServer server([](ServerConnection &connection) {
        connection.readRequest();
        connection.send(ScriptedServer::replyBytes(200, "{}"));
        connection.readRequest();
        connection.reset();
    });
    for (int i = 0; i < 3; ++i) {
        SessionProbe probe(session, getRequest(server.origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().status, 200);
    }
}

} // namespace
} // namespace trellisport::test
