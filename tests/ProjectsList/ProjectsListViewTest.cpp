#include "Presentation/Colors.h"
#include "ProjectsListScene.h"

#include <QAccessible>
#include <QtQml/qqmlextensionplugin.h>

#include <gmock/gmock.h>

Q_IMPORT_QML_PLUGIN(TrellisportManager_ProjectsListPlugin)

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

TEST_F(ProjectsListViewTest, BeforeTheFirstLoadEndsOnlyTheProgressRowIsShown)
{
    session->hold();
    session->queueReply(200, listJson({projectJson("1", "awarded")}));
    show();
    EXPECT_THAT(scene->texts(), ElementsAre(u"Projects", u"Search projects"));
    EXPECT_TRUE(has("spinner"));
    EXPECT_FALSE(has("chipStrip"));
    QQuickItem *row = item("spinnerRow");
    EXPECT_EQ(row->width(), 390 - 32);
    EXPECT_EQ(colorOf(scene->item(QStringLiteral("ground"), row)), colors::background());

    session->release();
    EXPECT_TRUE(eventually([&] { return has("chipStrip"); }));
    EXPECT_FALSE(has("spinner"));
}

TEST_F(ProjectsListViewTest, ShowsTheChipsAndThenTheSectionsInTheirOrder)
{
    showLoaded({projectJson("1", "completed", "Title C"), projectJson("2", "discovered", "Title A"),
                projectJson("3", "questions_sent", "Title B")},
               {1280, 800});
    EXPECT_THAT(scene->texts(),
                ElementsAre(u"Projects", u"Search projects", u"All", u"Discovered",
                            u"Questions Sent", u"Answers Received", u"Plan Sent", u"Bid Placed",
                            u"Awarded", u"Rejected", u"Completed", u"DISCOVERED", u"Title A",
                            u"Discovered", u"FL#0", u"QUESTIONS SENT", u"Title B",
                            u"Questions Sent", u"FL#0", u"COMPLETED", u"Title C", u"Completed",
                            u"FL#0"));
}

TEST_F(ProjectsListViewTest, AnEmptyListShowsTheChipsAndNoSections)
{
    showLoaded({});
    EXPECT_TRUE(has("chipStrip"));
    EXPECT_TRUE(rows().isEmpty());
}

TEST_F(ProjectsListViewTest, AFailedFirstLoadShowsTheChipsAndNoMessage)
{
    session->queueReply(500);
    show({1280, 800});
    ASSERT_TRUE(eventually([&] { return has("chipStrip"); }));
    EXPECT_EQ(scene->texts().size(), 2 + 9);
}

TEST_F(ProjectsListViewTest, TheAwardedChipLeavesItsSectionAndASecondTapShowsEverySection)
{
    showLoaded({projectJson("1", "discovered", "Title A"), projectJson("2", "awarded", "Title B")},
               {1280, 800});
    scene->tap(text("Awarded"));
    settle();
    EXPECT_THAT(listed(), ElementsAre(u"AWARDED", u"Title B"));
    scene->tap(item("chip6"));
    settle();
    EXPECT_THAT(listed(), ElementsAre(u"DISCOVERED", u"Title A", u"AWARDED", u"Title B"));
}

TEST_F(ProjectsListViewTest, ASectionHeaderIsABoldCaptionInItsStatussColour)
{
    showLoaded({projectJson("1", "bid_placed"), projectJson("2", "rejected")});
    QQuickItem *placed = text("BID PLACED");
    ASSERT_NE(placed, nullptr);
    EXPECT_EQ(fontOf(placed).pixelSize(), 12);
    EXPECT_EQ(fontOf(placed).weight(), QFont::Bold);
    EXPECT_EQ(colorOf(placed), colors::accent());
    EXPECT_EQ(colorOf(text("REJECTED")), colors::red());
    EXPECT_EQ(sceneRect(placed).x(), 32);
}

