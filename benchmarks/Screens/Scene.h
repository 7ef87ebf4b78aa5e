#pragma once

#include "ProjectDetail/ProjectDetailViewModel.h"
#include "ProjectsList/ProjectsListViewModel.h"
#include "Screens/PreparedSession.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <functional>
#include <memory>
#include <string>

namespace trellisport::bench {

/// A list that is measured, and the screen that shows it.
struct Subject {
    std::string name;
    int workspaceTab; ///< of ProjectDetailViewModel; -1 for the projects list
    std::string path; ///< of the list, as its URL ends
    std::function<std::string(std::size_t size)> body;
    /// Makes records of the reply, as the application does, and gives them up.
    std::function<double(std::string body)> decodeMilliseconds;
};
/// Throws std::runtime_error when there is none of this name.
[[nodiscard]] const Subject &subjectNamed(const std::string &name);

/// The screen of one list in a window, real but for its session, up to where its list is asked for.
/// Throws std::runtime_error when something does not come.
class Scene {
public:
    /// body: of the list's reply, made when it is asked for.
    Scene(const Subject &subject, std::function<std::string()> body);
    Scene(const Scene &) = delete;
    Scene &operator=(const Scene &) = delete;
    ~Scene();

    /// Hands the reply over and waits for the first frame with the list in it. How long it took
    /// until that frame was out, in milliseconds.
    double open();

    /// The list that open() has shown.
    [[nodiscard]] QQuickItem *list() const { return m_list; }
    [[nodiscard]] QQuickItem *find(const QString &objectName) const;
    [[nodiscard]] QQuickWindow &window() { return m_window; }
    [[nodiscard]] std::size_t replySize() const { return m_session->replySize(); }

private:
    void showProjects();
    void showWorkspace(int tab);
    void make(const QString &module, const QString &type, const QVariantMap &properties);
    [[nodiscard]] bool isListShown();

    const Subject &m_subject;
    std::shared_ptr<PreparedSession> m_session = std::make_shared<PreparedSession>();
    TrellisportAPI m_api;
    NotificationManager m_notifications;
    std::unique_ptr<ProjectsListViewModel> m_projects;
    std::unique_ptr<ProjectDetailViewModel> m_workspace;
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_page;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_root;
    QQuickItem *m_list = nullptr;
};

/// Draws a frame of the window, here and now: what has changed, and what was put off until then.
void drawFrame(QQuickWindow &window);
/// Runs the event loop until the condition holds; throws when it never does.
void waitUntil(const char *what, const std::function<bool()> &condition);
/// Runs the event loop until nothing is left that it could do at once.
void settle();

} // namespace trellisport::bench
