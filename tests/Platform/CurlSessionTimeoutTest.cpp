#include "Platform/SessionProbe.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <netinet/in.h>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace trellisport::test {
namespace {

using namespace std::chrono_literals;
using platform::CurlHttpSession;
using platform::TransportFailure;

constexpr std::chrono::milliseconds timeout = 1s;
/// A byte comes well before the time is over, the whole takes several times as long.
constexpr std::chrono::milliseconds pause = 50ms;

/// A port of 127.0.0.1 whose queue of callers is full and never emptied: the system leaves
/// everybody else who calls without an answer.
class FullListener {
public:
    FullListener()
    {
        m_address.sin_family = AF_INET;
        m_address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(m_address);
        m_sockets.push_back(socket(AF_INET, SOCK_STREAM, 0));
        if (bind(m_sockets.front(), address(), size) != 0 || listen(m_sockets.front(), 0) != 0 ||
            getsockname(m_sockets.front(), address(), &size) != 0) {
            throw std::runtime_error("no port to listen on");
        }
        for (int caller = 0; caller < 8; ++caller) {
            m_sockets.push_back(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
            (void)connect(m_sockets.back(), address(), size);
        }
    }
    FullListener(const FullListener &) = delete;
    FullListener &operator=(const FullListener &) = delete;
    ~FullListener() { std::for_each(m_sockets.begin(), m_sockets.end(), &close); }

    [[nodiscard]] int port() const { return ntohs(m_address.sin_port); }

private:
    sockaddr *address() { return reinterpret_cast<sockaddr *>(&m_address); }

    sockaddr_in m_address{};
    std::vector<int> m_sockets;
};

class CurlSessionTimeout : public testing::Test {
protected:
    CurlHttpSession m_session{trustingOptions(timeout)};

    void expectTimeout(ScriptedServer::Script script, const ServerOptions &options = {})
    {
        const ScriptedServer server(std::move(script), options);
        const auto start = std::chrono::steady_clock::now();
        SessionProbe probe(m_session, getRequest(server.origin() + "/a"));
        EXPECT_EQ(probe.waitForFailure(), TransportFailure::TimedOut);
        EXPECT_GE(std::chrono::steady_clock::now() - start, timeout);
    }
};

TEST_F(CurlSessionTimeout, SilenceAfterTheRequestEndsIt)
{
    expectTimeout([](ServerConnection &connection) { connection.hold(); });
}

TEST_F(CurlSessionTimeout, AConnectionThatIsNeverMadeEndsIt)
{
    const FullListener listener;
    const auto start = std::chrono::steady_clock::now();
    SessionProbe probe(m_session,
                       getRequest("https://127.0.0.1:" + std::to_string(listener.port()) + "/a"));
    EXPECT_EQ(probe.waitForFailure(), TransportFailure::TimedOut);
    EXPECT_GE(std::chrono::steady_clock::now() - start, timeout);
}

TEST_F(CurlSessionTimeout, SilenceInTheHandshakeEndsIt)
{
    expectTimeout([](ServerConnection &connection) { connection.hold(); }, {.speaksTls = false});
}

TEST_F(CurlSessionTimeout, SilenceInTheHeadersEndsIt)
{
    expectTimeout([](ServerConnection &connection) {
        connection.readRequest();
        connection.send("HTTP/1.1 200 OK\r\nContent-Le");
        connection.hold();
    });
}

TEST_F(CurlSessionTimeout, SilenceInTheBodyEndsIt)
{
    expectTimeout([](ServerConnection &connection) {
        connection.readRequest();
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nab");
        connection.hold();
    });
}

TEST_F(CurlSessionTimeout, SilenceAfterAnInterimReplyEndsIt)
{
    expectTimeout([](ServerConnection &connection) {
        connection.readRequest();
        connection.send("HTTP/1.1 100 Continue\r\n\r\n");
        connection.hold();
    });
}

TEST_F(CurlSessionTimeout, AServerThatStopsReadingEndsIt)
{
    std::atomic<bool> hasEnded = false;
    const ScriptedServer server([&](ServerConnection &connection) {
        connection.read(1000);
        EXPECT_TRUE(waitUntil([&] { return hasEnded.load(); }));
    });
    SessionProbe probe(m_session, postRequest(server.origin() + "/a", std::string(64 << 20, 'x')));
    EXPECT_EQ(probe.waitForFailure(), TransportFailure::TimedOut);
    hasEnded = true;
}

TEST_F(CurlSessionTimeout, AReplyThatDripsSlowlyIsWaitedFor)
{
    const std::string body(40, 'x');
    const ScriptedServer server([&](ServerConnection &connection) {
        connection.readRequest();
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 40\r\n\r\n");
        connection.drip(body, pause);
    });
    SessionProbe probe(m_session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(probe.waitForReply().body, body);
}

TEST_F(CurlSessionTimeout, HeadersThatDripSlowlyAreWaitedFor)
{
    const ScriptedServer server([](ServerConnection &connection) {
        connection.readRequest();
        connection.drip("HTTP/1.1 200 " + std::string(30, 'k'), pause);
        connection.send("\r\nContent-Length: 2\r\n\r\n{}");
    });
    SessionProbe probe(m_session, getRequest(server.origin() + "/a"));
    EXPECT_EQ(probe.waitForReply().body, "{}");
}

TEST(CurlSessionSlowness, ARequestThatIsTakenSlowlyIsWaitedFor)
{
    // A time so long that no load on the machine makes a pause of it, and still less than the
    // whole.
    constexpr std::chrono::milliseconds longTimeout = 4s;
    CurlHttpSession session(trustingOptions(longTimeout));
    const ScriptedServer server(
        [longTimeout](ServerConnection &connection) {
            const auto start = std::chrono::steady_clock::now();
            while (std::chrono::steady_clock::now() - start < longTimeout + 1s) {
                connection.read(200'000);
                std::this_thread::sleep_for(pause);
            }
            connection.readRequest();
            connection.send(ScriptedServer::replyBytes(200, "{}"));
            connection.hold();
        },
        {.receiveBuffer = 100'000});
    // The end is made to look like a request of its own, so that the script notices it.
    const std::string body = std::string(30 << 20, 'x') + "\r\n\r\n";
    SessionProbe probe(session, postRequest(server.origin() + "/a", body));
    EXPECT_EQ(probe.waitForReply().body, "{}");
}

TEST_F(CurlSessionTimeout, OneSilentExchangeDoesNotHoldUpOthers)
{
    const ScriptedServer silent([](ServerConnection &connection) { connection.hold(); });
    const ScriptedServer quick(ScriptedServer::answering(
        [](const auto &) { return ScriptedServer::replyBytes(200, "{}"); }));
    SessionProbe waiting(m_session, getRequest(silent.origin() + "/a"));
    for (int i = 0; i < 20; ++i) {
        SessionProbe probe(m_session, getRequest(quick.origin() + "/a"));
        EXPECT_EQ(probe.waitForReply().status, 200);
    }
    EXPECT_EQ(waiting.waitForFailure(), TransportFailure::TimedOut);
}

} // namespace
} // namespace trellisport::test
