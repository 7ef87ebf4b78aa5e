#include "Platform/Linux/Session/BusSession.h"
#include "BusSupport/FakeDistributor.h"
#include "BusSupport/FakeNotificationService.h"
#include "BusSupport/PrivateBus.h"
#include "PracticeService/Push/WebPushEncryption.h"
#include "Support/Waiting.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <future>
#include <thread>

namespace trellisport::test {
namespace {

using platform::ActivationToken;
using platform::BusSession;
using ::testing::ElementsAre;
using ::testing::SizeIs;

constexpr const char *name = "org.trellisport.session-test";
constexpr const char *path = "/org/trellisport/session_test";
constexpr std::chrono::hours never{1};

QDBusMessage applicationCall(const QString &method, const QVariantList &arguments)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(QLatin1String(name), QLatin1String(path),
                                       QStringLiteral("org.freedesktop.Application"), method);
    call.setAutoStartService(false);
    call.setArguments(arguments);
    return call;
}

class BusSessionTest : public ::testing::Test {
protected:
    BusSessionTest() { m_service.appear(); }

    void start(std::chrono::milliseconds grace = never)
    {
        m_session.reset();
        m_session = make(m_bus.connect(), grace);
        ASSERT_TRUE(m_session->claimName());
    }
    std::unique_ptr<BusSession> make(const QDBusConnection &bus, std::chrono::milliseconds grace,
                                     bool awaitsWindow = false)
    {
        return std::make_unique<BusSession>(
            bus,
            BusSession::Setup{QLatin1String(name), QLatin1String(path), QStringLiteral("Console"),
                              m_folder.filePath(QStringLiteral("state")), QString(), grace,
                              awaitsWindow},
            BusSession::Events{
                [this](const ActivationToken &token, std::function<void(bool)> done) {
                    log.push_back("bring up " + token.value.toStdString());
                    if (showsWindow) {
                        m_session->setWindow(true);
                        done(true);
                    } else {
                        wishes.push_back(std::move(done));
                    }
                },
                [] { return false; },
                [](const platform::UserNotification &, const auto &completion) {
                    completion({platform::PresentationOptions::banner});
                },
                [this](const platform::UserNotification &notification) {
                    const auto project = notification.userInfo.find("project_id");
                    log.push_back("open " + (project == notification.userInfo.end()
                                                 ? std::string("nothing")
                                                 : *project->second.text()));
                },
                [this](std::vector<std::uint8_t> token) { deviceToken = std::move(token); },
                [this](const std::string &reason) { log.push_back("refused " + reason); },
                [this] { log.emplace_back("leave"); }});
    }
    /// Registers with a push service, so that messages can be delivered.
    void registerDevice()
    {
        m_distributor.appear();
        m_session->registerDevice();
        ASSERT_TRUE(waitUntil([&] { return !deviceToken.empty(); }));
    }
    QByteArray sealed(const QByteArray &content)
    {
        const QJsonObject token =
            QJsonDocument::fromJson(QByteArray(reinterpret_cast<const char *>(deviceToken.data()),
                                               static_cast<qsizetype>(deviceToken.size())))
                .object();
        const auto bytes = [&](const char *key) {
            return QByteArray::fromBase64(token[QLatin1String(key)].toString().toLatin1(),
                                          QByteArray::Base64UrlEncoding);
        };
        return practice::encryptPushMessage({bytes("p256dh"), bytes("auth")}, content).value();
    }
    QDBusPendingCall send(const QByteArray &message)
    {
        lastSent = message;
        return m_distributor.sendMessage1(m_distributor.token(), message);
    }
    /// Comes back when it is acknowledged.
    bool deliver(const QByteArray &message)
    {
        const QDBusPendingCall call = send(message);
        return waitUntil([&] { return call.isFinished(); }) && !call.isError();
    }
    /// Everything that was called before this has been dealt with when it returns.
    void settle()
    {
        QDBusConnection other = m_bus.connect();
        const QDBusPendingCall ping = other.asyncCall(QDBusMessage::createMethodCall(
            QLatin1String(name), QLatin1String(path), QStringLiteral("org.freedesktop.DBus.Peer"),
            QStringLiteral("Ping")));
        ASSERT_TRUE(waitUntil([&] { return ping.isFinished(); }));
        runPendingEvents();
    }
    bool logHas(const std::string &entry)
    {
        return waitUntil([&] { return std::count(log.begin(), log.end(), entry) > 0; });
    }

