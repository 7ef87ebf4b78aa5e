#include "Platform/Linux/Session/LinuxNotificationCenter.h"

#include <utility>

namespace trellisport::platform {

void LinuxNotificationCenter::setDelegate(UserNotificationCenterDelegate *delegate)
{
    const std::lock_guard lock(m_mutex);
    m_delegate = delegate;
}

void LinuxNotificationCenter::requestAuthorization(AuthorizationOptions options,
                                                   AuthorizationCompletion completion)
{
    if (m_authorize) {
        m_authorize(options, std::move(completion));
    } else {
        completion(false, "there is no session bus");
    }
}

void LinuxNotificationCenter::serveRequests(Authorize authorize)
{
    m_authorize = std::move(authorize);
}

void LinuxNotificationCenter::willPresent(const UserNotification &notification,
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

void LinuxNotificationCenter::didReceive(const UserNotification &notification)
{
    const std::lock_guard lock(m_mutex);
    if (m_delegate) {
        m_delegate->didReceive({notification}, [] {});
    }
}

} // namespace trellisport::platform
