#include "QmlSupport/QmlScene.h"

#include <QQmlProperty>
#include <QTest>

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

const QByteArray form = R"(
import QtQuick
import TrellisportManager.Presentation

Item {
    id: root

    Flickable {
        id: area

        objectName: "area"
        anchors.fill: parent
        topMargin: 96
        bottomMargin: avoidance.coveredBelow
        contentWidth: width
        contentHeight: 800

        TextInput {
            objectName: "upper"
            y: 10
            width: 300
            height: 44
        }
        TextInput {
            objectName: "lower"
            y: 700
            width: 300
            height: 44
        }
        KeptInView {
            objectName: "form"
            y: 400
            width: 300
            height: 160

            KeptInView {
                objectName: "shown"
                width: 300
                height: 100
                clip: true

                TextEdit {
                    objectName: "inner"
                    y: -200
                    width: 300
                    height: 300
                    text: "\n\n\n\n\n\n\n\n\n\n\n\n\n\nend"
                }
            }
            Rectangle {
                objectName: "button"
                y: 116
                width: 300
                height: 44
            }
        }
        TextEdit {
            objectName: "tall"
            y: 100
            width: 300
            height: 600
            text: "first\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\nlast"
        }
    }
    TextInput {
        objectName: "outside"
        width: 300
        height: 44
    }
    KeyboardAvoidance {
        id: avoidance

        objectName: "avoidance"
        scrollArea: area
        coveredAbove: 44
    }
}
)";

void showKeyboard(const QmlScene &scene, const QRectF &place)
{
    scene.item(QStringLiteral("avoidance"))->setProperty("keyboard", place);
}

bool isInView(const QmlScene &scene, const char *name, double top, double bottom)
{
    const QRectF place = sceneRect(scene.item(QString::fromLatin1(name)));
    return place.top() >= top && place.bottom() <= bottom;
}

double scrolled(const QmlScene &scene)
{
    return scene.item(QStringLiteral("area"))->property("contentY").toDouble();
}

TEST(KeyboardAvoidance, AFieldBehindTheKeyboardIsScrolledAboveIt)
{
    QmlScene scene(form);
    scene.item(QStringLiteral("lower"))->forceActiveFocus();
    showKeyboard(scene, {0, 544, 390, 300});
    EXPECT_TRUE(eventually([&] { return isInView(scene, "lower", 44, 544); }));
}

TEST(KeyboardAvoidance, AFieldInViewStaysWhereItIs)
{
    QmlScene scene(form);
    const double before = scrolled(scene);
    scene.item(QStringLiteral("upper"))->forceActiveFocus();
    showKeyboard(scene, {0, 544, 390, 300});
    QTest::qWait(50);
    EXPECT_EQ(scrolled(scene), before);
}

TEST(KeyboardAvoidance, AFieldReachedByTabIsScrolledIntoView)
{
    QmlScene scene(form, {390, 400});
    scene.item(QStringLiteral("lower"))->forceActiveFocus();
    EXPECT_TRUE(eventually([&] { return isInView(scene, "lower", 44, 400); }));
    scene.item(QStringLiteral("upper"))->forceActiveFocus();
    EXPECT_TRUE(eventually([&] { return isInView(scene, "upper", 44, 400); }));
}

TEST(KeyboardAvoidance, AWindowThatShrinksForTheKeyboardKeepsTheFieldInView)
{
    QmlScene scene(form);
    scene.item(QStringLiteral("lower"))->forceActiveFocus();
    EXPECT_TRUE(eventually([&] { return isInView(scene, "lower", 44, 844); }));
    scene.window().resize(390, 438);
    EXPECT_TRUE(eventually([&] { return isInView(scene, "lower", 44, 438); }));
}

TEST(KeyboardAvoidance, AFieldTallerThanTheRoomShowsItsCursor)
{
    QmlScene scene(form);
    QQuickItem *tall = scene.item(QStringLiteral("tall"));
    tall->forceActiveFocus();
    tall->setProperty("cursorPosition", textOf(tall).size());
    showKeyboard(scene, {0, 444, 390, 400});
    EXPECT_TRUE(eventually([&] {
        const QRectF cursor = tall->property("cursorRectangle").toRectF();
        const QRectF place = tall->mapRectToScene(cursor);
        return place.top() >= 44 && place.bottom() <= 444;
    }));
}

TEST(KeyboardAvoidance, WhatBelongsToTheFieldStaysInViewWithIt)
{
    QmlScene scene(form);
    scene.item(QStringLiteral("inner"))->forceActiveFocus();
    showKeyboard(scene, {0, 344, 390, 500});
    EXPECT_TRUE(eventually([&] { return isInView(scene, "form", 44, 344); }));
    EXPECT_TRUE(isInView(scene, "button", 44, 344));
}

TEST(KeyboardAvoidance, OfAFormTooHighForTheRoomTheFieldIsSeen)
{
    QmlScene scene(form);
    scene.item(QStringLiteral("inner"))->forceActiveFocus();
    showKeyboard(scene, {0, 184, 390, 660});
    EXPECT_TRUE(eventually([&] { return isInView(scene, "shown", 44, 184); }));
}

TEST(KeyboardAvoidance, OfAFieldTooHighForTheRoomTheCursorIsSeen)
{
    QmlScene scene(form);
    QQuickItem *inner = scene.item(QStringLiteral("inner"));
    inner->forceActiveFocus();
    inner->setProperty("cursorPosition", textOf(inner).size());
    showKeyboard(scene, {0, 124, 390, 720});
    EXPECT_TRUE(eventually([&] {
        const QRectF place = inner->mapRectToScene(inner->property("cursorRectangle").toRectF());
        return place.top() >= 44 && place.bottom() <= 124;
    }));
}

TEST(KeyboardAvoidance, AFieldOutsideTheScrollAreaScrollsNothing)
{
    QmlScene scene(form);
    const double before = scrolled(scene);
    scene.item(QStringLiteral("outside"))->forceActiveFocus();
    showKeyboard(scene, {0, 44, 390, 800});
    QTest::qWait(50);
    EXPECT_EQ(scrolled(scene), before);
}

TEST(KeyboardAvoidance, ALowKeyboardCoversNothing)
{
    QmlScene scene(form);
    showKeyboard(scene, {0, 844, 390, 300});
    EXPECT_EQ(scene.item(QStringLiteral("avoidance"))->property("coveredBelow"), 0);
    showKeyboard(scene, {0, 800, 390, 300});
    EXPECT_EQ(scene.item(QStringLiteral("avoidance"))->property("coveredBelow"), 44);
}

} // namespace
} // namespace trellisport::test
