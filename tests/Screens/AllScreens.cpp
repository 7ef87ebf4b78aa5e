#include "AllScreens.h"

#include "Platform/Platform.h"

#include <QTest>

#include <array>

namespace trellisport::test {

namespace {

const char *const contentQml = R"(
import QtQuick
import TrellisportManager.Dashboard
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail
import TrellisportManager.ProjectsList
import TrellisportManager.Settings
import TrellisportManager.Shell

ContentView {
    id: root

    required property DashboardViewModel dashboardModel
    required property ProjectsListViewModel projectsModel
    required property ProjectDetailViewModel detailModel
    required property SettingsViewModel settingsModel
    required property LinkController openedLinks

    dashboard: Component { DashboardView { viewModel: root.dashboardModel } }
    projects: Component {
        ProjectsListView {
            viewModel: root.projectsModel
            workspace: Component {
                ProjectDetailView { viewModel: root.detailModel; links: root.openedLinks }
            }
        }
    }
    settings: Component { SettingsView { viewModel: root.settingsModel; links: root.openedLinks } }
}
)";

struct Reply {
    const char *urlEnd;
    const char *json;
};

const std::array replies{
    Reply{"/dashboard", R"({"status_counts":{"discovered":12,"questions_sent":3,"bid_placed":4,)"
                        R"("awarded":2,"completed":31},"bids_pending":2500.5,)"
                        R"("total_earned":1234567.89,"pending_decisions":2})"},
    Reply{"/projects",
          R"([{"id":"p1","title":"A bakery's web site with orders, deliveries and a calendar",)"
          R"("ref_number":"TP-00421","bid_status":"discovered","bid_amount":12500,)"
          R"("owner_username":"bakery_owner","freelancer_project_id":38013194},)"
          R"({"id":"p2","title":"Logo","bid_status":"discovered"},)"
          R"({"id":"p3","title":"Inventory for a workshop","ref_number":"TP-00422",)"
          R"("bid_status":"answers_received","bid_amount":500,"owner_username":"tools"}])"},
    Reply{"/config", R"({"preview_mode":"false","max_daily_bids":"12",)"
                     R"("daily_revenue_target":"2500","max_concurrent_projects":"3"})"},
    Reply{"/projects/p1",
          R"({"id":"p1","title":"A bakery's web site with orders and deliveries",)"
          R"("ref_number":"TP-00421","bid_status":"answers_received","bid_amount":12500,)"
          R"("freelancer_project_id":38013194,"github_repo_url":"https://code.example/p1",)"
          R"("description":"A site for a bakery in town.","delivery_plan":"1. Pages\n2. Orders",)"
          R"("questionnaire":"1. Which pages, and in which languages?\n2. By when?",)"
          R"("owner_answers":"1. Four pages, in two languages."})"},
    Reply{"/messages", R"([{"id":"1","sender":"agent","message_text":"Hello, I have read all of )"
                       R"(your description and would like to ask some questions."},)"
                       R"({"id":"2","sender":"bakery_owner","message_text":"Of course"}])"},
    Reply{"/bids", R"([{"username":"our_agent","amount":12500,"period":14,"is_ours":true},)"
                   R"({"bidder_id":1,"username":"a_bidder_of_many",)"
                   R"("display_name":"The Long Company Name","country":"Bosnia",)"
                   R"("rating":4.9,"reviews":12345,"amount":12456.5,)"
                   R"("period":120,"description":"I have done many such sites."}])"},
    Reply{"/timeline", R"([{"time":"2024-05-01T09:30:00Z","event":"Discovered",)"
                       R"("detail":"A bakery's web site with orders","type":"discovery"},)"
                       R"({"event":"Analysed"}])"},
    Reply{"/logs",
          R"([{"id":"1","log_type":"claude_response","content":"npm run build -- --production",)"
          R"("created_at":"2024-05-01T09:30:00Z"},)"
          R"({"id":"2","log_type":"info","content":"done","created_at":"2024-05-01T09:30:00Z"}])"},
    Reply{"/decisions", R"([{"id":"1","question":"Which of the two services shall be used?",)"
                        R"("status":"pending","notified_at":"2024-05-01T09:30:00Z"},)"
                        R"({"id":"2","question":"Colour?","status":"answered","answer":"Blue",)"
                        R"("notified_at":"2024-05-01T09:30:00Z"}])"},
    Reply{"/reports",
          R"([{"id":"1","report_date":"2024-05-01","commit_diff_summary":"3 files changed",)"
          R"("claude_md_diff":"+ orders are kept for a year"}])"},
};

