#pragma once

#include "Notifications/NotificationManager.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// Which root tab is shown: 0 Dashboard, 1 Projects, 2 Settings. An opened notification that names
/// a project switches to the Projects tab.
class ContentViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("One is made with each window")
    Q_PROPERTY(
        int selectedTab READ selectedTab WRITE setSelectedTab NOTIFY selectedTabChanged FINAL)
    /// Whether the window has a frame to move and close it by.
    Q_PROPERTY(bool hasFrame READ hasFrame CONSTANT FINAL)
public:
    /// notifications must outlive the model.
    explicit ContentViewModel(NotificationManager &notifications, QObject *parent = nullptr);

    [[nodiscard]] int selectedTab() const { return m_selectedTab; }
    void setSelectedTab(int tab);
    [[nodiscard]] static bool hasFrame();

Q_SIGNALS:
    void selectedTabChanged();

private:
    NotificationManager &m_notifications;
    int m_selectedTab = 0;
};

} // namespace trellisport
