#include "Notifications/NotificationManager.h"
#include "Presentation/Colors.h"
#include "QmlSupport/QmlScene.h"
#include "Shell/ContentViewModel.h"
#include "Support/NotificationsBench.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QPalette>
#include <QTest>

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

/// ContentView with screens that only bear their names.
const char *const content = R"(
import QtQuick
import TrellisportManager.Shell

ContentView {
    dashboard: Component { Item { objectName: "dashboardScreen" } }
    projects: Component { Item { objectName: "projectsScreen" } }
    settings: Component { Item { objectName: "settingsScreen" } }
}
)";

class ContentViewTest : public ::testing::Test {
protected:
    NotificationsBench bench;
    ContentViewModel model{bench.manager};
    QmlScene scene{QByteArray(content),
                   {{QStringLiteral("viewModel"), QVariant::fromValue(&model)}}};

    QQuickItem *tab(int index) const { return scene.items(QStringLiteral("rootTab")).value(index); }
    QAccessibleInterface *accessibleTab(int index) const
    {
        return QAccessible::queryAccessibleInterface(tab(index));
    }
    QStringList shownScreens() const
    {
        QStringList shown;
        for (const char *name : {"dashboardScreen", "projectsScreen", "settingsScreen"}) {
            if (scene.has(QString::fromLatin1(name))) {
                shown << QString::fromLatin1(name);
            }
        }
        return shown;
    }
};

TEST_F(ContentViewTest, HasThreeTabsWithTheirLabelsInOrder)
{
    EXPECT_THAT(scene.texts(), ElementsAre(u"Dashboard", u"Projects", u"Settings"));
    QStringList symbols;
    for (const QQuickItem *symbol : scene.items(QStringLiteral("symbol"))) {
        symbols << symbol->property("symbol").toString();
    }
    EXPECT_THAT(symbols, ElementsAre(u"chart.bar.fill", u"folder.fill", u"gearshape.fill"));
}

TEST_F(ContentViewTest, AllScreensExistFromTheStartAndTheDashboardIsShown)
{
    EXPECT_THAT(shownScreens(), ElementsAre(u"dashboardScreen"));
    EXPECT_EQ(scene.items(QStringLiteral("projectsScreen")).size(), 1);
    EXPECT_EQ(scene.items(QStringLiteral("settingsScreen")).size(), 1);
}

TEST_F(ContentViewTest, TheSelectedTabHasTheTintAndTheOthersAreGray)
{
    const auto tints = [&] {
        QList<QColor> colors;
        for (const QQuickItem *symbol : scene.items(QStringLiteral("symbol"))) {
            colors << colorOf(symbol);
        }
        return colors;
    };
    EXPECT_THAT(tints(), ElementsAre(colors::accent(), colors::gray(), colors::gray()));
    scene.tap(tab(1));
    EXPECT_THAT(tints(), ElementsAre(colors::gray(), colors::accent(), colors::gray()));
}

TEST_F(ContentViewTest, TappingATabShowsItsScreen)
{
    scene.tap(tab(2));
    EXPECT_EQ(model.selectedTab(), 2);
    EXPECT_THAT(shownScreens(), ElementsAre(u"settingsScreen"));
    scene.tap(tab(0));
    EXPECT_THAT(shownScreens(), ElementsAre(u"dashboardScreen"));
}

TEST_F(ContentViewTest, OnlyTheMainButtonOfAMouseChoosesATab)
{
    QTest::mouseClick(&scene.window(), Qt::RightButton, {}, sceneRect(tab(2)).center().toPoint());
    EXPECT_EQ(model.selectedTab(), 0);
}

TEST_F(ContentViewTest, ANotificationMovesTheTabBarToo)
{
    scene.tap(tab(2));
    bench.manager.setPendingProjectId("p1");
    EXPECT_THAT(shownScreens(), ElementsAre(u"projectsScreen"));
    EXPECT_TRUE(tab(1)->property("checked").toBool());
    EXPECT_FALSE(tab(2)->property("checked").toBool());
}

TEST_F(ContentViewTest, TheTabBarStandsAtTheFootOverTheWholeWidth)
{
    const QRectF last = sceneRect(tab(2));
    EXPECT_EQ(last.bottom(), 844);
    EXPECT_EQ(last.height(), 49);
    EXPECT_NEAR(last.right(), 390, 0.01);
    EXPECT_NEAR(sceneRect(tab(0)).width(), 130, 0.01);
}

TEST_F(ContentViewTest, TabsAreReachedByTabAndChosenByKeys)
{
    QTest::keyClick(&scene.window(), Qt::Key_Tab);
    QTest::keyClick(&scene.window(), Qt::Key_Tab);
    QTest::keyClick(&scene.window(), Qt::Key_Return);
    EXPECT_EQ(model.selectedTab(), 1);
}

TEST_F(ContentViewTest, AScreenReaderFindsTabsAndWhichIsSelected)
{
    ASSERT_NE(accessibleTab(0), nullptr);
    EXPECT_EQ(accessibleTab(0)->role(), QAccessible::PageTab);
    EXPECT_EQ(accessibleTab(0)->text(QAccessible::Name), u"Dashboard");
    EXPECT_EQ(accessibleTab(1)->text(QAccessible::Name), u"Projects");
    EXPECT_EQ(accessibleTab(2)->text(QAccessible::Name), u"Settings");
    EXPECT_TRUE(accessibleTab(0)->state().checked);
    EXPECT_FALSE(accessibleTab(1)->state().checked);
}

TEST_F(ContentViewTest, AScreenReaderCanChooseATab)
{
    ASSERT_NE(accessibleTab(1), nullptr);
    accessibleTab(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(model.selectedTab(), 1);
    EXPECT_TRUE(accessibleTab(1)->state().checked);
    accessibleTab(2)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(model.selectedTab(), 2);
    EXPECT_TRUE(accessibleTab(2)->state().checked);
    EXPECT_FALSE(accessibleTab(1)->state().checked);
    accessibleTab(2)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(model.selectedTab(), 2);
    EXPECT_TRUE(accessibleTab(2)->state().checked);
}

TEST_F(ContentViewTest, ChoosingTheChosenTabAgainChangesNothing)
{
    accessibleTab(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(accessibleTab(0)->state().checked);
    QTest::keyClick(&scene.window(), Qt::Key_Tab);
    QTest::keyClick(&scene.window(), Qt::Key_Return);
    scene.tap(tab(0));
    EXPECT_TRUE(accessibleTab(0)->state().checked);
    EXPECT_EQ(model.selectedTab(), 0);
    EXPECT_EQ(colorOf(scene.items(QStringLiteral("symbol")).first()), colors::accent());
}

TEST_F(ContentViewTest, TheSchemeIsDarkWhateverTheSystemPrefers)
{
    EXPECT_EQ(scene.colorAt({195, 400}), colors::background());
    const QImage usual = scene.picture();

    const QPalette before = QGuiApplication::palette();
    QGuiApplication::setPalette(QPalette(Qt::white));
    EXPECT_TRUE(scene.picture() == usual) << "when the palette changes";
    QmlScene later{QByteArray(content),
                   {{QStringLiteral("viewModel"), QVariant::fromValue(&model)}}};
    EXPECT_TRUE(later.picture() == usual) << "when it was light from the start";
    QGuiApplication::setPalette(before);
}

} // namespace
} // namespace trellisport::test