const std::array bareReplies{
    Reply{"/dashboard", R"({"status_counts":{},"bids_pending":0,"total_earned":0,)"
                        R"("pending_decisions":0})"},
    Reply{"/projects", R"([{"id":"p1","title":"Bare","bid_status":"discovered"}])"},
    Reply{"/config", "{}"},
    Reply{"/projects/p1", R"({"id":"p1","title":"Bare"})"},
    Reply{"/messages", "[]"},
    Reply{"/bids", "[]"},
    Reply{"/timeline", "[]"},
    Reply{"/logs", "[]"},
    Reply{"/decisions", "[]"},
    Reply{"/reports", "[]"},
};

constexpr std::array tabNames{"overview",    "questions", "chat",      "bids",
                              "development", "logs",      "decisions", "reports"};

} // namespace

AllScreens::AllScreens()
    : projects(api, platform::Platform::current().textRules(), InlineExecutor::shared(),
               notifications)
    , detail(api, platform::Platform::current().textRules(), notifications, "p1")
{
}

void AllScreens::TearDown()
{
    scene.reset();
    qunsetenv("TRELLISPORT_TEXT_SCALE");
}

void AllScreens::fill()
{
    for (const Reply &reply : replies) {
        session->alwaysReply(reply.urlEnd, 200, reply.json);
    }
}

void AllScreens::fillWithNothing()
{
    for (const Reply &reply : bareReplies) {
        session->alwaysReply(reply.urlEnd, 200, reply.json);
    }
}

void AllScreens::show(QSize size, double textScale)
{
    qputenv("TRELLISPORT_TEXT_SCALE", QByteArray::number(textScale));
    scene = std::make_unique<QmlScene>(
        QByteArray(contentQml),
        QVariantMap{{QStringLiteral("viewModel"), QVariant::fromValue(&content)},
                    {QStringLiteral("dashboardModel"), QVariant::fromValue(&dashboard)},
                    {QStringLiteral("projectsModel"), QVariant::fromValue(&projects)},
                    {QStringLiteral("detailModel"), QVariant::fromValue(&detail)},
                    {QStringLiteral("settingsModel"), QVariant::fromValue(&settings)},
                    {QStringLiteral("openedLinks"), QVariant::fromValue(&links)}},
        size);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&scene->window()));
}

void AllScreens::showTab(int tab)
{
    content.setSelectedTab(tab);
}

void AllScreens::openProject()
{
    QMetaObject::invokeMethod(item("projectsView"), "open", Q_ARG(QString, QStringLiteral("p1")));
    ASSERT_TRUE(eventually([&] { return !item("projectsStack")->property("moving").toBool(); }));
}

void AllScreens::closeProject()
{
    QMetaObject::invokeMethod(item("projectsStack"), "pop");
    ASSERT_TRUE(eventually([&] { return !has("workspace"); }));
}

void AllScreens::showWorkspaceTab(int tab)
{
    detail.setSelectedTab(tab);
}

void AllScreens::openTab(int tab)
{
    showTab(1);
    settle();
    openProject();
    settle();
    showWorkspaceTab(tab);
    settle();
}

void AllScreens::settle()
{
    ASSERT_TRUE(eventually([&] { return !has("spinner") && !has("spinnerRow"); }));
    // Things find their places with the next picture, and lists with the one after it.
    (void)scene->picture();
    (void)scene->picture();
}

void AllScreens::visitAll(const std::function<void(const std::string &name)> &look)
{
    showTab(0);
    settle();
    look("dashboard");
    showTab(1);
    settle();
    look("projects");
    showTab(2);
    settle();
    look("settings");
    showTab(1);
    openProject();
    settle();
    visitProject(look);
}

void AllScreens::visitProject(const std::function<void(const std::string &name)> &look)
{
    for (int tab = 0; tab < workspaceTabs; ++tab) {
        showWorkspaceTab(tab);
        settle();
        look(tabNames.at(static_cast<std::size_t>(tab)));
    }
}

QQuickItem *AllScreens::item(const char *name) const
{
    return scene->item(QString::fromLatin1(name));
}

bool AllScreens::has(const char *name) const
{
    return scene->has(QString::fromLatin1(name));
}

} // namespace trellisport::test
