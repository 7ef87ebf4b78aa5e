#include "Platform/Linux/Notifications/NotificationService.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>

#include <chrono>
#include <utility>

namespace trellisport::platform {

namespace {

constexpr const char *serviceName = "org.freedesktop.Notifications";
constexpr const char *objectPath = "/org/freedesktop/Notifications";
constexpr const char *defaultAction = "default";
// One service refuses what it was shown within the last second.
constexpr std::chrono::milliseconds retryDelay{1200};
constexpr int tries = 3;
constexpr int serversChoice = -1;
constexpr int never = 0;

} // namespace

NotificationService::NotificationService(const QDBusConnection &bus, QString applicationName,
                                         QString applicationId, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_applicationName(std::move(applicationName))
    , m_applicationId(std::move(applicationId))
    , m_watcher(QLatin1String(serviceName), bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    listen(QStringLiteral("ActivationToken"), SLOT(activationToken(quint32, QString)));
    listen(QStringLiteral("ActionInvoked"), SLOT(actionInvoked(quint32, QString)));
    listen(QStringLiteral("NotificationClosed"), SLOT(notificationClosed(quint32, quint32)));
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString & /*name*/, const QString &before, const QString &now) {
                m_capabilities.reset();
                m_isThere = !now.isEmpty();
                if (!before.isEmpty()) {
                    Q_EMIT vanished();
                }
                if (m_isThere) {
                    Q_EMIT appeared();
                }
            });
}

void NotificationService::listen(const QString &signal, const char *slot)
{
    // Naming the service keeps out signals that somebody else on the bus sends.
    m_bus.connect(QLatin1String(serviceName), QLatin1String(objectPath), QLatin1String(serviceName),
                  signal, this, slot);
}

QDBusMessage NotificationService::method(const QString &name) const
{
    return QDBusMessage::createMethodCall(QLatin1String(serviceName), QLatin1String(objectPath),
                                          QLatin1String(serviceName), name);
}

void NotificationService::noteWhether(const QDBusError &error)
{
    // No reply says nothing: it may be busy, or it vanished, which is told in its own way.
    if (error.type() != QDBusError::NoReply) {
        m_isThere =
            error.type() != QDBusError::ServiceUnknown && error.type() != QDBusError::Disconnected;
    }
}

void NotificationService::withCapabilities(
    std::function<void(const std::optional<QStringList> &)> next)
{
    if (m_capabilities) {
        next(m_capabilities);
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(
        m_bus.asyncCall(method(QStringLiteral("GetCapabilities"))), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, next = std::move(next)] {
                watcher->deleteLater();
                const QDBusPendingReply<QStringList> reply = *watcher;
                noteWhether(reply.error());
                if (reply.isError()) {
                    next(std::nullopt);
                    return;
                }
                m_capabilities = reply.value();
                next(m_capabilities);
            });
}

void NotificationService::ask(std::function<void(bool answers)> answer)
{
    withCapabilities([answer = std::move(answer)](const std::optional<QStringList> &capabilities) {
        answer(capabilities.has_value());
    });
}

void NotificationService::show(const DesktopNotification &notification,
                               std::function<void(std::optional<quint32> id)> answer)
{
    withCapabilities([this, notification,
                      answer = std::move(answer)](const std::optional<QStringList> &capabilities) {
        if (capabilities) {
            send(notification, *capabilities, tries, answer);
        } else {
            answer(std::nullopt);
        }
    });
}

QVariantMap NotificationService::hints(const DesktopNotification &notification) const
{
    // The urgency is a byte: services ignore it in any other type.
    QVariantMap hints{
        {QStringLiteral("urgency"), QVariant::fromValue<uchar>(notification.isUrgent ? 2 : 1)},
        {QStringLiteral("desktop-entry"), m_applicationId},
        // Phones make themselves noticed with their screen on for few categories only.
        {QStringLiteral("category"), QStringLiteral("im.received")}};
    if (notification.hasSound) {
        hints[QStringLiteral("sound-name")] = QStringLiteral("message-new-instant");
    } else {
        hints[QStringLiteral("suppress-sound")] = true;
    }
    return hints;
}

void NotificationService::send(const DesktopNotification &notification,
                               const QStringList &capabilities, int triesLeft,
                               const std::function<void(std::optional<quint32> id)> &answer)
{
    const QString body = capabilities.contains(QStringLiteral("body-markup"))
                             ? notification.body.toHtmlEscaped()
                             : notification.body;
    QStringList actions;
    if (capabilities.contains(QStringLiteral("actions"))) {
        actions << QLatin1String(defaultAction) << tr("Open");
    }
    QDBusMessage call = method(QStringLiteral("Notify"));
    call << m_applicationName << quint32(0) << m_applicationId << notification.summary << body
         << actions << hints(notification) << (notification.stays ? never : serversChoice);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [=, this] {
        watcher->deleteLater();
        const QDBusPendingReply<quint32> reply = *watcher;
        noteWhether(reply.error());
        if (!reply.isError()) {
            answer(reply.value());
        } else if (triesLeft <= 1 || reply.error().type() == QDBusError::NoReply ||
                   reply.error().type() == QDBusError::ServiceUnknown) {
            answer(std::nullopt);
        } else {
            QTimer::singleShot(retryDelay, this, [=, this] {
                send(notification, capabilities, triesLeft - 1, answer);
            });
        }
    });
}

void NotificationService::close(quint32 id)
{
    QDBusMessage call = method(QStringLiteral("CloseNotification"));
    call << id;
    m_bus.send(call);
}

void NotificationService::activationToken(quint32 id, const QString &token)
{
    m_token = {id, token};
}

void NotificationService::actionInvoked(quint32 id, const QString &key)
{
    const auto [tokenId, token] = std::exchange(m_token, {});
    if (key == QLatin1String(defaultAction)) {
        Q_EMIT opened(id, tokenId == id ? token : QString());
    }
}

void NotificationService::notificationClosed(quint32 id, quint32 /*reason*/)
{
    Q_EMIT closed(id);
}

} // namespace trellisport::platform
