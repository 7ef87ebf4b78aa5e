#include "Platform/Linux/Notifications/NotificationPresenter.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace trellisport::platform {

NotificationPresenter::NotificationPresenter(const QDBusConnection &bus, const Identity &identity,
                                             Events events, QObject *parent)
    : QObject(parent)
    , m_service(bus, identity.applicationName, identity.applicationId)
    , m_badge(bus, identity.applicationId + QStringLiteral(".desktop"))
    , m_events(std::move(events))
{
    connect(&m_service, &NotificationService::opened, this,
            [this](quint32 id, const QString &token) {
                if (const auto waiting = take(id)) {
                    // Some services leave it on the screen.
                    m_service.close(id);
                    m_events.opened(waiting->notification, token);
                }
            });
    connect(&m_service, &NotificationService::closed, this, [this](quint32 id) { take(id); });
    connect(&m_service, &NotificationService::vanished, this, [this] {
        if (!m_waiting.isEmpty()) {
            m_waiting.clear();
            changed();
        }
    });
}

void NotificationPresenter::authorize(AuthorizationOptions options,
                                      UserNotificationCenter::AuthorizationCompletion completion)
{
    m_authorized = options;
    m_service.ask([completion = std::move(completion)](bool answers) {
        if (answers) {
            completion(true, std::nullopt);
        } else {
            completion(false, "no notification service answers");
        }
    });
}

void NotificationPresenter::present(const RemoteNotification &notification,
                                    std::function<void()> done)
{
    constexpr PresentationOptions everything{
        PresentationOptions::banner | PresentationOptions::sound | PresentationOptions::badge};
    if (!m_events.isInFront()) {
        show(notification, everything, done);
        return;
    }
    m_events.willPresent(
        notification.notification, [self = QPointer<NotificationPresenter>(this), notification,
                                    done = std::move(done)](PresentationOptions options) {
            if (self) {
                QMetaObject::invokeMethod(self.data(), [self, notification, options, done] {
                    self->show(notification, options, done);
                });
            }
        });
}

void NotificationPresenter::show(const RemoteNotification &notification,
                                 PresentationOptions options, const std::function<void()> &done)
{
    if (!options.has(PresentationOptions::banner) ||
        !m_authorized.has(AuthorizationOptions::alert)) {
        done();
        return;
    }
    const DesktopNotification desktop{
        notification.title, notification.body,
        notification.isUrgent && m_authorized.has(AuthorizationOptions::criticalAlert),
        options.has(PresentationOptions::sound) && m_authorized.has(AuthorizationOptions::sound),
        notification.isUrgent};
    const bool counts =
        options.has(PresentationOptions::badge) && m_authorized.has(AuthorizationOptions::badge);
    m_service.show(desktop, [this, counts, userNotification = notification.notification,
                             done](std::optional<quint32> id) {
        if (id) {
            add({*id, counts, userNotification});
        }
        done();
    });
}

void NotificationPresenter::add(Waiting waiting)
{
    m_waiting.removeIf([&](const Waiting &other) { return other.id == waiting.id; });
    m_waiting.append(std::move(waiting));
    if (m_waiting.size() > mostWaiting) {
        m_service.close(m_waiting.takeFirst().id);
    }
    changed();
}

std::optional<NotificationPresenter::Waiting> NotificationPresenter::take(quint32 id)
{
    const auto found = std::find_if(m_waiting.begin(), m_waiting.end(),
                                    [id](const Waiting &waiting) { return waiting.id == id; });
    if (found == m_waiting.end()) {
        return std::nullopt;
    }
    Waiting taken = std::move(*found);
    m_waiting.erase(found);
    changed();
    return taken;
}

void NotificationPresenter::changed()
{
    m_badge.show(std::count_if(m_waiting.begin(), m_waiting.end(),
                               [](const Waiting &waiting) { return waiting.counts; }));
    m_events.waitingChanged();
}

} // namespace trellisport::platform
