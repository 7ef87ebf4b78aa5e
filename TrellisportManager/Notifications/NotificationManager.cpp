#include "Notifications/NotificationManager.h"

#include <utility>

namespace trellisport {

NotificationManager &NotificationManager::shared()
{
    static NotificationManager manager;
    return manager;
}

NotificationManager::NotificationManager(QObject *parent)
    : QObject(parent)
{
}

void NotificationManager::setPendingProjectId(std::optional<std::string> id)
{
    if (m_pendingProjectId != id) {
        m_pendingProjectId = std::move(id);
        Q_EMIT pendingProjectIdChanged();
    }
}

void NotificationManager::setPendingDecisionId(std::optional<std::string> id)
{
    if (m_pendingDecisionId != id) {
        m_pendingDecisionId = std::move(id);
        Q_EMIT pendingDecisionIdChanged();
    }
}

void NotificationManager::setPendingTab(std::optional<std::string> tab)
{
    if (m_pendingTab != tab) {
        m_pendingTab = std::move(tab);
        Q_EMIT pendingTabChanged();
    }
}

} // namespace trellisport