    PrivateBus m_bus;
    QTemporaryDir m_folder;
    FakeNotificationService m_service{m_bus.connect()};
    FakeDistributor m_distributor{m_bus.connect(), QStringLiteral("fake"), true, true};
    std::unique_ptr<BusSession> m_session;
    std::vector<std::string> log;
    std::vector<std::function<void(bool)>> wishes;
    std::vector<std::uint8_t> deviceToken;
    QByteArray lastSent;
    bool showsWindow = true;
};

const QByteArray awarded =
    R"({"aps":{"alert":{"title":"Awarded"}},"type":"project_awarded","project_id":"p1"})";
const QByteArray question =
    R"({"aps":{"alert":{"title":"Decision"}},"type":"decision_needed","project_id":"p7"})";

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

TEST_F(BusSessionTest, AMessageIsShownAndItsTapBringsUpTheWindowAndThenRoutes)
{
    start();
    registerDevice();
    ASSERT_TRUE(deliver(sealed(awarded)));
    ASSERT_THAT(m_service.shown(), SizeIs(1));
    EXPECT_EQ(m_service.shown().front().summary, QStringLiteral("Awarded"));
    EXPECT_THAT(log, SizeIs(0));
    m_service.tap(m_service.shown().front().id, QStringLiteral("token-2"));
    ASSERT_TRUE(logHas("open p1"));
    EXPECT_THAT(log, ElementsAre("bring up token-2", "open p1"));
}

TEST_F(BusSessionTest, NothingIsRoutedWhenTheWindowCanNotBeShown)
{
    start();
    registerDevice();
    showsWindow = false;
    ASSERT_TRUE(deliver(sealed(awarded)));
    m_service.tap(m_service.shown().front().id);
    ASSERT_TRUE(waitUntil([&] { return wishes.size() == 1; }));
    wishes.front()(false);
    runPendingEvents();
    EXPECT_THAT(log, ElementsAre("bring up "));
}

TEST_F(BusSessionTest, TheSameMessageIsShownOnceAlsoAfterARestart)
{
    start();
    registerDevice();
    const QByteArray message = sealed(awarded);
    ASSERT_TRUE(deliver(message));
    ASSERT_TRUE(deliver(message));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
    start();
    ASSERT_TRUE(deliver(message));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
    ASSERT_TRUE(deliver(sealed(awarded)));
    EXPECT_THAT(m_service.shown(), SizeIs(2));
}

TEST_F(BusSessionTest, MessagesWithTheSameIdAreOneNotification)
{
    start();
    registerDevice();
    ASSERT_TRUE(deliver(sealed(R"({"id":"n1","aps":{"alert":"one"}})")));
    ASSERT_TRUE(deliver(sealed(R"({"id":"n1","aps":{"alert":"again"}})")));
    ASSERT_TRUE(deliver(sealed(R"({"id":"n2","aps":{"alert":"two"}})")));
    EXPECT_THAT(m_service.shown(), SizeIs(2));
}

TEST_F(BusSessionTest, WhateverArrivesIsShownAndRoutesNowhereWhenItNamesNothing)
{
    start();
    registerDevice();
    for (const QByteArray &message : {awarded, QByteArray("hello"), sealed("[1]"), sealed("")}) {
        ASSERT_TRUE(deliver(message));
    }
    ASSERT_THAT(m_service.shown(), SizeIs(4));
    EXPECT_EQ(m_service.shown()[1].body, QStringLiteral("hello"));
    EXPECT_FALSE(m_service.shown()[3].body.isEmpty());
    m_service.tap(m_service.shown()[1].id);
    EXPECT_TRUE(logHas("open nothing"));
}

TEST_F(BusSessionTest, AMessageIsAcknowledgedWhenItIsShownAndNotBefore)
{
    start();
    registerDevice();
    m_service.holdsAnswers = true;
    const QDBusPendingCall call = send(sealed(awarded));
    const QDBusPendingCall again = send(lastSent);
    ASSERT_TRUE(waitUntil([&] { return m_service.held() == 1; }));
    settle();
    EXPECT_FALSE(call.isFinished());
    EXPECT_FALSE(again.isFinished());
    m_service.answerHeld();
    ASSERT_TRUE(waitUntil([&] { return call.isFinished() && again.isFinished(); }));
    EXPECT_FALSE(call.isError());
    EXPECT_FALSE(again.isError());
    EXPECT_THAT(m_service.shown(), SizeIs(1));
}

TEST_F(BusSessionTest, AMessageThatCanNotBeShownIsNotAcknowledgedAndShownLater)
{
    start();
    m_session->setWindow(true);
    registerDevice();
    m_service.vanish();
    for (int count = 0; count < 2; ++count) { // the second time it is known and waits already
        const QDBusPendingCall call = count == 0 ? send(sealed(question)) : send(lastSent);
        ASSERT_TRUE(waitUntil([&] { return call.isFinished(); }));
        EXPECT_TRUE(call.isError());
    }
    m_session->setWindow(false); // it stays for what it could not show
    EXPECT_FALSE(waitUntil([&] { return !log.empty(); }, std::chrono::milliseconds(300)));
    m_service.appear();
    ASSERT_TRUE(waitUntil([&] { return m_service.shown().size() == 1; }));
    ASSERT_TRUE(deliver(lastSent)); // the push service tries again: it has been seen by now
    EXPECT_THAT(m_service.shown(), SizeIs(1));
    m_service.tap(m_service.shown().front().id);
    EXPECT_TRUE(logHas("open p7"));
}

TEST_F(BusSessionTest, AMessageThatWasNotShownIsNotRememberedOverARestart)
{
    start();
    registerDevice();
    m_service.vanish();
    const QDBusPendingCall call = send(sealed(question));
    ASSERT_TRUE(waitUntil([&] { return call.isFinished(); }));
    start();
    m_service.appear();
    ASSERT_TRUE(deliver(lastSent));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
}

TEST_F(BusSessionTest, ANotificationServiceThatDiesBeforeItsAnswerLosesNoMessage)
{
    start();
    registerDevice();
    m_service.holdsAnswers = true;
    const QDBusPendingCall call = send(sealed(question));
    ASSERT_TRUE(waitUntil([&] { return m_service.held() == 1; }));
    m_service.die();
    ASSERT_TRUE(waitUntil([&] { return call.isFinished(); }));
    EXPECT_TRUE(call.isError());
    FakeNotificationService next(m_bus.connect());
    next.appear();
    EXPECT_TRUE(waitUntil([&] { return next.shown().size() == 1; }));
}

TEST_F(BusSessionTest, ADecisionIsShownAgainByTheNextNotificationService)
{
    start();
    m_session->setWindow(true);
    registerDevice();
    ASSERT_TRUE(deliver(sealed(question)));
    ASSERT_TRUE(deliver(sealed(awarded)));
    m_service.vanish();
    settle();
    m_session->setWindow(false);
    EXPECT_FALSE(waitUntil([&] { return !log.empty(); }, std::chrono::milliseconds(300)));
    FakeNotificationService next(m_bus.connect());
    next.appear();
    ASSERT_TRUE(waitUntil([&] { return next.shown().size() == 1; }));
    EXPECT_EQ(next.shown().front().summary, QStringLiteral("Decision"));
    next.tap(next.shown().front().id);
    EXPECT_TRUE(logHas("open p7"));
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
