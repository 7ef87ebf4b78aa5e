#pragma once

#include "Platform/UserNotificationCenter.h"

#include <functional>
#include <mutex>

namespace trellisport::platform {

/// The application's side of notifications: knows the delegate, and hands requests on
/// while somebody serves them.
class NotificationRelay : public UserNotificationCenter {
public:
    using Authorize = std::function<void(AuthorizationOptions, AuthorizationCompletion)>;

    void setDelegate(UserNotificationCenterDelegate *delegate) override;
    /// Not granted while nobody serves requests.
    void requestAuthorization(AuthorizationOptions options,
                              AuthorizationCompletion completion) override;

    /// From now on requests go there; an empty function serves none. Main thread.
    void serveRequests(Authorize authorize);
    /// Tells the delegate; without one a notification is presented in every way. Any thread.
    void willPresent(const UserNotification &notification,
                     std::function<void(PresentationOptions)> completion);
    void didReceive(const UserNotification &notification);

private:
    std::mutex m_mutex; ///< also keeps the delegate while it is being told
    UserNotificationCenterDelegate *m_delegate = nullptr;
    Authorize m_authorize;
};

} // namespace trellisport::platform
