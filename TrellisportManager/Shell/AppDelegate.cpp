#include "Shell/AppDelegate.h"

namespace trellisport {

AppDelegate::AppDelegate(NotificationManager &notifications)
    : m_notifications(notifications)
{
}

bool AppDelegate::didFinishLaunching()
{
    m_notifications.requestPermission();
    return true;
}

void AppDelegate::didRegisterForRemoteNotifications(const std::vector<std::uint8_t> &deviceToken)
{
    m_notifications.registerDeviceToken(deviceToken);
}

} // namespace trellisport
