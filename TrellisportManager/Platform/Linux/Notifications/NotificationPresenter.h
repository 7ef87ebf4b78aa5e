#pragma once

#include "Platform/Linux/Notifications/LauncherBadge.h"
#include "Platform/Linux/Notifications/NotificationService.h"
#include "Platform/Toolkit/RemoteNotification.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace trellisport::platform {

/// What became of a notification.
enum class Presented {
    Settled, ///< it is on the screen, or nobody wants it there
    Later,   ///< it can't be shown now; one of the others follows
    Never,   ///< it had to give way to others
};

/// Shows notifications and keeps track of those that wait: who shows a notification must stay to
/// hear that it is opened. What the notification service does not take is kept and shown when it
/// takes it; so are the decisions of a service that vanished. One thread, which runs an event loop.
class NotificationPresenter : public QObject {
    Q_OBJECT
public:
    /// More than any screen shows; beyond it the oldest that is not urgent is taken back.
    static constexpr qsizetype mostWaiting = 64;

    struct Identity {
        QString applicationName;
        QString applicationId; ///< the desktop file's name without its ending
        /// After how long a service that is there, but took none, is given another try.
        std::chrono::milliseconds retryDelay = std::chrono::seconds(30);
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
    using Done = std::function<void(Presented)>;

    NotificationPresenter(const QDBusConnection &bus, const Identity &identity, Events events,
                          QObject *parent = nullptr);

    /// Granted when there is a notification service that answers.
    void authorize(AuthorizationOptions options, UserNotificationCenter::AuthorizationCompletion);
    /// Shows it. done is called once, or twice with Later first.
    void present(const RemoteNotification &notification, Done done);
    /// There is nobody left to show anything to.
    void forgetAll();

    /// How many are on the screen and can be opened, or will be shown there.
    [[nodiscard]] qsizetype waiting() const { return m_waiting.size(); }

private:
    struct Waiting {
        RemoteNotification notification;
        PresentationOptions options;
        Done done;                 ///< empty when it has nothing left to tell
        std::optional<quint32> id; ///< of the service; absent while it is not on the screen
        bool isBeingSent = false;
        bool isLate = false; ///< done was told so
    };
    using Entry = std::shared_ptr<Waiting>;

    void show(const RemoteNotification &notification, PresentationOptions options,
              const Done &done);
    void send(const Entry &entry);
    void sent(const Entry &entry, std::optional<quint32> id);
    void sendKept();
    void makeRoom();
    void serviceVanished();
    [[nodiscard]] Entry take(quint32 id);
    void changed();

    NotificationService m_service;
    LauncherBadge m_badge;
    Events m_events;
    AuthorizationOptions m_authorized{AuthorizationOptions::alert | AuthorizationOptions::badge |
                                      AuthorizationOptions::sound |
                                      AuthorizationOptions::criticalAlert};
    QList<Entry> m_waiting; ///< oldest first
    QTimer m_retry;
};

} // namespace trellisport::platform
