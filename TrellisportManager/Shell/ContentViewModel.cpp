#include "Shell/ContentViewModel.h"

#include "Platform/Platform.h"

namespace trellisport {

namespace {
constexpr int projectsTab = 1;
}

ContentViewModel::ContentViewModel(NotificationManager &notifications, QObject *parent)
    : QObject(parent)
    , m_notifications(notifications)
{
    connect(&m_notifications, &NotificationManager::pendingProjectIdChanged, this, [this] {
        if (m_notifications.pendingProjectId()) {
            setSelectedTab(projectsTab);
        }
    });
}

bool ContentViewModel::hasFrame()
{
    return platform::Platform::current().appearance().windowsHaveFrames();
}

void ContentViewModel::setSelectedTab(int tab)
{
    if (m_selectedTab != tab) {
        m_selectedTab = tab;
        Q_EMIT selectedTabChanged();
    }
}

} // namespace trellisport
