#include "Screens/Scene.h"

#include "Platform/Platform.h"
#include "ServiceAccess/RecordCoding.h"
#include "Support/Bodies.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QQmlComponent>
#include <QTimer>

#include <array>
#include <future>
#include <stdexcept>

namespace trellisport::bench {

namespace {

constexpr int patienceMilliseconds = 60000;

[[noreturn]] void giveUp(const std::string &sentence)
{
    throw std::runtime_error(sentence);
}

/// Runs the event loop for so long.
void spin(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Where the application does it, too: each thread has its own part of the heap.
template <typename T>
double decodeMilliseconds(std::string body)
{
    std::promise<double> milliseconds;
    platform::Platform::current().executor().run([&] {
        const auto start = SteadyClock::now();
        const auto records = decode<std::vector<T>>(std::move(body));
        milliseconds.set_value(records.empty() ? -1 : millisecondsSince(start));
    });
    const double taken = milliseconds.get_future().get();
    if (taken < 0) {
        giveUp("There is nothing in the reply.");
    }
    return taken;
}

QQuickItem *findBelow(QQuickItem *item, const QString &objectName)
{
    if (item->objectName() == objectName) {
        return item;
    }
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *found = findBelow(child, objectName)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

const Subject &subjectNamed(const std::string &name)
{
    using Tab = ProjectDetailViewModel::Tab;
    static const std::array subjects{
        Subject{"logs", Tab::Logs, "/project-1/logs", shortLogs, decodeMilliseconds<DevLog>},
        Subject{"one-log", Tab::Logs, "/project-1/logs", oneLog, decodeMilliseconds<DevLog>},
        Subject{"one-report", Tab::Reports, "/project-1/reports", oneReport,
                decodeMilliseconds<Report>},
        Subject{"messages", Tab::Chat, "/project-1/messages", messages,
                decodeMilliseconds<Message>},
        Subject{"projects", -1, "/projects", projects, decodeMilliseconds<Project>},
    };
    for (const Subject &subject : subjects) {
        if (subject.name == name) {
            return subject;
        }
    }
    giveUp("There is no list named " + name + ".");
}

Scene::Scene(const Subject &subject, std::function<std::string()> body)
    : m_subject(subject)
    , m_api("https://service.example/api/v1", m_session, platform::Platform::current().executor())
{
    m_session->answer("/projects/project-1", [] { return received(project()); });
    m_session->holdBack(m_subject.path, std::move(body));
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
    m_window.resize(390, 844);
    m_window.setColor(Qt::black);
    m_window.show();
    if (m_subject.workspaceTab < 0) {
        showProjects();
    } else {
        showWorkspace(m_subject.workspaceTab);
    }
    waitUntil("the request", [this] { return m_session->isReady(); });
    // A real reply takes longer than the screen takes to come up.
    settle();
    drawFrame(m_window);
}

Scene::~Scene()
{
    m_root.reset();
}

void Scene::make(const QString &module, const QString &type, const QVariantMap &properties)
{
    QQmlComponent component(
        &m_engine,
        QUrl(QStringLiteral("qrc:/qt/qml/TrellisportManager/%1/%2.qml").arg(module, type)));
    m_root.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(properties)));
    if (!m_root) {
        giveUp(component.errorString().toStdString());
    }
    m_root->setParentItem(m_window.contentItem());
    m_root->setSize(m_window.size());
}

void Scene::showProjects()
{
    platform::Platform &platform = platform::Platform::current();
    m_projects = std::make_unique<ProjectsListViewModel>(m_api, platform.textRules(),
                                                         platform.executor(), m_notifications);
    auto page = std::make_unique<QQmlComponent>(&m_engine);
    page->setData("import QtQuick; Item {}", QUrl(QStringLiteral("qrc:/page.qml")));
    make(QStringLiteral("ProjectsList"), QStringLiteral("ProjectsListView"),
         {{QStringLiteral("viewModel"), QVariant::fromValue(m_projects.get())},
          {QStringLiteral("workspace"), QVariant::fromValue(page.get())}});
    m_page = std::move(page);
}

void Scene::showWorkspace(int tab)
{
    const auto &rules = platform::Platform::current().textRules();
    m_workspace =
        std::make_unique<ProjectDetailViewModel>(m_api, rules, m_notifications, "project-1");
    make(QStringLiteral("ProjectDetail"), QStringLiteral("ProjectDetailView"),
         {{QStringLiteral("viewModel"), QVariant::fromValue(m_workspace.get())},
          {QStringLiteral("projectId"), QStringLiteral("project-1")}});
    waitUntil("the project", [this] {
        return m_workspace->content() == ProjectDetailViewModel::Content::Workspace;
    });
    m_workspace->setSelectedTab(tab);
}

QQuickItem *Scene::find(const QString &objectName) const
{
    QQuickItem *found = findBelow(m_root.get(), objectName);
    if (found == nullptr) {
        giveUp("There is no " + objectName.toStdString() + ".");
    }
    return found;
}

bool Scene::isListShown()
{
    m_list = find(m_projects ? QStringLiteral("projectsList") : QStringLiteral("list"));
    return m_list->isVisible() && m_list->property("count").toInt() > 0;
}

double Scene::open()
{
    SteadyClock::time_point painted;
    bool isPainted = false;
    const auto connection =
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, &m_window, [&] {
            if (!isPainted && isListShown()) {
                isPainted = true;
                painted = SteadyClock::now();
            }
        });
    m_session->handOver();
    QElapsedTimer timer;
    timer.start();
    while (!isPainted) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (timer.elapsed() > patienceMilliseconds) {
            giveUp("The list did not come.");
        }
    }
    QObject::disconnect(connection);
    return std::chrono::duration<double, std::milli>(painted - m_session->handedOverAt()).count();
}

void drawFrame(QQuickWindow &window)
{
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &request);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void waitUntil(const char *what, const std::function<bool()> &condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        spin(1);
        if (timer.elapsed() > patienceMilliseconds) {
            giveUp(std::string(what) + " did not come.");
        }
    }
}

void settle()
{
    // Longer than the longest animation.
    spin(500);
}

} // namespace trellisport::bench
