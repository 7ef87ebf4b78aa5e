#include "ServiceAccess/ClientFixture.h"

#include <QObject>
#include <QTimer>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace trellisport::test {
namespace {

/// Where a server keeps the client waiting.
struct Stage {
    const char *name;
    bool speaksTls;
    std::string_view sent; ///< before the wait, once the request was read
};

constexpr std::string_view reply = "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}";

const std::vector<Stage> stages{{"handshake", false, ""},
                                {"headers", true, ""},
                                {"middle of the headers", true, reply.substr(0, 20)},
                                {"body", true, reply.substr(0, reply.size() - 2)},
                                {"middle of the body", true, reply.substr(0, reply.size() - 1)}};

/// Turns of the calling thread's event loop, one after the other.
class Turns {
public:
    Turns()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { ++m_count; });
    }

    void begin() { m_timer.start(0); }
    [[nodiscard]] int count() const { return m_count; }

private:
    QTimer m_timer;
    std::atomic<int> m_count = 0;
};

// The server goes on only when the caller's event loop has turned many times. A client that made
// its caller wait would wait for itself.
TEST(ClientWaiting, TheCallersThreadGoesOnWhereverTheServerKeepsAnExchangeWaiting)
{
    for (const Stage &stage : stages) {
        Turns turns;
        std::atomic<bool> wasReached = false;
        ClientFixture fixture(
            [&](ServerConnection &connection) {
                if (stage.speaksTls) {
                    connection.readRequest();
                    connection.send(stage.sent);
                }
                wasReached = true;
                EXPECT_TRUE(waitUntil([&] { return turns.count() >= 1000; })) << stage.name;
                if (stage.speaksTls) {
                    connection.send(reply.substr(stage.sent.size()));
                    connection.hold();
                }
            },
            {.speaksTls = stage.speaksTls});
        const auto outcome = observe(fixture.api().getConfig());
        ASSERT_TRUE(waitUntil([&] { return wasReached.load(); })) << stage.name;
        turns.begin();
        ASSERT_TRUE(waitUntil([&] { return outcome->isDone(); })) << stage.name;
        EXPECT_GE(turns.count(), 1000) << stage.name;
        EXPECT_EQ(outcome->hasFailed(), !stage.speaksTls) << stage.name;
    }
}

} // namespace
} // namespace trellisport::test
