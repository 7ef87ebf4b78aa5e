#include "WorkspaceScene.h"

#include <QAccessible>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(TrellisportManager_ProjectDetailPlugin)

namespace trellisport::test {

std::string quoted(const std::string &text)
{
    const QByteArray json =
        QJsonDocument(QJsonArray{QString::fromStdString(text)}).toJson(QJsonDocument::Compact);
    return json.mid(1, json.size() - 2).toStdString();
}

namespace {

using ::testing::ElementsAre;

const char *const fullProject =
    R"({"id":"p1","title":"Keep books","ref_number":"TP-1","bid_status":"awarded",)"
    R"("bid_amount":1500,"freelancer_project_id":38013194,)"
    R"("github_repo_url":"https://code.example/p1"})";

class WorkspaceViewTest : public WorkspaceScene {
protected:
    QStringList headerTexts() const { return scene->texts(item("header")); }
    QStringList tabLabels() const
    {
        QStringList labels;
        for (const QQuickItem *label : items("tabLabel")) {
            labels << textOf(label);
        }
        return labels;
    }
    QQuickItem *tabButton(int place) const { return items("tabButton").at(place); }
};

TEST_F(WorkspaceViewTest, BeforeTheLoadEndsOnlyTheSpinnerIsShown)
{
    session->hold();
    session->queueReply(200, fullProject);
    show();
    EXPECT_THAT(scene->texts(), ElementsAre(u"Projects", u"Project"));
    EXPECT_TRUE(has("spinner"));
    EXPECT_NEAR(place("spinner").center().x(), 195, 0.5);
    EXPECT_NEAR(place("spinner").center().y(), 44 + (844 - 44) / 2.0, 0.5);
    EXPECT_FALSE(has("header"));
    EXPECT_FALSE(has("tabStrip"));
    EXPECT_EQ(scene->colorAt({195, 700}), colors::background());

    session->release();
    ASSERT_TRUE(eventually([&] { return has("header"); }));
    EXPECT_FALSE(has("spinner"));
    EXPECT_TRUE(scene->texts().contains(QStringLiteral("Keep books")));
}

TEST_F(WorkspaceViewTest, AFirstLoadThatFailsLeavesTheBackgroundUnderItsTitle)
{
    session->queueReply(500);
    show();
    ASSERT_TRUE(eventually([&] { return !has("spinner"); }));
    EXPECT_THAT(scene->texts(), ElementsAre(u"Projects", u"Project"));
    EXPECT_EQ(scene->colorAt({195, 400}), colors::background());
}

TEST_F(WorkspaceViewTest, TheHeaderShowsReferenceStatusAmountLinkAndNumber)
{
    showLoaded(fullProject);
    EXPECT_THAT(headerTexts(),
                ElementsAre(u"TP-1", u"Awarded", u"$1500.00", u"GitHub", u"FL#38013194"));
    EXPECT_EQ(lookOf(item("bidAmount")), caption(colors::gray()));
    EXPECT_EQ(lookOf(text("GitHub")), caption(colors::accent()));
    EXPECT_EQ(lookOf(item("marketplaceNumber")), caption2(colors::dimText()));
    EXPECT_EQ(colorOf(text("Awarded")), colors::green());
    EXPECT_EQ(place("repositoryLink").right(), 390 - 16);
    EXPECT_EQ(place("reference").left(), 16);
    EXPECT_EQ(place("status").left() - place("reference").right(), 8);
    EXPECT_EQ(place("bidAmount").left() - place("status").right(), 8);
    EXPECT_EQ(place("marketplaceNumber").left(), 16);
    EXPECT_EQ(place("marketplaceNumber").top() - place("facts").bottom(), 4);
    EXPECT_EQ(place("tabStrip").top() - place("marketplaceNumber").bottom(), 8);
}

TEST_F(WorkspaceViewTest, TheReferenceIsABoldTagInTheAccentColour)
{
    showLoaded(fullProject);
    QQuickItem *tag = item("reference");
    QQuickItem *label = item("badgeLabel", tag);
    EXPECT_EQ(lookOf(label), (Look{13, QFont::Bold, colors::accent(), 13 * 1.2, true}));
    EXPECT_EQ(label->position(), QPointF(6, 3));
    EXPECT_EQ(tag->width(), label->width() + 12);
    EXPECT_EQ(tag->height(), label->height() + 6);
    EXPECT_EQ(colorOf(tag), Colors::faded(colors::accent(), 0.15));
    EXPECT_EQ(tag->property("radius"), 4);
}

TEST_F(WorkspaceViewTest, ABareProjectsHeaderShowsItsBadgeAndTheNumberNought)
{
    showLoaded();
    EXPECT_THAT(headerTexts(), ElementsAre(u"Unknown", u"FL#0"));
    EXPECT_EQ(place("status").left(), 16);
    EXPECT_FALSE(has("reference"));
    EXPECT_FALSE(has("repositoryLink"));
}

TEST_F(WorkspaceViewTest, TheLinkOpensTheRepository)
{
    showLoaded(fullProject);
    scene->tap(item("repositoryLink"));
    EXPECT_THAT(opener.opened, ElementsAre("https://code.example/p1"));
}

class WorkspaceViewDeathTest : public WorkspaceViewTest {};

TEST_F(WorkspaceViewDeathTest, AHeaderWithABadRepositoryAddressStopsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string record =
        R"({"id":"p1","title":"t","github_repo_url":"https://code.example/a b"})";
    EXPECT_EXIT(showLoaded(record), ::testing::KilledBySignal(SIGABRT),
                "Unexpectedly found nil while unwrapping an Optional value");
}

TEST_F(WorkspaceViewTest, TheStripHasItsEightButtonsWhateverTheProjectHolds)
{
    const auto eight = ElementsAre(u"Overview", u"Questions", u"Chat", u"Bids", u"Dev", u"Logs",
                                   u"Decisions", u"Reports");
    showLoaded(bareProject, {1280, 800});
    EXPECT_THAT(tabLabels(), eight);
    session->queueReply(200, fullProject, "/projects/p1");
    model.disappear();
    model.appear();
    ASSERT_TRUE(eventually([&] { return has("reference"); }));
    EXPECT_THAT(tabLabels(), eight);
}

TEST_F(WorkspaceViewTest, TheSelectedTabIsBoldOnATintedGround)
{
    showLoaded();
    QQuickItem *selected = tabButton(0);
    QQuickItem *other = tabButton(1);
    EXPECT_EQ(lookOf(item("tabLabel", selected)), caption(colors::white(), QFont::Bold));
    EXPECT_EQ(lookOf(item("tabLabel", other)), caption(colors::gray()));
    EXPECT_EQ(colorOf(item("tabGround", selected)), Colors::faded(colors::accent(), 0.3));
    EXPECT_EQ(colorOf(item("tabGround", other)).alpha(), 0);
    for (QQuickItem *button : {selected, other}) {
        QQuickItem *label = item("tabLabel", button);
        EXPECT_EQ(item("tabGround", button)->property("radius"), 8);
        EXPECT_EQ(label->position(), QPointF(12, 8));
        EXPECT_EQ(button->width(), label->implicitWidth() + 24);
        EXPECT_EQ(button->height(), 16 + 16);
    }
    EXPECT_EQ(sceneRect(selected).left(), 16);
    EXPECT_EQ(sceneRect(other).left(), sceneRect(selected).right());
    EXPECT_EQ(place("divider"), QRectF(0, sceneRect(selected).bottom() + 4, 390, 1));
    EXPECT_EQ(colorOf(item("divider")), colors::hairline());
    EXPECT_EQ(tabTop(), place("divider").bottom());
}

TEST_F(WorkspaceViewTest, ATapShowsTheTab)
{
    showLoaded();
    scene->tap(text("Questions"));
    EXPECT_EQ(model.selectedTab(), Tab::Questions);
    EXPECT_THAT(tabTexts(), ElementsAre(u"No questions generated yet"));
    EXPECT_EQ(colorOf(item("tabLabel", tabButton(1))), colors::white());
    EXPECT_EQ(colorOf(item("tabLabel", tabButton(0))), colors::gray());
}

TEST_F(WorkspaceViewTest, APendingTabIsShownAndSeenInTheStrip)
{
    session->alwaysReply("/decisions", 200, "[]");
    session->alwaysReply("/logs", 200, "[]");
    showLoaded(bareProject, {320, 568});
    notifications.setPendingTab("decisions");
    EXPECT_TRUE(eventually(
        [&] { return tabTexts() == QStringList{QStringLiteral("No decisions requested")}; }));
    EXPECT_FALSE(notifications.pendingTab());
    EXPECT_TRUE(eventually([&] { return sceneRect(tabButton(6)).right() <= 320 - 16; }));
    EXPECT_EQ(colorOf(item("tabLabel", tabButton(6))), colors::white());

    notifications.setPendingTab("logs");
    EXPECT_TRUE(eventually(
        [&] { return tabTexts() == QStringList{QStringLiteral("No development logs yet")}; }));
    notifications.setPendingTab("overview");
    EXPECT_FALSE(notifications.pendingTab());
    EXPECT_THAT(tabTexts(), ElementsAre(u"No development logs yet"));
}

TEST_F(WorkspaceViewTest, ATabIsMadeAnewEachTimeItIsShown)
{
    session->alwaysReply("/messages", 200, "[]");
    showLoaded();
    for (const std::size_t loads : {1U, 2U}) {
        scene->tap(text("Chat"));
        ASSERT_TRUE(eventually([&] { return session->requestCount() == 1 + loads; }));
        scene->tap(text("Overview"));
    }
}

TEST_F(WorkspaceViewTest, AScreenReaderHearsWhichTabIsSelectedAndCanPressThem)
{
    showLoaded();
    QAccessibleInterface *overview = QAccessible::queryAccessibleInterface(tabButton(0));
    QAccessibleInterface *questions = QAccessible::queryAccessibleInterface(tabButton(1));
    ASSERT_TRUE(overview && questions);
    EXPECT_EQ(questions->role(), QAccessible::PageTab);
    EXPECT_EQ(questions->text(QAccessible::Name), u"Questions");
    EXPECT_TRUE(overview->state().checked);
    EXPECT_FALSE(questions->state().checked);
    ASSERT_NE(questions->actionInterface(), nullptr);
    for (QAccessibleInterface *tab : {questions, overview}) {
        for (const QString &action : {QAccessibleActionInterface::pressAction(),
                                      QAccessibleActionInterface::toggleAction()}) {
            tab->actionInterface()->doAction(action);
            EXPECT_EQ(model.selectedTab(), tab == questions ? Tab::Questions : Tab::Overview);
            EXPECT_EQ(questions->state().checked, tab == questions);
            EXPECT_EQ(overview->state().checked, tab == overview);
        }
    }
}

} // namespace
} // namespace trellisport::test
