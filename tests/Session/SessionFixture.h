#pragma once

#include "BusSupport/FakeDistributor.h"
#include "BusSupport/FakeNotificationService.h"
#include "BusSupport/PrivateBus.h"
#include "Platform/Linux/Session/BusSession.h"
#include "PracticeService/Push/WebPushEncryption.h"
#include "Support/Waiting.h"

#include <QDBusPendingReply>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace trellisport::test {

using platform::ActivationToken;
using platform::BusSession;

inline constexpr const char *name = "org.trellisport.session-test";
inline constexpr const char *path = "/org/trellisport/session_test";
inline constexpr std::chrono::hours never{1};

inline QDBusMessage applicationCall(const QString &method, const QVariantList &arguments)
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

inline const QByteArray awarded =
    R"({"aps":{"alert":{"title":"Awarded"}},"type":"project_awarded","project_id":"p1"})";
inline const QByteArray question =
    R"({"aps":{"alert":{"title":"Decision"}},"type":"decision_needed","project_id":"p7"})";

} // namespace trellisport::test