TEST_F(ProjectsListViewTest, RowsStandInRoundedGroupsInsetSixteen)
{
    showLoaded({projectJson("1", "awarded", "Title A"), projectJson("2", "awarded", "Title B"),
                projectJson("3", "awarded", "Title C")});
    const QList<QQuickItem *> made = rows();
    ASSERT_EQ(made.size(), 3);
    const QRectF first = sceneRect(made[0]);
    const QRectF last = sceneRect(made[2]);
    EXPECT_EQ(first.left(), 16);
    EXPECT_EQ(first.width(), 390 - 32);
    EXPECT_EQ(sceneRect(made[1]).top(), first.bottom());
    const QImage picture = scene->picture();
    const auto at = [&](QPointF place) { return picture.pixelColor(place.toPoint()); };
    EXPECT_NE(at(first.topLeft()), colors::surface());
    EXPECT_EQ(at(first.topLeft() + QPointF(11, 2)), colors::surface());
    EXPECT_EQ(at(sceneRect(made[1]).topLeft()), colors::surface());
    EXPECT_EQ(at(last.topLeft()), colors::surface());
    EXPECT_NE(at(last.bottomLeft() - QPointF(0, 1)), colors::surface());
    EXPECT_EQ(at({5, first.center().y()}), colors::background());
    EXPECT_EQ(sceneRect(text("Title A")).left(), 32);
}

TEST_F(ProjectsListViewTest, ARowShowsThatItLeadsSomewhere)
{
    showLoaded({projectJson("1", "awarded", "Title A")});
    const QRectF chevron = sceneRect(item("disclosure"));
    EXPECT_TRUE(has("disclosure"));
    EXPECT_EQ(chevron.right(), 390 - 32);
    EXPECT_LE(sceneRect(item("marketplaceNumber")).right(), chevron.left());
}

TEST_F(ProjectsListViewTest, ASelectedChipIsFilledAndTheOthersAreOutlined)
{
    showLoaded({});
    QQuickItem *all = item("chip0");
    QQuickItem *other = item("chip1");
    const auto ground = [&](QQuickItem *chip) {
        return scene->item(QStringLiteral("chipGround"), chip);
    };
    const auto label = [&](QQuickItem *chip) {
        return scene->item(QStringLiteral("chipLabel"), chip);
    };
    EXPECT_EQ(colorOf(ground(all)), colors::accent());
    EXPECT_EQ(ground(all)->property("outlineWidth"), 0);
    EXPECT_EQ(colorOf(label(all)), colors::white());
    EXPECT_EQ(colorOf(ground(other)), colors::surface());
    EXPECT_EQ(ground(other)->property("outlineWidth"), 1);
    EXPECT_EQ(ground(other)->property("outlineColor").value<QColor>(), colors::hairline());
    EXPECT_EQ(colorOf(label(other)), colors::gray());
    for (QQuickItem *chip : {all, other}) {
        EXPECT_EQ(ground(chip)->property("radius"), 16);
        EXPECT_EQ(fontOf(label(chip)).pixelSize(), 12);
        EXPECT_EQ(label(chip)->position(), QPointF(12, 6));
        EXPECT_EQ(chip->width(), label(chip)->implicitWidth() + 24);
        EXPECT_EQ(chip->height(), 28);
    }
    EXPECT_EQ(sceneRect(other).left() - sceneRect(all).right(), 8);
    EXPECT_EQ(sceneRect(all).left(), 16);
}

TEST_F(ProjectsListViewTest, ChipsScrollSidewaysAndKeepTheirPlaceWhenOneIsPressed)
{
    showLoaded({projectJson("1", "awarded", "Title A")}, {320, 568});
    QQuickItem *strip = item("chipStrip");
    EXPECT_GT(strip->property("contentWidth").toDouble(), 320);
    strip->setProperty("contentX", 400);
    scene->tap(item("chip6"));
    settle();
    EXPECT_EQ(model.selectedStatus(), "awarded");
    EXPECT_EQ(item("chipStrip")->property("contentX"), 400);
}

