#pragma once

#include "Platform/Linux/Notifications/NotificationPresenter.h"
#include "Platform/Linux/Push/PushConnector.h"
#include "Platform/Linux/Push/SeenMessages.h"
#include "Platform/Linux/Session/ActivationToken.h"
#include "Platform/Linux/Session/IdleWatch.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QString>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace trellisport::platform {

/// All that the program is on the session bus: its name, its activation, its push messages and its
/// notifications. Lives on the thread that made it, which runs an event loop.
class BusSession : public QObject {
    Q_OBJECT
public:
    struct Setup {
        QString id;                              ///< bus name and desktop file
        QString path;                            ///< of org.freedesktop.Application
        QString name;                            ///< as a person reads it
        QString stateFolder;                     ///< what push services need us to remember
        QString distributor;                     ///< the only push service to use; empty: any
        std::chrono::milliseconds grace{20'000}; ///< for what may still come, without a window
        bool awaitsWindow = false;               ///< one is about to be shown
    };
    /// Called on the session's thread.
    struct Events {
        /// Somebody wants the window. done is called once, on any thread, after setWindow() when
        /// the window is there, and with false when there can be none.
        std::function<void(ActivationToken, std::function<void(bool isThere)> done)> bringUp;
        std::function<bool()> isInFront;
        std::function<void(const UserNotification &, std::function<void(PresentationOptions)>)>
            willPresent;
        /// The user opened a notification; the window is there. On the thread of bringUp's done.
        std::function<void(const UserNotification &)> didReceive;
        std::function<void(std::vector<std::uint8_t> token)> registered;
        std::function<void(std::string reason)> refused;
        /// There is no window and nothing left to do: the program should end. The name is given
        /// back by then.
        std::function<void()> leave;
    };

    /// Puts everything on the bus but the name.
    BusSession(const QDBusConnection &bus, Setup setup, Events events);
    BusSession(const BusSession &) = delete;
    BusSession &operator=(const BusSession &) = delete;
    /// Gives the name back.
    ~BusSession() override;

    /// From here on the program can be called. False when another instance is.
    [[nodiscard]] bool claimName();
    /// Brings that other instance to the front; false when it does not answer.
    [[nodiscard]] bool activateOther(const ActivationToken &token) const;

    void authorize(AuthorizationOptions options,
                   UserNotificationCenter::AuthorizationCompletion completion);
    void registerDevice();
    /// Whether there is a window now. Without one the session decides when to leave.
    void setWindow(bool isThere);

private Q_SLOTS:
    void busHasGone();

private:
    struct Activation {
        ActivationToken token;
        std::vector<std::function<void()>> thens;
    };
    struct Unsettled {
        std::vector<std::function<void(MessageFate)>> answers;
        bool isPostponed = false; ///< it was answered, but is not shown yet
    };

    void activate(const ActivationToken &token, std::function<void()> then);
    void activateNext();
    void messageArrived(const PushMessage &message, std::function<void(MessageFate)> done);
    void presented(const QByteArray &identity, Presented fate);
    void update();
    void leave();

    QDBusConnection m_bus;
    Setup m_setup;
    Events m_events;
    SeenMessages m_seen;
    QHash<QByteArray, Unsettled> m_unsettled; ///< messages that are not shown yet, by identity
    int m_nameless = 0;                       ///< messages so far that have no identity
    NotificationPresenter m_presenter;
    PushConnector m_connector;
    IdleWatch m_idle;
    bool m_hasWindow;
    bool m_isActivating = false;
    bool m_hasBus = true;
    std::optional<Activation> m_nextActivation;
};

} // namespace trellisport::platform
