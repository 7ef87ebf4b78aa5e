#include "Platform/SessionProbe.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace trellisport::test {
namespace {

using platform::CurlHttpSession;
using platform::HttpRequest;
using platform::TransportFailure;

/// How far an exchange comes before its connection ends.
struct Stage {
    const char *name;
    bool speaksTls;
    bool readsRequest;
    std::function<void(ServerConnection &)> play;
    TransportFailure failure;
};

/// How the connection ends.
struct End {
    const char *name;
    void (ServerConnection::*end)();
};

void PrintTo(const Stage &stage, std::ostream *stream)
{
    *stream << stage.name;
}

void PrintTo(const End &end, std::ostream *stream)
{
    *stream << end.name;
}

void readAndSend(ServerConnection &connection, std::string_view bytes)
{
    connection.readRequest();
    connection.send(bytes);
}

/// Sends the first bytes of what a server says in a handshake.
void beginHandshake(ServerConnection &connection)
{
    connection.readSome();
    connection.send(std::string_view("\x16\x03\x03\x00\x7a\x02\x00\x00", 8));
}

const std::vector<Stage> stages{
    {"BeforeTheHandshakeIsAnswered", false, false,
     [](ServerConnection &connection) { connection.readSome(); },
     TransportFailure::SecureConnectionFailed},
    {"WithinTheHandshake", false, false, beginHandshake, TransportFailure::SecureConnectionFailed},
    {"BeforeTheRequest", true, false, [](ServerConnection &) {}, TransportFailure::ConnectionLost},
    {"WithinTheRequest", true, false, [](ServerConnection &connection) { connection.read(20); },
     TransportFailure::ConnectionLost},
    {"BeforeTheHeaders", true, true, [](ServerConnection &connection) { connection.readRequest(); },
     TransportFailure::ConnectionLost},
    {"WithinTheHeaders", true, true,
     [](ServerConnection &connection) { readAndSend(connection, "HTTP/1.1 200 OK\r\nContent-Ty"); },
     TransportFailure::ConnectionLost},
    {"AfterTheHeaders", true, true,
     [](ServerConnection &connection) {
         readAndSend(connection, "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n");
     },
     TransportFailure::ConnectionLost},
    {"WithinTheBody", true, true,
     [](ServerConnection &connection) {
         readAndSend(connection, "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{");
     },
     TransportFailure::ConnectionLost},
    {"WithinAChunk", true, true,
     [](ServerConnection &connection) {
         readAndSend(connection, "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\n{");
     },
     TransportFailure::ConnectionLost},
};

const std::vector<End> ends{{"Closed", &ServerConnection::close},
                            {"Cut", &ServerConnection::cut},
                            {"Reset", &ServerConnection::reset}};

/// Every stage at which a connection can end, in every way, for a read and for a write.
class CurlSessionStages : public testing::TestWithParam<std::tuple<Stage, End, const char *>> {};

TEST_P(CurlSessionStages, AreOneFailureAndNoSecondTry)
{
    const auto &stage = std::get<Stage>(GetParam());
    const auto &end = std::get<End>(GetParam());
    const std::string_view method = std::get<const char *>(GetParam());
    CurlHttpSession session(trustingOptions());
    const ScriptedServer server(
        [&](ServerConnection &connection) {
            stage.play(connection);
            (connection.*end.end)();
        },
        {.speaksTls = stage.speaksTls});
    // Too much for the buffers between the two, so that the client can't be done with it early.
    const std::string body(std::size_t{stage.readsRequest ? 1U : 32U} << 20, 'x');
    HttpRequest request = postRequest(server.origin() + "/a", body);
    if (method == "GET") {
        request = getRequest(server.origin() + "/a");
    }
    SessionProbe probe(session, request);
    EXPECT_EQ(probe.waitForFailure(), stage.failure);
    EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    EXPECT_EQ(server.connections(), 1);
    EXPECT_EQ(server.requestCount(), stage.readsRequest ? 1 : 0);

    // It did the session no harm.
    const ScriptedServer sound(ScriptedServer::answering(
        [](const auto &) { return ScriptedServer::replyBytes(200, "{}"); }));
    SessionProbe next(session, getRequest(sound.origin() + "/a"));
    EXPECT_EQ(next.waitForReply().body, "{}");
    EXPECT_EQ(probe.calls(), 1);
}

std::string nameOf(const testing::TestParamInfo<CurlSessionStages::ParamType> &parameters)
{
    const auto &[stage, end, method] = parameters.param;
    return std::string(stage.name) + end.name + method;
}

INSTANTIATE_TEST_SUITE_P(Ends, CurlSessionStages,
                         testing::Combine(testing::ValuesIn(stages), testing::ValuesIn(ends),
                                          testing::Values("GET", "POST")),
                         nameOf);

} // namespace
} // namespace trellisport::test
