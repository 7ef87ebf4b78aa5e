#include "Session/SessionFixture.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDeadlineTimer>

#include <future>
#include <thread>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

TEST_F(BusSessionTest, OnlyOneInstanceHasTheNameAndTheOtherActivatesIt)
{
    start();
    const auto second = make(m_bus.connect(), never);
    EXPECT_FALSE(second->claimName());
    // The call waits for its answer, which this thread gives: so it is made on another.
    std::promise<bool> answered;
    std::thread caller([&] {
        QDBusConnection bus = m_bus.connect();
        answered.set_value(
            bus.call(applicationCall(QStringLiteral("Activate"),
                                     {ActivationToken{QStringLiteral("token-1")}.toPlatformData()}))
                .type() == QDBusMessage::ReplyMessage);
    });
    EXPECT_TRUE(logHas("bring up token-1"));
    caller.join();
    EXPECT_TRUE(answered.get_future().get());
}

TEST_F(BusSessionTest, OpenAndActionsBringUpTheWindow)
{
    start();
    QDBusConnection bus = m_bus.connect();
    const QVariantMap first{{QStringLiteral("desktop-startup-id"), QStringLiteral("id-1")}};
    const QVariantMap second{{QStringLiteral("activation-token"), QStringLiteral("token-1")}};
    bus.send(applicationCall(QStringLiteral("Open"),
                             {QStringList{QStringLiteral("file:///etc/passwd")}, first}));
    EXPECT_TRUE(logHas("bring up id-1"));
    bus.send(applicationCall(QStringLiteral("ActivateAction"),
                             {QStringLiteral("answer"), QVariantList(), second}));
    EXPECT_TRUE(logHas("bring up token-1"));
    EXPECT_THAT(log, SizeIs(2));
}

TEST_F(BusSessionTest, AFloodOfActivationsBringsUpTheWindowOnceAndOnceMore)
{
    start();
    showsWindow = false;
    QDBusConnection bus = m_bus.connect();
    const auto activate = [&](const char *token) {
        return bus.asyncCall(applicationCall(
            QStringLiteral("Activate"),
            {QVariantMap{{QStringLiteral("activation-token"), QLatin1String(token)}}}));
    };
    for (int count = 0; count < 100; ++count) {
        activate("old");
    }
    const QDBusPendingCall last = activate("new");
    ASSERT_TRUE(waitUntil([&] { return last.isFinished(); }));
    ASSERT_THAT(wishes, SizeIs(1));
    wishes[0](true);
    ASSERT_TRUE(waitUntil([&] { return wishes.size() == 2; }));
    wishes[1](true);
    runPendingEvents();
    EXPECT_THAT(log, ElementsAre("bring up old", "bring up new"));
}

TEST_F(BusSessionTest, WithoutAWindowItEndsWithItsBus)
{
    start();
    registerDevice();
    ASSERT_TRUE(deliver(sealed(awarded)));
    m_bus.end();
    EXPECT_TRUE(logHas("leave"));
}

TEST_F(BusSessionTest, WithAWindowItOutlivesItsBusAndLeavesWhenThatIsClosed)
{
    start();
    registerDevice();
    m_session->setWindow(true);
    ASSERT_TRUE(deliver(sealed(question)));
    m_bus.end();
    EXPECT_FALSE(waitUntil([&] { return !log.empty(); }, std::chrono::milliseconds(300)));
    m_session->setWindow(false);
    EXPECT_TRUE(logHas("leave"));
}

TEST_F(BusSessionTest, WithoutAWindowItLeavesWhenNothingHappens)
{
    start(std::chrono::milliseconds(50));
    ASSERT_TRUE(logHas("leave"));
    QDBusConnection other = m_bus.connect();
    EXPECT_FALSE(other.interface()->isServiceRegistered(QLatin1String(name)).value());
}

TEST_F(BusSessionTest, AStartWithAWindowIsNotGivenUpHoweverLongItTakes)
{
    m_session = make(m_bus.connect(), std::chrono::milliseconds(20), true);
    EXPECT_FALSE(waitUntil([&] { return !log.empty(); }, std::chrono::milliseconds(300)));
    m_session->setWindow(true);
    m_session->setWindow(false);
    EXPECT_TRUE(logHas("leave"));
}

TEST_F(BusSessionTest, ItStaysForAWaitingNotificationAndLeavesWhenThatIsDismissed)
{
    start(std::chrono::milliseconds(50));
    m_session->setWindow(true);
    registerDevice();
    ASSERT_TRUE(deliver(sealed(awarded)));
    m_session->setWindow(false);
    EXPECT_FALSE(waitUntil([&] { return !log.empty(); }, std::chrono::milliseconds(300)));
    m_service.dismiss(m_service.shown().front().id);
    EXPECT_TRUE(logHas("leave"));
}

TEST_F(BusSessionTest, ItStaysWithAWindowAndLeavesAtOnceWhenThatIsClosed)
{
    start(never);
    m_session->setWindow(true);
    runPendingEvents();
    EXPECT_THAT(log, SizeIs(0));
    m_session->setWindow(false);
    EXPECT_TRUE(logHas("leave"));
}

TEST_F(BusSessionTest, ItStaysWithoutAWindowAsLongAsANotificationWaits)
{
    start(std::chrono::milliseconds(50));
    m_session->setWindow(true);
    registerDevice();
    ASSERT_TRUE(deliver(sealed(awarded)));
    m_session->setWindow(false);
    EXPECT_FALSE(waitUntil([&] { return !log.empty(); }, std::chrono::milliseconds(300)));
    m_service.tap(m_service.shown().front().id);
    EXPECT_TRUE(logHas("open p1"));
}

TEST_F(BusSessionTest, WhoIsAnsweredWhileItLeavesGetsTheWindow)
{
    constexpr int rounds = 150;
    int leaves = 0;
    int windows = 0;
    QDBusConnection caller = m_bus.connect();
    for (int round = 0; round < rounds; ++round) {
        log.clear();
        start(std::chrono::milliseconds(2));
        // Some calls come before it has left, some after, and those of the rounds in which this
        // thread stands still while it leaves.
        const std::chrono::microseconds delay(40 * round);
        if (round % 2 == 0) {
            std::this_thread::sleep_for(delay);
        } else {
            const QDeadlineTimer deadline(delay);
            static_cast<void>(waitUntil([&] { return deadline.hasExpired(); }));
        }
        const QDBusPendingCall call =
            caller.asyncCall(applicationCall(QStringLiteral("Activate"), {QVariantMap()}));
        ASSERT_TRUE(waitUntil([&] { return call.isFinished() && !log.empty(); }));
        if (call.isError()) {
            ++leaves;
            EXPECT_THAT(log, ElementsAre("leave")) << round;
        } else {
            ++windows;
            ASSERT_TRUE(logHas("bring up ")) << round;
            EXPECT_THAT(log, ElementsAre("bring up ")) << round;
            EXPECT_TRUE(caller.interface()->isServiceRegistered(QLatin1String(name)).value());
        }
    }
    EXPECT_GT(leaves, 0);
    EXPECT_GT(windows, 0);
}

} // namespace
} // namespace trellisport::test
