#include "Presentation/Colors.h"
#include "Presentation/LinkController.h"
#include "QmlSupport/QmlScene.h"
#include "Support/FakeLinkOpener.h"

#include <QAccessible>
#include <QTest>

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

using Addresses = std::vector<std::string>;

class LinkText : public ::testing::Test {
protected:
    LinkText()
        : m_links(m_opener)
        , m_scene(QStringLiteral("Presentation"), QStringLiteral("LinkText"),
                  {{QStringLiteral("text"), QStringLiteral("host")},
                   {QStringLiteral("url"), QStringLiteral("https://agent.example")},
                   {QStringLiteral("links"), QVariant::fromValue(&m_links)}},
                  {100, 60})
    {
    }

    FakeLinkOpener m_opener;
    LinkController m_links;
    QmlScene m_scene;
};

TEST_F(LinkText, IsACaptionInTheAccentColour)
{
    QQuickItem *label = m_scene.text(QStringLiteral("host"));
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(colorOf(label), colors::accent());
    EXPECT_EQ(fontOf(label).pixelSize(), 12);
}

TEST_F(LinkText, ATapOpensItsAddress)
{
    m_scene.tap(m_scene.root());
    EXPECT_EQ(m_opener.opened, Addresses{"https://agent.example"});
}

TEST_F(LinkText, KeysOpenItsAddress)
{
    QTest::keyClick(&m_scene.window(), Qt::Key_Tab);
    QTest::keyClick(&m_scene.window(), Qt::Key_Return);
    QTest::keyClick(&m_scene.window(), Qt::Key_Space);
    EXPECT_EQ(m_opener.opened.size(), 2U);
}

TEST_F(LinkText, IsALinkToAScreenReaderAndCanBePressed)
{
    QAccessibleInterface *link = QAccessible::queryAccessibleInterface(m_scene.root());
    ASSERT_NE(link, nullptr);
    EXPECT_EQ(link->role(), QAccessible::Link);
    EXPECT_EQ(link->text(QAccessible::Name), QStringLiteral("host"));
    ASSERT_NE(link->actionInterface(), nullptr);
    link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(m_opener.opened, Addresses{"https://agent.example"});
}

TEST(LinkController, TellsWhenNothingOpensTheAddress)
{
    FakeLinkOpener opener;
    opener.succeeds = false;
    LinkController links(opener);
    EXPECT_FALSE(links.open(QStringLiteral("https://agent.example/x?y=1")));
    EXPECT_EQ(opener.opened, Addresses{"https://agent.example/x?y=1"});
}

} // namespace
} // namespace trellisport::test
