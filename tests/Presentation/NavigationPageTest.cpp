#include "QmlSupport/QmlScene.h"

#include <QTest>

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

const QByteArray page = R"(
import QtQuick
import TrellisportManager.Presentation

NavigationPage {
    property int refreshes: 0
    property int goneBack: 0

    title: "Dashboard"
    refreshable: true
    onRefreshRequested: refreshes += 1
    onBackRequested: goneBack += 1
    scrollArea: Flickable {
        objectName: "area"
        contentWidth: width
        contentHeight: 2000

        StyledText {
            text: "first line"
        }
    }
}
)";

TEST(NavigationPage, ContentStartsBelowTheLargeTitle)
{
    QmlScene scene(page);
    QQuickItem *line = scene.text(QStringLiteral("first line"));
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(sceneRect(line).y(), 44 + 52);
}

TEST(NavigationPage, ShowsTheLargeTitleAtTheLeadingEdgeUntilItIsScrolledAway)
{
    QmlScene scene(page);
    QQuickItem *headline = scene.item(QStringLiteral("headline"));
    QQuickItem *large = scene.item(QStringLiteral("largeTitle"));
    ASSERT_TRUE(headline && large);
    EXPECT_EQ(headline->opacity(), 0);
    EXPECT_EQ(sceneRect(large).x(), 16);
    EXPECT_EQ(fontOf(large).pixelSize(), 34);
    EXPECT_EQ(fontOf(large).weight(), QFont::Bold);

    scene.item(QStringLiteral("area"))->setProperty("contentY", 200);
    EXPECT_EQ(headline->opacity(), 1);
    EXPECT_NEAR(sceneRect(headline).center().x(), 390 / 2.0, 1);
    EXPECT_FALSE(scene.has(QStringLiteral("largeTitle")));
}

// The toolkit warns of what would no longer be reached by Tab while it has the keyboard, and the
// scene takes that for a failure.
TEST(NavigationPage, AnAreaThatStopsScrollingKeepsTheKeyboardUntilItIsLeft)
{
    QmlScene scene(page);
    QQuickItem *area = scene.item(QStringLiteral("area"));
    EXPECT_TRUE(area->activeFocusOnTab());
    area->forceActiveFocus(Qt::TabFocusReason);
    area->setProperty("contentHeight", 100);
    EXPECT_TRUE(area->hasActiveFocus());
    EXPECT_TRUE(area->activeFocusOnTab());
    scene.root()->forceActiveFocus();
    EXPECT_FALSE(area->activeFocusOnTab());
}

TEST(NavigationPage, PullingPastTheThresholdAsksForOneReload)
{
    QmlScene scene(page);
    scene.drag({200, 300}, {200, 520});
    EXPECT_EQ(scene.root()->property("refreshes"), 1);
    scene.lift({200, 520});
    EXPECT_EQ(scene.root()->property("refreshes"), 1);
}

TEST(NavigationPage, AShortPullAsksForNothing)
{
    QmlScene scene(page);
    scene.drag({200, 300}, {200, 360});
    scene.lift({200, 360});
    EXPECT_EQ(scene.root()->property("refreshes"), 0);
}

TEST(NavigationPage, ContentRestsBelowTheSpinnerWhileTheReloadIsUnderWay)
{
    QmlScene scene(page);
    QQuickItem *line = scene.text(QStringLiteral("first line"));
    ASSERT_NE(line, nullptr);
    scene.root()->setProperty("refreshing", true);
    EXPECT_TRUE(eventually([&] { return sceneRect(line).y() == 44 + 52 + 60; }));
    EXPECT_TRUE(scene.has(QStringLiteral("refreshSpinner")));

    scene.root()->setProperty("refreshing", false);
    EXPECT_TRUE(eventually([&] { return sceneRect(line).y() == 44 + 52; }));
    EXPECT_FALSE(scene.has(QStringLiteral("refreshSpinner")));
}

TEST(NavigationPage, TheRefreshKeyAsksForAReload)
{
    QmlScene scene(page);
    QTest::keyClick(&scene.window(), Qt::Key_F5);
    EXPECT_EQ(scene.root()->property("refreshes"), 1);
}

