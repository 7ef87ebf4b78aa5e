#include "Presentation/Colors.h"
#include "QmlSupport/QmlScene.h"

#include <QTest>

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

const QByteArray group = R"(
import QtQuick
import TrellisportManager.Presentation

Item {
    id: root

    property int presses: 0

    ListGroup {
        objectName: "group"
        x: 16
        y: 100
        width: 358
        header: "Bid Limits"

        ValueRow {
            objectName: "upper"
            width: parent.width
            label: "Server"
            value: "somewhere"
        }
        ListRow {
            objectName: "middle"
            width: parent.width
            contentItem: Item {}
        }
        PressableRow {
            objectName: "lower"
            width: parent.width
            groundColor: Colors.accent
            text: "Save"
            contentItem: StyledText {
                text: "Save"
            }
            onClicked: root.presses += 1
        }
    }
    SpinnerRow {
        objectName: "alone"
        y: 600
        width: parent.width
    }
}
)";

TEST(ListGroup, ItsHeaderIsAGrayFootnoteInCapitalsInsetAsTheRows)
{
    QmlScene scene(group);
    QQuickItem *header = scene.text(QStringLiteral("Bid Limits"));
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(fontOf(header).pixelSize(), 13);
    EXPECT_EQ(fontOf(header).capitalization(), QFont::AllUppercase);
    EXPECT_EQ(colorOf(header), colors::gray());
    EXPECT_EQ(sceneRect(header).x(), 32);
}

TEST(ListGroup, RowsFollowEachOtherAtFortyFourOrMore)
{
    QmlScene scene(group);
    const QRectF upper = sceneRect(scene.item(QStringLiteral("upper")));
    const QRectF middle = sceneRect(scene.item(QStringLiteral("middle")));
    const QRectF lower = sceneRect(scene.item(QStringLiteral("lower")));
    EXPECT_EQ(upper.height(), 44);
    EXPECT_EQ(middle.height(), 44);
    EXPECT_EQ(middle.top(), upper.bottom());
    EXPECT_EQ(lower.top(), middle.bottom());
}

TEST(ListGroup, OnlyTheOuterCornersAreRoundedByTen)
{
    QmlScene scene(group);
    const QRectF upper = sceneRect(scene.item(QStringLiteral("upper")));
    const QRectF lower = sceneRect(scene.item(QStringLiteral("lower")));
    const QColor ground = colors::surface();
    const QPointF inward(2, 2);
    const QImage picture = scene.picture();
    const auto at = [&](QPointF place) { return picture.pixelColor(place.toPoint()); };
    EXPECT_NE(at(upper.topLeft()), ground);
    EXPECT_EQ(at(upper.topLeft() + QPointF(10, 1)), ground);
    EXPECT_EQ(at(upper.bottomLeft() + QPointF(0, -2)), ground);
    EXPECT_EQ(at(upper.bottomRight() + QPointF(-1, -2)), ground);
    EXPECT_EQ(at(lower.topLeft()), colors::accent());
    EXPECT_NE(at(lower.bottomLeft() + QPointF(0, -1)), colors::accent());
    for (QQuickItem *box :
         scene.items(QStringLiteral("ground"), scene.item(QStringLiteral("upper")))) {
        EXPECT_EQ(box->property("radius"), 10);
    }
}

TEST(ListGroup, AHairlineInsetAtTheLeadingEdgePartsTheRowsAndNoneFollowsTheLast)
{
    QmlScene scene(group);
    QQuickItem *upper = scene.item(QStringLiteral("upper"));
    QQuickItem *line = scene.item(QStringLiteral("rowSeparator"), upper);
    ASSERT_NE(line, nullptr);
    EXPECT_TRUE(line->isVisible());
    EXPECT_EQ(colorOf(line), colors::separator());
    EXPECT_EQ(sceneRect(line).x(), sceneRect(upper).x() + 16);
    EXPECT_EQ(sceneRect(line).bottom(), sceneRect(upper).bottom());
    EXPECT_EQ(sceneRect(line).height(), 1 / scene.window().devicePixelRatio());
    QQuickItem *last = scene.item(QStringLiteral("lower"));
    EXPECT_FALSE(scene.item(QStringLiteral("rowSeparator"), last)->isVisible());
}

TEST(ListGroup, AGroupWithoutAHeaderBeginsWithItsRows)
{
    QmlScene scene(group);
    QQuickItem *list = scene.item(QStringLiteral("group"));
    EXPECT_GT(sceneRect(scene.item(QStringLiteral("upper"))).y(), sceneRect(list).y());
    list->setProperty("header", QString());
    EXPECT_TRUE(eventually(
        [&] { return sceneRect(scene.item(QStringLiteral("upper"))).y() == sceneRect(list).y(); }));
}

TEST(ValueRow, NamesTheThingAtTheLeadingAndTellsItsValueAtTheTrailingEdge)
{
    QmlScene scene(group);
    QQuickItem *row = scene.item(QStringLiteral("upper"));
    QQuickItem *label = scene.text(QStringLiteral("Server"));
    QQuickItem *value = scene.text(QStringLiteral("somewhere"));
    ASSERT_TRUE(label && value);
    EXPECT_EQ(sceneRect(label).x(), 32);
    EXPECT_EQ(sceneRect(value).right(), 390 - 32);
    EXPECT_EQ(sceneRect(label).center().y(), sceneRect(row).center().y());
    EXPECT_EQ(colorOf(label), colors::white());
    EXPECT_EQ(colorOf(value), colors::gray());
}

TEST(ValueRow, AnEndlessValueIsShortenedAndLeavesTheLabelWhole)
{
    QmlScene scene(group);
    scene.item(QStringLiteral("upper"))->setProperty("value", QString(300, QLatin1Char('w')));
    QQuickItem *label = scene.item(QStringLiteral("rowLabel"));
    QQuickItem *value = scene.item(QStringLiteral("rowValue"));
    EXPECT_TRUE(eventually([&] { return sceneRect(value).right() == 390 - 32; }));
    EXPECT_TRUE(value->property("truncated").toBool());
    EXPECT_GE(label->width(), label->implicitWidth());
    EXPECT_GE(sceneRect(value).left(), sceneRect(label).right());
}

TEST(PressableRow, IsPressedAnywhereAndDimmedAtOnce)
{
    QmlScene scene(group);
    QQuickItem *row = scene.item(QStringLiteral("lower"));
    const QPoint corner = sceneRect(row).bottomRight().toPoint() - QPoint(20, 4);
    QTest::mousePress(&scene.window(), Qt::LeftButton, {}, corner);
    EXPECT_EQ(scene.text(QStringLiteral("Save"))->opacity(), 0.5);
    const QColor dimmed = scene.colorAt(corner);
    EXPECT_LT(dimmed.lightness(), colors::accent().lightness());
    QTest::mouseRelease(&scene.window(), Qt::LeftButton, {}, corner);
    EXPECT_EQ(scene.root()->property("presses"), 1);
    EXPECT_EQ(scene.colorAt(corner), colors::accent());
}

TEST(SpinnerRow, ShowsASpinnerInTheMiddleOnThePagesOwnColour)
{
    QmlScene scene(group);
    QQuickItem *row = scene.item(QStringLiteral("alone"));
    QQuickItem *spinner = scene.item(QStringLiteral("spinner"));
    EXPECT_EQ(sceneRect(spinner).center(), sceneRect(row).center());
    EXPECT_EQ(spinner->width(), 20);
    EXPECT_EQ(colorOf(scene.item(QStringLiteral("ground"), row)), colors::background());
}

} // namespace
} // namespace trellisport::test
