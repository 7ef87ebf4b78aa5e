#pragma once

#include "Chaos/Agent.h"
#include "Chaos/ChaosPlatform.h"
#include "Chaos/Hand.h"
#include "Chaos/Sight.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <string>

namespace trellisport::chaos {

/// Which places of the console were seen, and how often one looked there.
class Places {
public:
    void look(const Sight &sight);
    /// "Dashboard", "Projects", "Settings", and a workspace's tabs by their labels.
    [[nodiscard]] const std::map<std::string, int> &seen() const { return m_seen; }

private:
    std::map<std::string, int> m_seen;
};

/// A round by plan through the whole console, for a service that is in no trouble: a notification
/// is opened, its question answered, every tab of its project's workspace visited, then the
/// settings, which are saved, the dashboard and the projects. Main thread.
class Round {
public:
    /// look: called after each step. All must outlive the round.
    Round(ChaosPlatform &platform, Hand &hand, Agent &agent, std::function<void()> look);

    /// The window shows the root tabs. Gives what could not be done.
    [[nodiscard]] QStringList make();

private:
    void showAllProjects();
    /// Of the projects, where the search field and the chips are, seen whole.
    void pullToTop();
    void openNotification();
    void answer();
    void visitTabs();
    void changeSettings();
    void visitRoots();

    void rest();
    bool comes(const std::function<bool(const Sight &)> &condition);
    bool selectTab(const QString &label);
    bool showRoot(int tab, const char *screen);
    /// Whether a press of the button is one request to such a path, which is taken.
    bool writes(const char *button, const std::string &path);
    [[nodiscard]] int accepted(const std::string &path) const;
    /// Moves what is under the middle of the window up, slowly.
    void moveUp();

    ChaosPlatform &m_platform;
    Hand &m_hand;
    Agent &m_agent;
    std::function<void()> m_look;
    QStringList m_undone;
};

} // namespace trellisport::chaos
