#include "QmlSupport/QmlScene.h"

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

const QByteArray holder = R"(
pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation

Item {
    id: root

    property int which: 0
    property int made: 0
    property int seenGone: 0

    ItemHolder {
        objectName: "holder"
        component: [null, one, two][root.which]
    }

    Component {
        id: one

        Item {
            objectName: "one"
            implicitWidth: 40
            implicitHeight: 30
            Component.onCompleted: ++root.made
            onVisibleChanged: ++root.seenGone
        }
    }
    Component {
        id: two

        Item {
            objectName: "two"
            implicitHeight: 70
        }
    }
}
)";

TEST(ItemHolder, HasTheSizeOfWhatItHolds)
{
    QmlScene scene(holder);
    QQuickItem *place = scene.item(QStringLiteral("holder"));
    EXPECT_EQ(place->size(), QSizeF(0, 0));
    scene.root()->setProperty("which", 1);
    EXPECT_EQ(place->size(), QSizeF(40, 30));
    place->setWidth(100);
    EXPECT_EQ(scene.item(QStringLiteral("one"))->size(), QSizeF(100, 30));
}

TEST(ItemHolder, AnotherComponentReplacesTheItemAtOnce)
{
    QmlScene scene(holder);
    scene.root()->setProperty("which", 1);
    scene.root()->setProperty("which", 2);
    EXPECT_EQ(scene.root()->property("seenGone"), 1);
    EXPECT_FALSE(scene.has(QStringLiteral("one")));
    EXPECT_TRUE(scene.has(QStringLiteral("two")));
    EXPECT_TRUE(eventually([&] { return scene.items(QStringLiteral("one")).isEmpty(); }));
    scene.root()->setProperty("which", 1);
    EXPECT_EQ(scene.root()->property("made"), 2);
    scene.root()->setProperty("which", 0);
    EXPECT_FALSE(scene.has(QStringLiteral("one")));
}

} // namespace
} // namespace trellisport::test
