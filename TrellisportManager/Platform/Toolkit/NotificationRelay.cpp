#include "Platform/Toolkit/NotificationRelay.h"

#include <utility>

namespace trellisport::platform {

void NotificationRelay::setDelegate(UserNotificationCenterDelegate *delegate)
{
    const std::lock_guard lock(m_mutex);
    m_delegate = delegate;
}

void NotificationRelay::requestAuthorization(AuthorizationOptions options,
                                             AuthorizationCompletion completion)
{
    if (m_authorize) {
        m_authorize(options, std::move(completion));
    } else {
        completion(false, "nobody shows notifications");
    }
}

void NotificationRelay::serveRequests(Authorize authorize)
{
    m_authorize = std::move(authorize);
}

void NotificationRelay::willPresent(const UserNotification &notification,
                                    std::function<void(PresentationOptions)> completion)
{
    const std::lock_guard lock(m_mutex);
    if (m_delegate) {
        m_delegate->willPresent(notification, std::move(completion));
    } else {
        completion({PresentationOptions::banner | PresentationOptions::sound |
                    PresentationOptions::badge});
    }
}

void NotificationRelay::didReceive(const UserNotification &notification)
{
    const std::lock_guard lock(m_mutex);
    if (m_delegate) {
        m_delegate->didReceive({notification}, [] {});
    }
}

} // namespace trellisport::platform
