#include "BusSupport/FakeNotificationService.h"

#include <QDBusMessage>

#include <utility>

namespace trellisport::test {

namespace {
constexpr quint32 firstId = 7;
constexpr quint32 dismissed = 2;
constexpr quint32 closedByCall = 3;
} // namespace

FakeNotificationService::FakeNotificationService(const QDBusConnection &bus)
    : m_bus(bus)
    , m_interface(new FakeNotificationInterface(this))
{
}

FakeNotificationService::~FakeNotificationService()
{
    vanish();
}

void FakeNotificationService::appear()
{
    m_bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this);
    m_bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
}

void FakeNotificationService::vanish()
{
    if (!m_bus.isConnected()) {
        return;
    }
    m_bus.unregisterService(QStringLiteral("org.freedesktop.Notifications"));
    m_bus.unregisterObject(QStringLiteral("/org/freedesktop/Notifications"));
}

void FakeNotificationService::die()
{
    m_bus.unregisterObject(QStringLiteral("/org/freedesktop/Notifications"));
    const QString name = m_bus.name();
    // The connection ends with the last that holds it.
    m_bus = QDBusConnection(QStringLiteral("none"));
    QDBusConnection::disconnectFromBus(name);
}

void FakeNotificationService::tap(quint32 id, const QString &token, const QString &key)
{
    if (!token.isEmpty()) {
        Q_EMIT m_interface->ActivationToken(id, token);
    }
    Q_EMIT m_interface->ActionInvoked(id, key);
}

void FakeNotificationService::answerHeld()
{
    for (const auto &answer : std::exchange(m_held, {})) {
        answer();
    }
}

void FakeNotificationService::dismiss(quint32 id)
{
    Q_EMIT m_interface->NotificationClosed(id, dismissed);
}

QStringList FakeNotificationInterface::GetCapabilities()
{
    ++m_service.m_questions;
    return m_service.capabilities;
}

quint32 FakeNotificationInterface::Notify(const QString &applicationName, quint32 /*replaces*/,
                                          const QString &icon, const QString &summary,
                                          const QString &body, const QStringList &actions,
                                          const QVariantMap &hints, int expiry,
                                          const QDBusMessage &call)
{
    if (m_service.refusals > 0) {
        --m_service.refusals;
        call.setDelayedReply(true);
        m_service.m_bus.send(
            call.createErrorReply(m_service.refusal, QStringLiteral("as the test wants it")));
        return 0;
    }
    const auto show = [=, this] {
        const auto id = firstId + static_cast<quint32>(m_service.m_shown.size());
        m_service.m_shown.push_back(
            {id, applicationName, icon, summary, body, actions, hints, expiry});
        return id;
    };
    if (m_service.holdsAnswers) {
        call.setDelayedReply(true);
        m_service.m_held.emplace_back(
            [this, call, show] { m_service.m_bus.send(call.createReply(show())); });
        return 0;
    }
    return show();
}

void FakeNotificationInterface::CloseNotification(quint32 id)
{
    m_service.m_closed.push_back(id);
    Q_EMIT NotificationClosed(id, closedByCall);
}

} // namespace trellisport::test
