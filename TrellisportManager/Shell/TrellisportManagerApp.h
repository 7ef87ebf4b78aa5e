#pragma once

#include "Notifications/NotificationManager.h"

#include <QQmlApplicationEngine>

namespace trellisport {

/// The application: one window that shows ContentView, always in the dark scheme. Its parts are
/// made in the order in which they need each other.
class TrellisportManagerApp {
public:
    /// Made after the QGuiApplication; notifications must outlive it.
    explicit TrellisportManagerApp(
        NotificationManager &notifications = NotificationManager::shared());

    /// Brings up the window. False when it could not be made; what went wrong is on standard error.
    bool show();

private:
    NotificationManager &m_notifications;
    QQmlApplicationEngine m_engine;
};

} // namespace trellisport
