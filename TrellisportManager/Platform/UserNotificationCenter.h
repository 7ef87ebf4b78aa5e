#pragma once

#include "Platform/UserInfo.h"

#include <functional>
#include <optional>
#include <string>

namespace trellisport::platform {

/// What a notification may do to be noticed, asked for once at start.
struct AuthorizationOptions {
    static constexpr unsigned badge = 1;
    static constexpr unsigned sound = 2;
    static constexpr unsigned alert = 4;
    static constexpr unsigned criticalAlert = 16;

    unsigned bits = 0;

    [[nodiscard]] bool has(unsigned option) const { return (bits & option) != 0; }
    friend bool operator==(AuthorizationOptions, AuthorizationOptions) = default;
};

/// How one notification is presented while the application is in front.
struct PresentationOptions {
    static constexpr unsigned badge = 1;
    static constexpr unsigned sound = 2;
    static constexpr unsigned banner = 16;

    unsigned bits = 0;

    [[nodiscard]] bool has(unsigned option) const { return (bits & option) != 0; }
    friend bool operator==(PresentationOptions, PresentationOptions) = default;
};

/// A notification as it was delivered.
struct UserNotification {
    UserInfo userInfo;
};

/// The user opened a notification.
struct UserNotificationResponse {
    UserNotification notification;
};

/// Told of notifications, on a thread of the platform's choosing. Every completion is called once,
/// on any thread, from within the call or later; it may outlive the delegate.
class UserNotificationCenterDelegate {
public:
    UserNotificationCenterDelegate() = default;
    UserNotificationCenterDelegate(const UserNotificationCenterDelegate &) = delete;
    UserNotificationCenterDelegate &operator=(const UserNotificationCenterDelegate &) = delete;
    virtual ~UserNotificationCenterDelegate() = default;

    /// A notification has arrived while the application is in front; the completion says how it is
    /// presented.
    virtual void willPresent(const UserNotification &notification,
                             std::function<void(PresentationOptions)> completion) = 0;
    /// The user has opened a notification. Called when the window is there.
    virtual void didReceive(const UserNotificationResponse &response,
                            std::function<void()> completion) = 0;
};

/// Shows the notifications that arrive for this application and hears which the user opens.
class UserNotificationCenter {
public:
    /// Called once, on any thread. error is absent when the platform gave none.
    using AuthorizationCompletion =
        std::function<void(bool granted, std::optional<std::string> error)>;

    UserNotificationCenter() = default;
    UserNotificationCenter(const UserNotificationCenter &) = delete;
    UserNotificationCenter &operator=(const UserNotificationCenter &) = delete;
    virtual ~UserNotificationCenter() = default;

    /// From now on this delegate is told; null tells nobody. When the call returns, the delegate
    /// before it is called no more. Main thread.
    virtual void setDelegate(UserNotificationCenterDelegate *delegate) = 0;

    /// Asks the user, or the system in the user's name, whether notifications may be shown.
    /// Main thread; returns at once.
    virtual void requestAuthorization(AuthorizationOptions options,
                                      AuthorizationCompletion completion) = 0;
};

} // namespace trellisport::platform
