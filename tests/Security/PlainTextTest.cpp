// Whatever the service writes is shown as it was typed, on every screen.
#include "Dashboard/DashboardViewModel.h"
#include "ProjectDetail/WorkspaceScene.h"
#include "ProjectsList/ProjectsListScene.h"
#include "Settings/SettingsScene.h"

#include <QFontMetricsF>
#include <QtQml/qqmlextensionplugin.h>

#include <gmock/gmock.h>

Q_IMPORT_QML_PLUGIN(TrellisportManager_DashboardPlugin)
Q_IMPORT_QML_PLUGIN(TrellisportManager_ProjectDetailPlugin)
Q_IMPORT_QML_PLUGIN(TrellisportManager_ProjectsListPlugin)
Q_IMPORT_QML_PLUGIN(TrellisportManager_SettingsPlugin)

namespace trellisport::test {
namespace {

using Tab = ProjectDetailViewModel::Tab;

/// Markup of each kind that the toolkit would draw: HTML, a link, a picture, an entity.
constexpr const char *markup =
    R"(<b>B</b><a href='https://a.example'>A</a><img src='https://a.example/i.png'>&lt;)";

void visitAll(QQuickItem *item, const std::function<void(QQuickItem *)> &visit)
{
    visit(item);
    for (QQuickItem *child : item->childItems()) {
        visitAll(child, visit);
    }
}

/// How many texts with the markup are there; each item that can interpret its text must not.
int plainTexts(QmlScene &scene)
{
    (void)scene.picture();
    int found = 0;
    visitAll(scene.window().contentItem(), [&](QQuickItem *item) {
        const QVariant format = item->property("textFormat");
        if (format.isValid()) {
            EXPECT_EQ(format.toInt(), static_cast<int>(Qt::PlainText))
                << item->metaObject()->className() << ' ' << textOf(item).toStdString();
        }
        // The screens write some words in capitals, or cut them.
        const QString text = item->property("text").toString();
        const bool isMarkup = text.contains(QLatin1String("<b>"), Qt::CaseInsensitive);
        if (format.isValid() && isMarkup) {
            ++found;
        }
    });
    return found;
}

/// A text as long as what was typed: markup that is taken for such would be shorter.
void expectDrawnAsTyped(const QQuickItem *text)
{
    ASSERT_NE(text, nullptr);
    const QString typed = QString::fromUtf8(markup);
    ASSERT_EQ(textOf(text), typed);
    const double lines = text->property("lineCount").toInt();
    const double needed = QFontMetricsF(fontOf(text)).horizontalAdvance(typed);
    EXPECT_GT(lines * text->property("contentWidth").toDouble(), needed * 0.9);
    EXPECT_GT(lines, 1);
}

std::string withMarkup(std::string json)
{
    for (std::size_t at = 0; (at = json.find('$', at)) != std::string::npos;) {
        json.replace(at, 1, markup);
        at += std::string_view(markup).size();
    }
    return json;
}

/// A record in which every text is markup.
const char *const project =
    R"({"id":"p1","ref_number":"$","title":"$","description":"$","project_md":"$",
        "delivery_plan":"$","questionnaire":"1. $","owner_answers":"1. $","bid_amount":5,
        "bid_status":"$","owner_username":"$","created_at":"$","updated_at":"$"})";

struct TabCase {
    const char *name;
    Tab tab;
    const char *urlEnd;
    const char *list;
    int texts; ///< at least so many beside the header's

    friend void PrintTo(const TabCase &each, std::ostream *stream) { *stream << each.name; }
};

class PlainTextInTab : public WorkspaceScene, public testing::WithParamInterface<TabCase> {};

TEST_P(PlainTextInTab, ShowsMarkupAsTyped)
{
    showTab(GetParam().tab, GetParam().urlEnd, withMarkup(GetParam().list), withMarkup(project),
            {800, 3000});
    int inTab = 0;
    visitAll(item("tab"), [&](const QQuickItem *one) {
        if (one->property("textFormat").isValid() && one->isVisible() &&
            textOf(one).contains(QLatin1String("<b>"), Qt::CaseInsensitive)) {
            ++inTab;
        }
    });
    EXPECT_GE(inTab, GetParam().texts);
    EXPECT_GT(plainTexts(*scene), inTab) << "the header's";
}

