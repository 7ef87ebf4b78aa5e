#pragma once

#include "Notifications/NotificationManager.h"
#include "Platform/Application.h"
#include "Shell/AppDelegate.h"
#include "Shell/ContentViewModel.h"

#include <QQmlApplicationEngine>

#include <memory>

namespace trellisport {

/// The application: one window that shows ContentView, always in the dark scheme. Its parts are
/// made in the order in which they need each other.
class TrellisportManagerApp : public platform::ApplicationEntry {
public:
    /// notifications must outlive it.
    explicit TrellisportManagerApp(
        NotificationManager &notifications = NotificationManager::shared());

    [[nodiscard]] platform::ApplicationDelegate &delegate() override { return m_appDelegate; }
    bool showWindow() override;
    void closeWindow() override;

private:
    NotificationManager &m_notifications;
    AppDelegate m_appDelegate;
    std::unique_ptr<ContentViewModel> m_content;     ///< of the window; absent without one
    std::unique_ptr<QQmlApplicationEngine> m_engine; ///< with the window; absent without one
};

} // namespace trellisport
