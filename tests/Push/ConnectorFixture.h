#pragma once

#include "BusSupport/FakeDistributor.h"
#include "BusSupport/PrivateBus.h"
#include "Platform/Linux/Push/PushConnector.h"
#include "Support/Waiting.h"

#include <QDBusReply>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace trellisport::test {

/// A bus, a connector on it, and what the connector told.
class PushConnectorTest : public ::testing::Test {
protected:
    static constexpr const char *service = "org.trellisport.test";

    PushConnectorTest() { m_ours.registerService(QLatin1String(service)); }

    void start(const QString &distributor = {}, int mostAtOnce = 32)
    {
        m_connector.reset();
        m_connector = std::make_unique<platform::PushConnector>(
            m_ours, platform::PushRegistrationStore(statePath()),
            platform::PushConnector::Options{QLatin1String(service), QStringLiteral("the tests"),
                                             distributor, mostAtOnce},
            platform::PushConnector::Events{
                [this](const std::vector<std::uint8_t> &token) {
                    tokens.push_back(QJsonDocument::fromJson(
                                         QByteArray(reinterpret_cast<const char *>(token.data()),
                                                    static_cast<qsizetype>(token.size())))
                                         .object());
                },
                [this](const QString &reason) { refusals.push_back(reason); },
                [this](const platform::PushMessage &message,
                       std::function<void(platform::MessageFate)> done) {
                    messages.push_back(message);
                    if (holdsMessages) {
                        held.push_back(std::move(done));
                    } else {
                        done(platform::MessageFate::Done);
                    }
                }});
    }
    void startAndRegister(const QString &distributor = {})
    {
        start(distributor);
        m_connector->registerDevice();
    }
    std::unique_ptr<FakeDistributor> makeDistributor(const char *suffix, bool one, bool two)
    {
        return std::make_unique<FakeDistributor>(m_bus.connect(), QLatin1String(suffix), one, two);
    }
    [[nodiscard]] QString statePath() const
    {
        return m_folder.filePath(QStringLiteral("state/registration"));
    }
    [[nodiscard]] std::optional<platform::PushRegistration> stored() const
    {
        return platform::PushRegistrationStore(statePath()).load();
    }
    [[nodiscard]] QString storedToken() const { return stored().value().places.last().token; }
    [[nodiscard]] QString endpoint(std::size_t index = 0) const
    {
        return tokens.at(index)[QStringLiteral("endpoint")].toString();
    }
    /// Everything that was called before this has been dealt with when it returns.
    void settle()
    {
        QDBusConnection other = m_bus.connect();
        const QDBusPendingCall ping = other.asyncCall(QDBusMessage::createMethodCall(
            QLatin1String(service), QStringLiteral("/org/unifiedpush/Connector"),
            QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping")));
        ASSERT_TRUE(waitUntil([&] { return ping.isFinished(); }));
        runPendingEvents();
    }
    static bool finished(const QDBusPendingCall &call)
    {
        return waitUntil([&] { return call.isFinished(); });
    }

    PrivateBus m_bus;
    QTemporaryDir m_folder;
    QDBusConnection m_ours = m_bus.connect();
    std::unique_ptr<platform::PushConnector> m_connector;
    std::vector<QJsonObject> tokens;
    std::vector<QString> refusals;
    std::vector<platform::PushMessage> messages;
    bool holdsMessages = false;
    std::vector<std::function<void(platform::MessageFate)>> held;
};

} // namespace trellisport::test