INSTANTIATE_TEST_SUITE_P(
    Security, PlainTextInTab,
    testing::Values(
        TabCase{"Overview", Tab::Overview, "/nothing", "[]", 2},
        TabCase{"Questions", Tab::Questions, "/nothing", "[]", 2},
        TabCase{"Chat", Tab::Chat, "/messages",
                R"([{"id":"1","sender":"$","message_text":"$","created_at":"$"}])", 2},
        TabCase{"Bids", Tab::Bids, "/bids",
                R"([{"bidder_id":1,"username":"$","display_name":"$","country":"$","rating":4,
                     "reviews":2,"amount":3,"period":4,"description":"$","is_ours":false},
                    {"username":"$","description":"$","amount":3,"is_ours":true}])",
                2},
        TabCase{"Development", Tab::Development, "/timeline",
                R"([{"time":"$","event":"$","detail":"$","type":"$"}])", 2},
        TabCase{"Logs", Tab::Logs, "/logs",
                R"([{"id":"1","log_type":"$","content":"$","created_at":"$"}])", 2},
        TabCase{"Decisions", Tab::Decisions, "/decisions",
                R"([{"id":"1","question":"$","status":"pending","notified_at":"$"},
                    {"id":"2","question":"$","answer":"$","status":"$","answered_at":"$"}])",
                3},
        TabCase{"Reports", Tab::Reports, "/reports",
                R"([{"id":"1","report_date":"$","commit_diff_summary":"$","claude_md_diff":"$",
                     "artifact_links":["$"],"created_at":"$"}])",
                3}),
    [](const auto &each) { return std::string(each.param.name); });

using PlainTextInWorkspace = WorkspaceScene;

TEST_F(PlainTextInWorkspace, AMessageTakesTheRoomOfWhatWasTyped)
{
    showTab(Tab::Chat, "/messages",
            withMarkup(R"([{"id":"1","sender":"agent","message_text":"$"}])"));
    expectDrawnAsTyped(text(markup));
}

using PlainTextInList = ProjectsListViewTest;

TEST_F(PlainTextInList, ProjectsShowMarkupAsTyped)
{
    // Stages that the list does not know come to no section.
    showLoaded({withMarkup(R"({"id":"p1","ref_number":"$","title":"$","bid_status":"awarded",
                               "owner_username":"$","updated_at":"$"})")});
    EXPECT_GE(plainTexts(*scene), 2);
}

using PlainTextInSettings = SettingsViewTest;

TEST_F(PlainTextInSettings, FieldsHoldMarkupAsTyped)
{
    showLoaded(withMarkup(R"({"preview_mode":"false","max_daily_bids":"$",
                              "daily_revenue_target":"$","max_concurrent_projects":"$"})")
                   .c_str());
    (void)plainTexts(*scene);
    int fields = 0;
    visitAll(scene->window().contentItem(), [&](const QQuickItem *one) {
        // A field of one line knows no formats.
        fields += one->inherits("QQuickTextInput") && textOf(one) == QLatin1String(markup) ? 1 : 0;
    });
    EXPECT_EQ(fields, 3);
}

TEST(PlainTextOnDashboard, AnErrorThatNamesWhatWasSentShowsItAsTyped)
{
    const auto session = std::make_shared<FakeHttpSession>();
    ManualClock clock;
    TrellisportAPI api("https://service.example/api/v1", session, InlineExecutor::shared());
    DashboardViewModel model(api, clock);
    session->queueReply(200, R"({"status_counts":{"<b>B</b>":"none"},"bids_pending":1,
                                 "total_earned":2,"pending_decisions":3})");
    QmlScene scene(QStringLiteral("Dashboard"), QStringLiteral("DashboardView"),
                   {{QStringLiteral("viewModel"), QVariant::fromValue(&model)}});
    EXPECT_TRUE(eventually([&] { return plainTexts(scene) == 1; }));
}

} // namespace
} // namespace trellisport::test
