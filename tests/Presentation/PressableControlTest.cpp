#include "QmlSupport/QmlScene.h"

#include <QAccessible>
#include <QTest>

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

const QByteArray button = R"(
import QtQuick
import TrellisportManager.Presentation

Item {
    id: root

    property int clicks: 0

    PressableControl {
        objectName: "button"
        x: 100
        y: 100
        width: 20
        height: 20
        text: "Reload"
        onClicked: root.clicks += 1
    }
}
)";

int clicks(const QmlScene &scene)
{
    return scene.root()->property("clicks").toInt();
}

TEST(PressableControl, TakesAFingerWithinItsTouchTarget)
{
    QmlScene scene(button);
    QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, {90, 90});
    EXPECT_EQ(clicks(scene), 1);
    QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, {131, 131});
    EXPECT_EQ(clicks(scene), 2);
    QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, {85, 85});
    EXPECT_EQ(clicks(scene), 2);
}

TEST(PressableControl, OnlyTheMainButtonOfAMousePresses)
{
    QmlScene scene(button);
    for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton, Qt::BackButton}) {
        QTest::mouseClick(&scene.window(), other, {}, {110, 110});
    }
    EXPECT_EQ(clicks(scene), 0);
}

TEST(PressableControl, IsDimmedWhilePressed)
{
    QmlScene scene(button);
    QQuickItem *control = scene.item(QStringLiteral("button"));
    QTest::mousePress(&scene.window(), Qt::LeftButton, {}, {110, 110});
    EXPECT_EQ(control->opacity(), 0.5);
    QTest::mouseRelease(&scene.window(), Qt::LeftButton, {}, {110, 110});
    EXPECT_EQ(control->opacity(), 1);
}

TEST(PressableControl, IsReachedByTabAndPressedByKeys)
{
    QmlScene scene(button);
    QTest::keyClick(&scene.window(), Qt::Key_Tab);
    EXPECT_TRUE(scene.item(QStringLiteral("button"))->hasActiveFocus());
    QTest::keyClick(&scene.window(), Qt::Key_Space);
    EXPECT_EQ(clicks(scene), 1);
    QTest::keyClick(&scene.window(), Qt::Key_Return);
    EXPECT_EQ(clicks(scene), 2);
}

TEST(PressableControl, IsAButtonToAScreenReaderAndCanBePressed)
{
    QmlScene scene(button);
    QAccessibleInterface *accessible =
        QAccessible::queryAccessibleInterface(scene.item(QStringLiteral("button")));
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::Button);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Reload"));
    ASSERT_NE(accessible->actionInterface(), nullptr);
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks(scene), 1);
}

const QByteArray toggle = R"(
import QtQuick
import TrellisportManager.Presentation

Item {
    id: root

    property int clicks: 0
    property bool isOn: false

    PressableControl {
        objectName: "toggle"
        width: 80
        height: 44
        text: "Awarded"
        checkable: true
        checked: root.isOn
        onToggled: checked = Qt.binding(() => root.isOn)
        onClicked: {
            root.clicks += 1;
            root.isOn = !root.isOn;
        }
    }
}
)";

TEST(PressableControl, ThatIsCheckableIsPressedByBothActionsOfAScreenReader)
{
    const QmlScene scene(toggle);
    QAccessibleInterface *accessible =
        QAccessible::queryAccessibleInterface(scene.item(QStringLiteral("toggle")));
    ASSERT_NE(accessible, nullptr);
    EXPECT_TRUE(accessible->state().checkable);
    EXPECT_FALSE(accessible->state().checked);
    accessible->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(clicks(scene), 1);
    EXPECT_TRUE(accessible->state().checked);
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks(scene), 2);
    EXPECT_FALSE(accessible->state().checked);
}

} // namespace
} // namespace trellisport::test