TEST(NavigationPage, KeysScrollIt)
{
    QmlScene scene(page);
    QQuickItem *area = scene.item(QStringLiteral("area"));
    const auto place = [&] { return area->property("contentY").toDouble(); };
    EXPECT_EQ(place(), -96);
    QTest::keyClick(&scene.window(), Qt::Key_Tab);
    EXPECT_TRUE(area->hasActiveFocus());
    EXPECT_TRUE(scene.has(QStringLiteral("scrollFocus")));
    QTest::keyClick(&scene.window(), Qt::Key_Down);
    EXPECT_EQ(place(), -96 + 48);
    QTest::keyClick(&scene.window(), Qt::Key_PageDown);
    EXPECT_NEAR(place(), -48 + 0.9 * (844 - 44), 1);
    QTest::keyClick(&scene.window(), Qt::Key_Home);
    EXPECT_EQ(place(), -96);
    QTest::keyClick(&scene.window(), Qt::Key_End);
    EXPECT_EQ(place(), 2000 - 844);
    QTest::keyClick(&scene.window(), Qt::Key_Up);
    EXPECT_EQ(place(), 2000 - 844 - 48);
    QTest::keyClick(&scene.window(), Qt::Key_PageUp);
    EXPECT_NEAR(place(), 2000 - 844 - 48 - 0.9 * (844 - 44), 1);
}

TEST(NavigationPage, OfContentThatFitsTheKeyboardStopsNowhere)
{
    QmlScene scene(page);
    QQuickItem *area = scene.item(QStringLiteral("area"));
    area->setProperty("contentHeight", 600);
    QTest::keyClick(&scene.window(), Qt::Key_Tab);
    EXPECT_FALSE(area->hasActiveFocus());
}

TEST(NavigationPage, AMarkTellsHowFarItHasBeenScrolled)
{
    QmlScene scene(page);
    QQuickItem *area = scene.item(QStringLiteral("area"));
    QQuickItem *mark = scene.item(QStringLiteral("scrollMark"));
    ASSERT_NE(mark, nullptr);
    EXPECT_EQ(mark->property("position"), 0);
    EXPECT_NEAR(mark->property("size").toDouble(), 844.0 / (2000 + 96), 0.001);
    EXPECT_EQ(sceneRect(mark).right(), 390);
    EXPECT_EQ(sceneRect(mark).top(), 44);
    EXPECT_FALSE(mark->property("active").toBool());
    scene.drag({200, 600}, {200, 300});
    EXPECT_TRUE(mark->property("active").toBool());
    EXPECT_GT(mark->property("position").toDouble(), 0.05);
    scene.lift({200, 300});
    area->setProperty("contentHeight", 600);
    EXPECT_FALSE(scene.has(QStringLiteral("scrollMark")));
}

TEST(NavigationPage, APushedPageHasTheWayBackAndItsTitleInTheBar)
{
    QmlScene scene(page);
    scene.root()->setProperty("largeTitle", false);
    scene.root()->setProperty("backTitle", QStringLiteral("Projects"));
    QQuickItem *line = scene.text(QStringLiteral("first line"));
    ASSERT_NE(line, nullptr);
    EXPECT_TRUE(eventually([&] { return sceneRect(line).y() == 44; }));
    EXPECT_EQ(scene.item(QStringLiteral("headline"))->opacity(), 1);
    scene.tap(scene.item(QStringLiteral("backButton")));
    EXPECT_EQ(scene.root()->property("goneBack"), 1);
}

TEST(NavigationPage, ALongTitleStaysBesideTheWayBackAndIsShortened)
{
    QmlScene scene(page, {320, 568});
    scene.root()->setProperty("largeTitle", false);
    scene.root()->setProperty("backTitle", QStringLiteral("Projects"));
    scene.root()->setProperty("title", QString(200, QLatin1Char('m')));
    const QRectF headline = sceneRect(scene.item(QStringLiteral("headline")));
    const QRectF back = sceneRect(scene.item(QStringLiteral("backButton")));
    EXPECT_GE(headline.left(), back.right());
    EXPECT_LE(headline.right(), 320 - 16 + 0.5);
    EXPECT_TRUE(scene.item(QStringLiteral("headline"))->property("truncated").toBool());
}

} // namespace
} // namespace trellisport::test
