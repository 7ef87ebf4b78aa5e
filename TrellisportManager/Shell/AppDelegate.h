#pragma once

#include "Notifications/NotificationManager.h"
#include "Platform/Application.h"

#include <cstdint>
#include <vector>

namespace trellisport {

/// Hooks the launch and the device's registration. A registration that fails is not handled: the
/// application runs on without push notifications.
class AppDelegate : public platform::ApplicationDelegate {
public:
    /// notifications must outlive it.
    explicit AppDelegate(NotificationManager &notifications = NotificationManager::shared());

    /// Asks for permission to notify. Always true.
    bool didFinishLaunching() override;
    /// Hands the token on as it is.
    void didRegisterForRemoteNotifications(const std::vector<std::uint8_t> &deviceToken) override;

private:
    NotificationManager &m_notifications;
};

} // namespace trellisport
