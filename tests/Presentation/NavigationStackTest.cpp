#include "NavigationStackScene.h"

#include <QTest>

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

TEST(NavigationStack, ShowsItsRootPageAtFirst)
{
    QmlScene scene(stack);
    EXPECT_TRUE(scene.has(QStringLiteral("rootPage")));
    EXPECT_EQ(count(scene, "depth"), 0);
}

TEST(NavigationStack, APushedPageSlidesOverFromTheTrailingEdge)
{
    QmlScene scene(stack);
    push(scene, "A");
    EXPECT_EQ(left(scene, "A"), 390);
    EXPECT_TRUE(eventually([&] { return left(scene, "A") < 200; }));
    EXPECT_NEAR(left(scene, "rootPage"), -(390 - left(scene, "A")) / 3, 1);
    ASSERT_TRUE(settled(scene));
    EXPECT_EQ(left(scene, "A"), 0);
    EXPECT_EQ(count(scene, "depth"), 1);
}

TEST(NavigationStack, ACoveredPageIsSeenUntilTheMovementEnds)
{
    QmlScene scene(stack);
    push(scene, "A");
    EXPECT_TRUE(scene.has(QStringLiteral("rootPage")));
    ASSERT_TRUE(settled(scene));
    EXPECT_FALSE(scene.has(QStringLiteral("rootPage")));
    EXPECT_EQ(count(scene, "disappearances"), 1);
    EXPECT_EQ(count(scene, "appearances"), 0);
}

TEST(NavigationStack, AnUncoveredPageAppearsOnceAsTheMovementBegins)
{
    QmlScene scene(stack);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    pop(scene);
    EXPECT_EQ(count(scene, "appearances"), 1);
    ASSERT_TRUE(settled(scene));
    EXPECT_EQ(count(scene, "appearances"), 1);
    EXPECT_EQ(count(scene, "disappearances"), 1);
    EXPECT_EQ(count(scene, "depth"), 0);
    EXPECT_EQ(left(scene, "rootPage"), 0);
    EXPECT_TRUE(eventually([&] { return !scene.has(QStringLiteral("A")); }));
}

TEST(NavigationStack, PagesPileUpAndOnlyTheTopOneIsSeen)
{
    QmlScene scene(stack);
    push(scene, "A");
    push(scene, "B");
    ASSERT_TRUE(settled(scene));
    EXPECT_TRUE(scene.has(QStringLiteral("B")));
    EXPECT_FALSE(scene.has(QStringLiteral("A")));
    pop(scene);
    ASSERT_TRUE(settled(scene));
    EXPECT_TRUE(scene.has(QStringLiteral("A")));
    EXPECT_FALSE(scene.has(QStringLiteral("rootPage")));
}

TEST(NavigationStack, GoingBackTwiceAtOnceLeavesTwoPages)
{
    QmlScene scene(stack);
    push(scene, "A");
    push(scene, "B");
    pop(scene);
    pop(scene);
    ASSERT_TRUE(settled(scene));
    EXPECT_EQ(count(scene, "depth"), 0);
    EXPECT_EQ(count(scene, "appearances"), 1);
}

TEST(NavigationStack, GoingBackFromTheRootPageDoesNothing)
{
    QmlScene scene(stack);
    pop(scene);
    EXPECT_FALSE(scene.root()->property("moving").toBool());
    EXPECT_TRUE(scene.has(QStringLiteral("rootPage")));
}

TEST(NavigationStack, NothingIsPressedWhileAPageMoves)
{
    QmlScene scene(stack);
    push(scene, "A");
    QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, {50, 120});
    EXPECT_EQ(count(scene, "presses"), 0);
    ASSERT_TRUE(settled(scene));
}

TEST(NavigationStack, AltAndLeftGoesBack)
{
    QmlScene scene(stack);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    QTest::keyClick(&scene.window(), Qt::Key_Left, Qt::AltModifier);
    ASSERT_TRUE(settled(scene));
    EXPECT_EQ(count(scene, "depth"), 0);
}

TEST(NavigationStack, EscapeGoesBack)
{
    QmlScene scene(stack);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    QTest::keyClick(&scene.window(), Qt::Key_Escape);
    ASSERT_TRUE(settled(scene));
    EXPECT_EQ(count(scene, "depth"), 0);
}

TEST(NavigationStack, TheBackKeyGoesBack)
{
    QmlScene scene(stack);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    QTest::keyClick(&scene.window(), Qt::Key_Back);
    ASSERT_TRUE(settled(scene));
    EXPECT_EQ(count(scene, "depth"), 0);
}

TEST(NavigationStack, TheMousesBackButtonGoesBack)
{
    QmlScene scene(stack);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    QTest::mouseClick(&scene.window(), Qt::BackButton, {}, {200, 500});
    ASSERT_TRUE(settled(scene));
    EXPECT_EQ(count(scene, "depth"), 0);
}

TEST(NavigationStack, KeysDoNothingWhileTheStackIsHidden)
{
    QmlScene scene(stack);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    scene.root()->setVisible(false);
    QTest::keyClick(&scene.window(), Qt::Key_Escape);
    EXPECT_FALSE(scene.root()->property("moving").toBool());
    EXPECT_EQ(count(scene, "depth"), 1);
}

TEST(NavigationStack, GoingBackByKeyReturnsTheFocusToWhatHadIt)
{
    QmlScene scene(stack);
    QQuickItem *button = scene.item(QStringLiteral("rootButton"));
    QTest::keyClick(&scene.window(), Qt::Key_Tab);
    ASSERT_TRUE(button->hasActiveFocus());
    push(scene, "A");
    EXPECT_FALSE(button->hasActiveFocus());
    ASSERT_TRUE(settled(scene));
    QTest::keyClick(&scene.window(), Qt::Key_Tab);
    EXPECT_TRUE(scene.item(QStringLiteral("inner"))->hasActiveFocus());
    QTest::keyClick(&scene.window(), Qt::Key_Escape);
    ASSERT_TRUE(settled(scene));
    EXPECT_TRUE(button->hasActiveFocus());
    EXPECT_TRUE(button->property("visualFocus").toBool());
}

TEST(NavigationStack, GoingBackAsAPhoneDoesReturnsTheFocusUnseen)
{
    QmlScene scene(stack);
    QQuickItem *button = scene.item(QStringLiteral("rootButton"));
    button->forceActiveFocus(Qt::MouseFocusReason);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    QTest::keyClick(&scene.window(), Qt::Key_Back);
    ASSERT_TRUE(settled(scene));
    EXPECT_TRUE(button->hasActiveFocus());
    EXPECT_FALSE(button->property("visualFocus").toBool());
}

TEST(NavigationStack, PagesFollowTheWindowsSize)
{
    QmlScene scene(stack);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    scene.window().resize(844, 390);
    EXPECT_TRUE(eventually(
        [&] { return sceneRect(scene.item(QStringLiteral("A"))) == QRectF(0, 0, 844, 390); }));
}

} // namespace
} // namespace trellisport::test
