#include "Platform/Linux/Desktop/ScreenKeyboard.h"

#include "BusSupport/FakeDesktop.h"
#include "BusSupport/PrivateBus.h"
#include "QmlSupport/QmlScene.h"

#include <QCoreApplication>
#include <QTest>

#include <gmock/gmock.h>

#include <vector>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const char *const fields = R"(
import QtQuick

Item {
    TextInput { objectName: "first"; width: 200; height: 40 }
    TextEdit { objectName: "second"; y: 100; width: 200; height: 40 }
    TextInput { objectName: "readOnly"; y: 200; width: 200; height: 40; readOnly: true }
    Item { objectName: "button"; y: 300; width: 200; height: 40 }
}
)";

class ScreenKeyboardTest : public ::testing::Test {
protected:
    QmlScene m_scene{QByteArray(fields)};
    std::vector<bool> m_wishes;
    bool m_toolkitAsks = false;
    platform::ScreenKeyboard m_keyboard{[this](bool isVisible) { m_wishes.push_back(isVisible); },
                                        [this] { return m_toolkitAsks; }};

    void focus(const char *name)
    {
        m_scene.item(QString::fromLatin1(name))->forceActiveFocus();
        QCoreApplication::processEvents();
    }
    void SetUp() override
    {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_scene.window()));
        QCoreApplication::processEvents();
        m_wishes.clear();
    }
};

TEST_F(ScreenKeyboardTest, ComesWithAFieldAndGoesWhenItIsLeft)
{
    focus("first");
    EXPECT_THAT(m_wishes, ElementsAre(true));
    focus("button");
    EXPECT_THAT(m_wishes, ElementsAre(true, false));
}

TEST_F(ScreenKeyboardTest, StaysFromOneFieldToTheNext)
{
    focus("first");
    focus("second");
    EXPECT_THAT(m_wishes, ElementsAre(true, true));
}

TEST_F(ScreenKeyboardTest, DoesNotComeWhereNothingCanBeTyped)
{
    focus("button");
    focus("readOnly");
    EXPECT_THAT(m_wishes, IsEmpty());
}

TEST_F(ScreenKeyboardTest, ATapOnTheFieldBringsItBack)
{
    m_scene.tap(m_scene.item(QStringLiteral("first")));
    QCoreApplication::processEvents();
    m_wishes.clear();
    m_scene.tap(m_scene.item(QStringLiteral("first")));
    EXPECT_THAT(m_wishes, ElementsAre(true));
    m_scene.tap(m_scene.item(QStringLiteral("button")));
    EXPECT_THAT(m_wishes, ElementsAre(true)) << "that was not on the field";
}

TEST_F(ScreenKeyboardTest, IsLeftToAToolkitThatAsksForItItself)
{
    m_toolkitAsks = true;
    focus("first");
    m_scene.tap(m_scene.item(QStringLiteral("first")));
    focus("button");
    EXPECT_THAT(m_wishes, IsEmpty());
}

TEST_F(ScreenKeyboardTest, TheToolkitHereHasNone)
{
    EXPECT_FALSE(platform::toolkitShowsKeyboard());
}

TEST(ShellKeyboard, IsShownAndPutAway)
{
    PrivateBus bus;
    FakeShellKeyboard keyboard(bus.connect());
    const QDBusConnection ours = bus.connect();
    platform::showShellKeyboard(ours, true);
    // Nobody was there; what is sent now comes later.
    keyboard.appear();
    platform::showShellKeyboard(ours, true);
    platform::showShellKeyboard(ours, false);
    EXPECT_TRUE(eventually([&] { return keyboard.calls().size() == 2; }));
    EXPECT_THAT(keyboard.calls(), ElementsAre(true, false));
}

} // namespace
} // namespace trellisport::test
