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
    std::unique_ptr<BusSession> make(const QDBusConnection &bus, std::chrono::milliseconds grace)
    {
        return std::make_unique<BusSession>(
            bus,
            BusSession::Setup{QLatin1String(name), QLatin1String(path), QStringLiteral("Console"),
                              m_folder.filePath(QStringLiteral("state")), QString(), grace},
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
                    log.push_back("open " + *notification.userInfo.at("project_id").text());
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
    bool deliver(const QByteArray &message)
    {
        const QDBusPendingCall call = m_distributor.sendMessage1(m_distributor.token(), message);
        return waitUntil([&] { return call.isFinished(); });
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
    bool showsWindow = true;
};

const QByteArray awarded =
    R"({"aps":{"alert":{"title":"Awarded"}},"type":"project_awarded","project_id":"p1"})";

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

TEST_F(BusSessionTest, OpenBringsUpTheWindowAndActionsDoNothing)
{
    start();
    QDBusConnection bus = m_bus.connect();
    const QVariantMap startupId{{QStringLiteral("desktop-startup-id"), QStringLiteral("id-1")}};
    bus.send(applicationCall(QStringLiteral("ActivateAction"),
                             {QStringLiteral("answer"), QVariantList(), QVariantMap()}));
    bus.send(applicationCall(QStringLiteral("Open"),
                             {QStringList{QStringLiteral("file:///etc/passwd")}, startupId}));
    EXPECT_TRUE(logHas("bring up id-1"));
    EXPECT_THAT(log, SizeIs(1));
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

TEST_F(BusSessionTest, APlainMessageIsShownAndAnythingElseIsAnsweredAndDropped)
{
    start();
    registerDevice();
    ASSERT_TRUE(deliver(awarded));
    ASSERT_TRUE(deliver("hello"));
    ASSERT_TRUE(deliver(sealed("[1]")));
    ASSERT_TRUE(deliver(sealed("")));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
}

TEST_F(BusSessionTest, WithoutAWindowItLeavesWhenNothingHappens)
{
    start(std::chrono::milliseconds(50));
    ASSERT_TRUE(logHas("leave"));
    QDBusConnection other = m_bus.connect();
    EXPECT_FALSE(other.interface()->isServiceRegistered(QLatin1String(name)).value());
}

TEST_F(BusSessionTest, ItStaysForAWaitingNotificationAndLeavesWhenThatIsDismissed)
{
    start(std::chrono::milliseconds(50));
    registerDevice();
    ASSERT_TRUE(deliver(sealed(awarded)));
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
