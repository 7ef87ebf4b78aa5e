#pragma once

#include "Platform/Linux/Notifications/LauncherBadge.h"
#include "Platform/Linux/Notifications/NotificationService.h"
#include "Platform/Linux/Notifications/RemoteNotification.h"

#include <QList>
#include <QObject>

#include <functional>
#include <optional>

namespace trellisport::platform {

/// Shows notifications and keeps track of those that wait: who shows a notification must stay to
/// hear that it is opened. One thread, which runs an event loop.
class NotificationPresenter : public QObject {
    Q_OBJECT
public:
    /// More than any screen shows; beyond it the oldest is taken back.
    static constexpr qsizetype mostWaiting = 64;

    struct Identity {
        QString applicationName;
        QString applicationId; ///< the desktop file's name without its ending
    };
    struct Events {
        /// Whether the application is in front of the user.
        std::function<bool()> isInFront;
        /// Asks how to show a notification that arrives in front. The completion may be called on
        /// any thread.
        std::function<void(const UserNotification &,
                           std::function<void(PresentationOptions)> completion)>
            willPresent;
        /// The user opened a notification. token, when not empty, lets the window come to the
        /// front.
        std::function<void(const UserNotification &, const QString &token)> opened;
        /// The number of those that wait has changed.
        std::function<void()> waitingChanged;
    };

    NotificationPresenter(const QDBusConnection &bus, const Identity &identity, Events events,
                          QObject *parent = nullptr);

    /// Granted when there is a notification service that answers.
    void authorize(AuthorizationOptions options, UserNotificationCenter::AuthorizationCompletion);
    /// Shows it. done is called once, when it is on the screen or will not be.
    void present(const RemoteNotification &notification, std::function<void()> done);

    /// How many are on the screen and can be opened.
    [[nodiscard]] qsizetype waiting() const { return m_waiting.size(); }

private:
    struct Waiting {
        quint32 id;
        bool counts; ///< in the badge
        UserNotification notification;
    };

    void show(const RemoteNotification &notification, PresentationOptions options,
              const std::function<void()> &done);
    void add(Waiting waiting);
    std::optional<Waiting> take(quint32 id);
    void changed();

    NotificationService m_service;
    LauncherBadge m_badge;
    Events m_events;
    AuthorizationOptions m_authorized{AuthorizationOptions::alert | AuthorizationOptions::badge |
                                      AuthorizationOptions::sound |
                                      AuthorizationOptions::criticalAlert};
    QList<Waiting> m_waiting; ///< oldest first
};

} // namespace trellisport::platform