TEST_F(ProjectsListViewTest, APulledListLoadsAgainAndRestsWhenTheLoadEnds)
{
    showLoaded({projectJson("1", "awarded", "Title A")});
    session->hold();
    session->queueReply(200, listJson({projectJson("1", "awarded", "Title B")}));
    const double rested = sceneRect(item("searchField")).y();
    scene->drag({200, 400}, {200, 600});
    EXPECT_EQ(session->requestCount(), 2U);
    scene->lift({200, 600});
    EXPECT_TRUE(has("refreshSpinner"));
    EXPECT_TRUE(has("chipStrip"));
    EXPECT_TRUE(eventually([&] { return sceneRect(item("searchField")).y() == rested + 60; }));
    session->release();
    EXPECT_TRUE(eventually([&] { return !has("refreshSpinner"); }));
    EXPECT_TRUE(eventually([&] { return sceneRect(item("searchField")).y() == rested; }));
    EXPECT_THAT(listed(), ElementsAre(u"AWARDED", u"Title B"));
}

TEST_F(ProjectsListViewTest, TheRefreshKeyLoadsAgain)
{
    showLoaded({projectJson("1", "awarded", "Title A")});
    session->queueReply(200, listJson({projectJson("1", "awarded", "Title B")}));
    QTest::keyClick(&scene->window(), Qt::Key_F5);
    EXPECT_TRUE(eventually([&] { return listed().contains(QStringLiteral("Title B")); }));
}

TEST_F(ProjectsListViewTest, AMarkTellsHowFarItHasBeenScrolled)
{
    showLoaded(std::vector<std::string>(100, projectJson("1", "awarded", "Title")));
    EXPECT_TRUE(has("scrollMark"));
    EXPECT_FALSE(item("scrollMark")->property("active").toBool());
    scene->drag({200, 600}, {200, 300});
    EXPECT_TRUE(item("scrollMark")->property("active").toBool());
    scene->lift({200, 300});
}

TEST_F(ProjectsListViewTest, AWideWindowKeepsAReadableColumnInTheMiddle)
{
    showLoaded({projectJson("1", "awarded", "Title A")}, {1280, 800});
    EXPECT_EQ(sceneRect(rows()[0]).left(), (1280 - 700) / 2 + 16);
    EXPECT_EQ(sceneRect(rows()[0]).right(), (1280 + 700) / 2 - 16);
    EXPECT_EQ(sceneRect(item("searchField")).left(), (1280 - 700) / 2 + 16);
}

TEST_F(ProjectsListViewTest, AScreenReaderHearsWhichChipIsOnAndCanPressThemAndTheRows)
{
    showLoaded({projectJson("1", "awarded", "Title A")});
    QAccessibleInterface *all = QAccessible::queryAccessibleInterface(item("chip0"));
    QAccessibleInterface *awarded = QAccessible::queryAccessibleInterface(item("chip6"));
    ASSERT_TRUE(all && awarded);
    EXPECT_EQ(awarded->text(QAccessible::Name), u"Awarded");
    EXPECT_TRUE(all->state().checked);
    EXPECT_FALSE(awarded->state().checked);
    // What a screen reader does with a button that is on or off.
    awarded->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(model.selectedStatus(), "awarded");
    EXPECT_FALSE(all->state().checked);
    EXPECT_TRUE(awarded->state().checked);
    awarded->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(model.selectedStatus());
    EXPECT_TRUE(all->state().checked);
    EXPECT_FALSE(awarded->state().checked);
    // The one that is on stays on.
    all->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(all->state().checked);

    settle();
    QAccessibleInterface *row = QAccessible::queryAccessibleInterface(rows()[0]);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->role(), QAccessible::Button);
    EXPECT_EQ(row->text(QAccessible::Name), u"Title A");
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(depth(), 1);
}

} // namespace
} // namespace trellisport::test
