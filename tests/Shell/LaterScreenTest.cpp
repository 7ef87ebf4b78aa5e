#include "QmlSupport/QmlScene.h"
#include "Support/Waiting.h"

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

// Some file of the application's stands for a screen.
const char *const sceneWithLaterScreen = R"(
import QtQuick
import TrellisportManager.Shell

Item {
    property alias isShown: frame.visible

    Item {
        id: frame

        visible: false
        anchors.fill: parent

        LaterScreen {
            objectName: "later"
            anchors.fill: parent
            screen: "qrc:/qt/qml/TrellisportManager/Presentation/EmptyText.qml"
            properties: ({ objectName: "screen", text: "Nothing here" })
        }
    }
}
)";

class LaterScreenTest : public ::testing::Test {
protected:
    QmlScene scene{QByteArray(sceneWithLaterScreen)};

    bool isMade() const { return !scene.items(QStringLiteral("screen")).isEmpty(); }
};

TEST_F(LaterScreenTest, IsNotMadeAtOnce)
{
    EXPECT_FALSE(isMade());
}

TEST_F(LaterScreenTest, IsThereAsSoonAsItIsShown)
{
    scene.root()->setProperty("isShown", true);
    ASSERT_TRUE(isMade());
    EXPECT_EQ(scene.texts(), QStringList{QStringLiteral("Nothing here")});
}

TEST_F(LaterScreenTest, IsMadeUnseenInAWhileAndNotAgainWhenShown)
{
    ASSERT_TRUE(waitUntil([&] { return isMade(); }));
    const QList<QQuickItem *> made = scene.items(QStringLiteral("screen"));
    scene.root()->setProperty("isShown", true);
    EXPECT_EQ(scene.items(QStringLiteral("screen")), made);
}

TEST_F(LaterScreenTest, IsMadeWithItsPropertiesWhenShownWhileItIsBeingMade)
{
    QMetaObject::invokeMethod(scene.item(QStringLiteral("later")), "makeUnseen");
    scene.root()->setProperty("isShown", true);
    ASSERT_TRUE(waitUntil([&] { return isMade(); }));
    EXPECT_EQ(scene.texts(), QStringList{QStringLiteral("Nothing here")});
}

} // namespace
} // namespace trellisport::test
