#include "Presentation/Colors.h"
#include "QmlSupport/QmlScene.h"

#include <QAccessible>
#include <QTest>

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

const QByteArray fields = R"(
import QtQuick
import TrellisportManager.Presentation

Item {
    id: root

    property int toggles: 0
    property int clears: 0

    SearchField {
        objectName: "search"
        x: 16
        y: 100
        width: 358
        placeholderText: "Search projects"
        onCleared: root.clears += 1
    }
    RowField {
        objectName: "field"
        x: 200
        y: 200
        width: 60
        label: "Max Daily Bids"
        placeholderText: "10"
        inputMethodHints: Qt.ImhDigitsOnly
    }
    SwitchControl {
        objectName: "switch"
        x: 100
        y: 300
        Accessible.name: "Preview Mode"
        onToggled: root.toggles += 1
    }
}
)";

void type(QmlScene &scene, const char *text)
{
    for (const char *letter = text; *letter != 0; ++letter) {
        QTest::keyClick(&scene.window(), *letter);
    }
}

QAccessibleInterface *accessible(const QmlScene &scene, const char *name)
{
    return QAccessible::queryAccessibleInterface(scene.item(QString::fromLatin1(name)));
}

TEST(SearchField, ShowsAMagnifierAndThePromptOnARoundedGround)
{
    QmlScene scene(fields);
    QQuickItem *field = scene.item(QStringLiteral("search"));
    QQuickItem *prompt = scene.text(QStringLiteral("Search projects"));
    ASSERT_NE(prompt, nullptr);
    EXPECT_EQ(field->height(), 36);
    EXPECT_EQ(colorOf(prompt), colors::placeholderText());
    EXPECT_EQ(scene.item(QStringLiteral("searchGround"))->property("radius"), 10);
    EXPECT_EQ(colorOf(scene.item(QStringLiteral("searchGround"))), colors::fieldFill());
    EXPECT_LT(sceneRect(scene.item(QStringLiteral("magnifier"))).right(), sceneRect(prompt).left());
    EXPECT_FALSE(scene.has(QStringLiteral("clearButton")));
}

TEST(SearchField, ThePromptGivesWayToTheText)
{
    QmlScene scene(fields);
    scene.tap(scene.item(QStringLiteral("search")));
    type(scene, "api");
    EXPECT_EQ(textOf(scene.item(QStringLiteral("search"))), QStringLiteral("api"));
    EXPECT_FALSE(scene.texts().contains(QStringLiteral("Search projects")));
    EXPECT_TRUE(scene.has(QStringLiteral("clearButton")));
}

TEST(SearchField, TheCrossClearsItAndKeepsTheKeyboardThere)
{
    QmlScene scene(fields);
    scene.tap(scene.item(QStringLiteral("search")));
    type(scene, "api");
    scene.tap(scene.item(QStringLiteral("clearButton")));
    EXPECT_EQ(textOf(scene.item(QStringLiteral("search"))), QString());
    EXPECT_EQ(scene.root()->property("clears"), 1);
    EXPECT_TRUE(scene.item(QStringLiteral("search"))->hasActiveFocus());
}

TEST(SearchField, EscapeClearsIt)
{
    QmlScene scene(fields);
    scene.tap(scene.item(QStringLiteral("search")));
    type(scene, "api");
    QTest::keyClick(&scene.window(), Qt::Key_Escape);
    EXPECT_EQ(textOf(scene.item(QStringLiteral("search"))), QString());
    EXPECT_EQ(scene.root()->property("clears"), 1);
}

TEST(SearchField, TakesAFingerBeyondItsEdges)
{
    QmlScene scene(fields);
    QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, {200, 138});
    EXPECT_TRUE(scene.item(QStringLiteral("search"))->hasActiveFocus());
}

TEST(SearchField, HasItsPromptAsItsNameForAScreenReader)
{
    QmlScene scene(fields);
    QAccessibleInterface *field = accessible(scene, "search");
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->role(), QAccessible::EditableText);
    EXPECT_EQ(field->text(QAccessible::Name), QStringLiteral("Search projects"));
    EXPECT_EQ(accessible(scene, "clearButton")->text(QAccessible::Name),
              QStringLiteral("Clear text"));
}

TEST(RowField, ShowsItsPlaceholderAndTextAtTheTrailingEdge)
{
    QmlScene scene(fields);
    QQuickItem *field = scene.item(QStringLiteral("field"));
    QQuickItem *placeholder = scene.text(QStringLiteral("10"));
    ASSERT_NE(placeholder, nullptr);
    EXPECT_EQ(colorOf(placeholder), colors::placeholderText());
    EXPECT_EQ(placeholder->property("effectiveHorizontalAlignment").toInt(), Qt::AlignRight);
    EXPECT_EQ(sceneRect(placeholder).right(), 260);

    scene.tap(field);
    type(scene, "25");
    EXPECT_EQ(textOf(field), QStringLiteral("25"));
    EXPECT_FALSE(scene.texts().contains(QStringLiteral("10")));
    EXPECT_EQ(field->property("effectiveHorizontalAlignment").toInt(), Qt::AlignRight);
    EXPECT_EQ(fontOf(field).pixelSize(), 17);
}

TEST(RowField, IsNamedByItsRowsLabel)
{
    QmlScene scene(fields);
    QAccessibleInterface *field = accessible(scene, "field");
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->text(QAccessible::Name), QStringLiteral("Max Daily Bids"));
}

TEST(SwitchControl, IsAsLargeAsASwitchAndTurnsWhenTapped)
{
    QmlScene scene(fields);
    QQuickItem *control = scene.item(QStringLiteral("switch"));
    EXPECT_EQ(control->size(), QSizeF(51, 31));
    scene.tap(control);
    EXPECT_TRUE(control->property("checked").toBool());
    EXPECT_EQ(scene.root()->property("toggles"), 1);
    EXPECT_TRUE(eventually([&] {
        return colorOf(scene.item(QStringLiteral("track"))) == colors::accent() &&
               scene.item(QStringLiteral("thumb"))->x() == 22;
    }));
}

TEST(SwitchControl, TakesAFingerWithinItsTouchTarget)
{
    QmlScene scene(fields);
    QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, {120, 335});
    EXPECT_EQ(scene.root()->property("toggles"), 1);
}

TEST(SwitchControl, TurnsByKeysAndByAScreenReader)
{
    QmlScene scene(fields);
    scene.item(QStringLiteral("switch"))->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&scene.window(), Qt::Key_Space);
    EXPECT_EQ(scene.root()->property("toggles"), 1);
    QTest::keyClick(&scene.window(), Qt::Key_Return);
    EXPECT_EQ(scene.root()->property("toggles"), 2);
    QAccessibleInterface *control = accessible(scene, "switch");
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(control->text(QAccessible::Name), QStringLiteral("Preview Mode"));
    control->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(scene.root()->property("toggles"), 3);
    EXPECT_TRUE(scene.item(QStringLiteral("switch"))->property("checked").toBool());
}

TEST(Fields, TabWalksThroughThemInOrder)
{
    QmlScene scene(fields);
    for (const char *name : {"search", "field", "switch"}) {
        QTest::keyClick(&scene.window(), Qt::Key_Tab);
        EXPECT_TRUE(scene.item(QString::fromLatin1(name))->hasActiveFocus()) << name;
        EXPECT_TRUE(scene.item(QString::fromLatin1(name))->property("visualFocus").toBool())
            << name;
    }
    QTest::keyClick(&scene.window(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(scene.item(QStringLiteral("field"))->hasActiveFocus());
}

} // namespace
} // namespace trellisport::test
