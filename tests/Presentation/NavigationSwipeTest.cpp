#include "NavigationStackScene.h"

#include <QPointingDevice>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace trellisport::test {
namespace {

void press(QmlScene &scene, QPoint at)
{
    QTest::mousePress(&scene.window(), Qt::LeftButton, {}, at);
}

/// Moves the pressed finger along the window in steps of ten points, slowly enough to be no flick.
void drag(QmlScene &scene, QPoint from, QPoint to)
{
    const int steps = std::max(std::abs(to.x() - from.x()), std::abs(to.y() - from.y())) / 10;
    for (int step = 1; step <= steps; ++step) {
        QTest::mouseMove(&scene.window(), from + (to - from) * step / steps, 20);
    }
}

TEST(NavigationStack, ASwipeFromTheLeadingEdgeFollowsTheFinger)
{
    QmlScene scene(stack);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    press(scene, {5, 400});
    drag(scene, {5, 400}, {105, 400});
    EXPECT_NEAR(left(scene, "A"), 100, 12);
    EXPECT_TRUE(scene.has(QStringLiteral("rootPage")));
    EXPECT_NEAR(left(scene, "rootPage"), -(390 - left(scene, "A")) / 3, 1);
    drag(scene, {105, 400}, {305, 400});
    QTest::mouseRelease(&scene.window(), Qt::LeftButton, {}, {305, 400});
    ASSERT_TRUE(settled(scene));
    EXPECT_EQ(count(scene, "depth"), 0);
    EXPECT_EQ(count(scene, "appearances"), 1);
}

TEST(NavigationStack, AFingerFromTheEdgeGoesBackEvenOverWhatScrollsSideways)
{
    QmlScene scene(stack);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
    QTest::touchEvent(&scene.window(), finger.get()).press(0, {8, 400});
    for (int x = 10; x <= 300; x += 10) {
        QTest::touchEvent(&scene.window(), finger.get()).move(0, {x, 400});
    }
    EXPECT_EQ(scene.item(QStringLiteral("sideways"))->property("contentX"), 0);
    QTest::touchEvent(&scene.window(), finger.get()).release(0, {300, 400});
    ASSERT_TRUE(settled(scene));
    EXPECT_EQ(count(scene, "depth"), 0);
}

TEST(NavigationStack, AShortSlowSwipeStaysAndTheUncoveredPageGoesAgain)
{
    QmlScene scene(stack);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    press(scene, {5, 400});
    drag(scene, {5, 400}, {85, 400});
    drag(scene, {85, 400}, {65, 400});
    QTest::mouseRelease(&scene.window(), Qt::LeftButton, {}, {65, 400});
    ASSERT_TRUE(settled(scene));
    EXPECT_EQ(count(scene, "depth"), 1);
    EXPECT_EQ(left(scene, "A"), 0);
    EXPECT_EQ(count(scene, "appearances"), 1);
    EXPECT_EQ(count(scene, "disappearances"), 2);
}

TEST(NavigationStack, ASwipeThatBeginsElsewhereDoesNotGoBack)
{
    QmlScene scene(stack);
    push(scene, "A");
    ASSERT_TRUE(settled(scene));
    press(scene, {100, 400});
    drag(scene, {100, 400}, {300, 400});
    QTest::mouseRelease(&scene.window(), Qt::LeftButton, {}, {300, 400});
    EXPECT_EQ(left(scene, "A"), 0);
    EXPECT_EQ(count(scene, "depth"), 1);
}

} // namespace
} // namespace trellisport::test
