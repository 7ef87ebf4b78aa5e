#include "QmlSupport/QmlScene.h"

#include <QCoreApplication>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace trellisport::test {
namespace {

const QByteArray longPage = R"(
import QtQuick
import TrellisportManager.Presentation

NavigationPage {
    title: "Dashboard"
    Component.onCompleted: SafeArea.bottom = 20
    Component.onDestruction: SafeArea.bottom = 0
    scrollArea: Flickable {
        objectName: "area"
        contentWidth: width
        contentHeight: 4000
    }
}
)";

const QByteArray longList = R"(
import QtQuick
import TrellisportManager.Presentation

CardList {
    objectName: "area"
    model: 100
    delegate: Item {
        width: 100
        height: 50
    }
}
)";

class ScrollMark : public ::testing::TestWithParam<const char *> {
protected:
    QmlScene scene{std::string_view(GetParam()) == "Page" ? longPage : longList};
    const std::unique_ptr<QPointingDevice> finger{QTest::createTouchDevice()};

    QQuickItem *area() const { return scene.item(QStringLiteral("area")); }
    QQuickItem *thumb() const { return scene.item(QStringLiteral("scrollThumb")); }
    double scrolled() const { return area()->property("contentY").toDouble(); }
    void SetUp() override { (void)scene.picture(); }
};

TEST_P(ScrollMark, ShowsItselfUnderThePointerAndGoesWithIt)
{
    EXPECT_EQ(thumb()->opacity(), 0);
    QTest::mouseMove(&scene.window(), {387, 300});
    EXPECT_TRUE(eventually([&] { return thumb()->opacity() == 1; }));
    EXPECT_EQ(thumb()->width(), 6);
    QTest::mouseMove(&scene.window(), {100, 300});
    EXPECT_TRUE(eventually([&] { return thumb()->opacity() == 0; }));
    EXPECT_EQ(thumb()->width(), 3);
}

TEST_P(ScrollMark, ThePointerDragsIt)
{
    const double before = scrolled();
    QTest::mouseMove(&scene.window(), {387, 60});
    ASSERT_TRUE(eventually([&] { return thumb()->opacity() == 1; }));
    const QPoint grip = sceneRect(thumb()).center().toPoint();
    QTest::mousePress(&scene.window(), Qt::LeftButton, Qt::NoModifier, grip);
    QTest::mouseMove(&scene.window(), grip + QPoint(0, 200));
    EXPECT_GT(scrolled(), before + 600);
    const QPoint end(grip.x(), 840);
    QTest::mouseMove(&scene.window(), end);
    EXPECT_TRUE(area()->property("atYEnd").toBool());
    QTest::mouseRelease(&scene.window(), Qt::LeftButton, Qt::NoModifier, end);
}

TEST_P(ScrollMark, AFingerAtTheEdgeScrollsTheContentAsAnywhere)
{
    const double before = scrolled();
    QTest::touchEvent(&scene.window(), finger.get()).press(0, {387, 400}, &scene.window());
    for (int y = 390; y >= 200; y -= 10) {
        QTest::touchEvent(&scene.window(), finger.get()).move(0, {387, y}, &scene.window());
    }
    // Where dragging begins is up to the toolkit.
    EXPECT_TRUE(eventually([&] { return scrolled() > before + 30; })) << "up, as the finger went";
    EXPECT_LT(scrolled(), before + 250);
    QTest::touchEvent(&scene.window(), finger.get()).release(0, {387, 200}, &scene.window());
}

TEST_P(ScrollMark, TheWheelScrolls)
{
    const double before = scrolled();
    QWheelEvent turn({200, 400}, scene.window().mapToGlobal(QPointF(200, 400)), {}, {0, -120},
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&scene.window(), &turn);
    EXPECT_TRUE(eventually([&] { return scrolled() > before + 20; }));
}

INSTANTIATE_TEST_SUITE_P(Areas, ScrollMark, ::testing::Values("Page", "List"),
                         [](const auto &tested) { return std::string(tested.param); });

TEST(ScrollMarkOfAPage, ReachesToThePagesFootWhereTheTabsKeepClearOfTheEdge)
{
    QmlScene scene(longPage);
    EXPECT_EQ(sceneRect(scene.item(QStringLiteral("scrollMark"))).bottom(), 844);
}

} // namespace
} // namespace trellisport::test
