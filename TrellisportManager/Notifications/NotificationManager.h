#pragma once

#include <QObject>

#include <optional>
#include <string>

namespace trellisport {

/// Records which project, which decision and which workspace tab the last opened notification is
/// about, for the screens to act on. It navigates nowhere itself and resets nothing: a consumer
/// sets a value back to absent when it has taken it. Writing the value that is there already
/// notifies nobody. Main thread only.
class NotificationManager : public QObject {
    Q_OBJECT
public:
    /// The instance of the process, made on first use.
    [[nodiscard]] static NotificationManager &shared();

    explicit NotificationManager(QObject *parent = nullptr);

    [[nodiscard]] const std::optional<std::string> &pendingProjectId() const
    {
        return m_pendingProjectId;
    }
    void setPendingProjectId(std::optional<std::string> id);
    [[nodiscard]] const std::optional<std::string> &pendingDecisionId() const
    {
        return m_pendingDecisionId;
    }
    void setPendingDecisionId(std::optional<std::string> id);
    /// "decisions", "overview", "logs" or absent.
    [[nodiscard]] const std::optional<std::string> &pendingTab() const { return m_pendingTab; }
    void setPendingTab(std::optional<std::string> tab);

Q_SIGNALS:
    void pendingProjectIdChanged();
    void pendingDecisionIdChanged();
    void pendingTabChanged();

private:
    std::optional<std::string> m_pendingProjectId;
    std::optional<std::string> m_pendingDecisionId;
    std::optional<std::string> m_pendingTab;
};

} // namespace trellisport
