#include "Platform/SessionProbe.h"
#include "Support/Http2Peer.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <string>

namespace trellisport::test {
namespace {

using namespace std::chrono_literals;
using platform::CurlHttpSession;
using platform::TransportFailure;

constexpr ServerOptions http2{.offersHttp2 = true};

/// How often each protocol was used for a request.
struct Uses {
    std::atomic<int> http1 = 0;
    std::atomic<int> http2 = 0;
};

/// Answers every request by the protocol that the connection agreed on.
ScriptedServer::Script counting(Uses &uses)
{
    return [&uses](ServerConnection &connection) {
        if (connection.protocol() != "h2") {
            while (connection.readRequest()) {
                ++uses.http1;
                connection.send(ScriptedServer::replyBytes(200, "{}"));
            }
            return;
        }
        Http2Peer peer(connection);
        while (const auto stream = peer.nextRequest()) {
            ++uses.http2;
            peer.reply(stream, "{}");
        }
    };
}

TEST(CurlSessionHttp2, ReadsUseItAndShareTheConnection)
{
    Uses uses;
    const ScriptedServer server(counting(uses), http2);
    CurlHttpSession session(trustingOptions());
    for (int i = 0; i < 3; ++i) {
        SessionProbe probe(session, getRequest(server.origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().body, "{}");
    }
    EXPECT_EQ(uses.http2, 3);
    EXPECT_EQ(server.connections(), 1);
}

TEST(CurlSessionHttp2, WritesGoOverHttp1OnTheirOwnConnections)
{
    Uses uses;
    const ScriptedServer server(counting(uses), http2);
    CurlHttpSession session(trustingOptions());
    SessionProbe read(session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(read.waitForReply().status, 200);
    for (int i = 0; i < 2; ++i) {
        SessionProbe probe(session, postRequest(server.origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().status, 200);
    }
    EXPECT_EQ(uses.http2, 1);
    EXPECT_EQ(uses.http1, 2);
    EXPECT_EQ(server.connections(), 3);
}

TEST(CurlSessionHttp2, AnEndBeforeTheReplyIsALostConnection)
{
    const ScriptedServer server(
        [](ServerConnection &connection) {
            Http2Peer peer(connection);
            peer.nextRequest();
            connection.close();
        },
        http2);
    CurlHttpSession session(trustingOptions());
    SessionProbe probe(session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(probe.waitForFailure(), TransportFailure::ConnectionLost);
}

TEST(CurlSessionHttp2, AnEndWithinTheBodyIsALostConnection)
{
    const ScriptedServer server(
        [](ServerConnection &connection) {
            Http2Peer peer(connection);
            peer.beginReply(peer.nextRequest(), "{");
            connection.close();
        },
        http2);
    CurlHttpSession session(trustingOptions());
    SessionProbe probe(session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(probe.waitForFailure(), TransportFailure::ConnectionLost);
}

TEST(CurlSessionHttp2, NoiseIsNeitherACrashNorAReply)
{
    const ScriptedServer server(
        [](ServerConnection &connection) {
            connection.readSome();
            connection.send("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}");
            connection.hold();
        },
        http2);
    CurlHttpSession session(trustingOptions());
    SessionProbe probe(session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(probe.waitForFailure(), TransportFailure::ConnectionLost);
}

TEST(CurlSessionHttp2, ASilentExchangeTimesOutBesideABusyOneOnItsConnection)
{
    // The first request is answered, the second never; the rest keep the connection busy.
    const ScriptedServer server(
        [](ServerConnection &connection) {
            Http2Peer peer(connection);
            int requests = 0;
            while (const auto stream = peer.nextRequest()) {
                if (++requests != 2) {
                    peer.reply(stream, "{}");
                }
            }
        },
        http2);
    CurlHttpSession session(trustingOptions(1s));
    SessionProbe first(session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(first.waitForReply().status, 200);
    SessionProbe silent(session, getRequest(server.origin() + "/b"));
    const auto start = std::chrono::steady_clock::now();
    int others = 0;
    while (silent.calls() == 0 && std::chrono::steady_clock::now() - start < patience) {
        SessionProbe other(session, getRequest(server.origin() + "/c"));
        EXPECT_EQ(other.waitForReply().status, 200);
        ++others;
    }
    ASSERT_EQ(silent.calls(), 1);
    EXPECT_EQ(silent.waitForFailure(), TransportFailure::TimedOut);
    EXPECT_GT(others, 3);
    EXPECT_EQ(server.connections(), 1);
}

} // namespace
} // namespace trellisport::test
