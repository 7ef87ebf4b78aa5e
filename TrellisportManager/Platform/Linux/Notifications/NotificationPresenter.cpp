#include "Platform/Linux/Notifications/NotificationPresenter.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace trellisport::platform {

namespace {

void tell(NotificationPresenter::Done &done, Presented fate)
{
    if (done) {
        std::exchange(done, {})(fate);
    }
}

} // namespace

NotificationPresenter::NotificationPresenter(const QDBusConnection &bus, const Identity &identity,
                                             Events events, QObject *parent)
    : QObject(parent)
    , m_service(bus, identity.applicationName, identity.applicationId)
    , m_badge(bus, identity.applicationId + QStringLiteral(".desktop"))
    , m_events(std::move(events))
{
    connect(&m_service, &NotificationService::opened, this,
            [this](quint32 id, const QString &token) {
                if (const Entry opened = take(id)) {
                    // Some services leave it on the screen.
                    m_service.close(id);
                    m_events.opened(opened->notification.notification, token);
                }
            });
    connect(&m_service, &NotificationService::closed, this,
            [this](quint32 id) { static_cast<void>(take(id)); });
    connect(&m_service, &NotificationService::vanished, this,
            &NotificationPresenter::serviceVanished);
    connect(&m_service, &NotificationService::appeared, this, &NotificationPresenter::sendKept);
    m_retry.setSingleShot(true);
    m_retry.setInterval(identity.retryDelay);
    connect(&m_retry, &QTimer::timeout, this, [this] {
        // Asking in vain would have the bus look for one to start, again and again.
        if (m_service.isThere()) {
            sendKept();
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

void NotificationPresenter::present(const RemoteNotification &notification, Done done)
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
                                 PresentationOptions options, const Done &done)
{
    if (!options.has(PresentationOptions::banner) ||
        !m_authorized.has(AuthorizationOptions::alert)) {
        done(Presented::Settled);
        return;
    }
    const auto entry = std::make_shared<Waiting>();
    entry->notification = notification;
    entry->options = options;
    entry->done = done;
    m_waiting.append(entry);
    makeRoom();
    changed();
    if (m_waiting.contains(entry)) {
        send(entry);
    }
}

void NotificationPresenter::send(const Entry &entry)
{
    const RemoteNotification &notification = entry->notification;
    const DesktopNotification desktop{notification.title, notification.body,
                                      notification.isUrgent &&
                                          m_authorized.has(AuthorizationOptions::criticalAlert),
                                      entry->options.has(PresentationOptions::sound) &&
                                          m_authorized.has(AuthorizationOptions::sound),
                                      notification.isUrgent};
    entry->isBeingSent = true;
    m_service.show(desktop, [this, entry](std::optional<quint32> id) { sent(entry, id); });
}

void NotificationPresenter::sent(const Entry &entry, std::optional<quint32> id)
{
    entry->isBeingSent = false;
    if (!m_waiting.contains(entry)) {
        if (id) {
            m_service.close(*id);
        }
        return;
    }
    if (!id) {
        if (entry->done && !std::exchange(entry->isLate, true)) {
            entry->done(Presented::Later);
        }
        if (!m_retry.isActive()) {
            m_retry.start();
        }
        return;
    }
    // One that the service gave the same id is on the screen no more.
    static_cast<void>(take(*id));
    entry->id = id;
    tell(entry->done, Presented::Settled);
    sendKept();
}

void NotificationPresenter::sendKept()
{
    for (const Entry &entry : QList<Entry>(m_waiting)) {
        if (!entry->id && entry->isLate && !entry->isBeingSent) {
            send(entry);
        }
    }
}

void NotificationPresenter::serviceVanished()
{
    const qsizetype before = m_waiting.size();
    // News has been seen, or it was not worth much; a decision waits for its answer.
    m_waiting.removeIf(
        [](const Entry &entry) { return entry->id && !entry->notification.isUrgent; });
    for (const Entry &entry : m_waiting) {
        if (entry->id) {
            entry->id.reset();
            entry->isLate = true;
        }
    }
    if (m_waiting.size() != before) {
        changed();
    }
}

void NotificationPresenter::forgetAll()
{
    m_waiting.clear();
    m_retry.stop();
    changed();
}

void NotificationPresenter::makeRoom()
{
    if (m_waiting.size() <= mostWaiting) {
        return;
    }
    const auto found = std::find_if(m_waiting.begin(), m_waiting.end(), [](const Entry &entry) {
        return !entry->notification.isUrgent;
    });
    const Entry oldest = found == m_waiting.end() ? m_waiting.first() : *found;
    m_waiting.removeOne(oldest);
    if (oldest->id) {
        m_service.close(*oldest->id);
    }
    tell(oldest->done, Presented::Never);
}

NotificationPresenter::Entry NotificationPresenter::take(quint32 id)
{
    const auto found = std::find_if(m_waiting.begin(), m_waiting.end(),
                                    [id](const Entry &entry) { return entry->id == id; });
    if (found == m_waiting.end()) {
        return nullptr;
    }
    Entry taken = *found;
    m_waiting.erase(found);
    changed();
    return taken;
}

void NotificationPresenter::changed()
{
    m_badge.show(std::count_if(m_waiting.begin(), m_waiting.end(), [this](const Entry &entry) {
        return entry->options.has(PresentationOptions::badge) &&
               m_authorized.has(AuthorizationOptions::badge);
    }));
    m_events.waitingChanged();
}

} // namespace trellisport::platform
