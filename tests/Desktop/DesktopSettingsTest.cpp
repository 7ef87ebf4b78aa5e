#include "Platform/Linux/Desktop/DesktopSettings.h"

#include "BusSupport/FakeDesktop.h"
#include "BusSupport/PrivateBus.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <vector>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

const QString group = QStringLiteral("org.gnome.desktop.interface");
const QString key = QStringLiteral("text-scaling-factor");

class DesktopSettingsTest : public ::testing::Test {
protected:
    PrivateBus m_bus;
    FakeSettingsPortal m_portal{m_bus.connect()};
    std::vector<double> m_told;

    platform::DesktopSettings follow()
    {
        return {m_bus.connect(), [this](double scale) { m_told.push_back(scale); }};
    }
};

TEST_F(DesktopSettingsTest, TellsTheTextScaleThatTheDesktopHasAtFirst)
{
    m_portal.textScale = 1.25;
    m_portal.appear();
    const platform::DesktopSettings settings = follow();
    EXPECT_TRUE(waitUntil([&] { return !m_told.empty(); }));
    EXPECT_THAT(m_told, ElementsAre(1.25));
}

TEST_F(DesktopSettingsTest, TellsEveryLaterChangeOfThatAndOfNothingElse)
{
    m_portal.textScale = 1.0;
    m_portal.appear();
    const platform::DesktopSettings settings = follow();
    ASSERT_TRUE(waitUntil([&] { return m_told.size() == 1; }));
    m_portal.change(group, QStringLiteral("cursor-size"), 2.0);
    m_portal.change(QStringLiteral("another.group"), key, 3.0);
    m_portal.change(group, key, QStringLiteral("large"));
    m_portal.change(group, key, 1.5);
    EXPECT_TRUE(waitUntil([&] { return m_told.size() == 2; }));
    EXPECT_THAT(m_told, ElementsAre(1.0, 1.5));
}

TEST_F(DesktopSettingsTest, SaysNothingWhereThePortalDoesNotKnow)
{
    m_portal.appear();
    const platform::DesktopSettings settings = follow();
    ASSERT_TRUE(waitUntil([&] { return m_portal.questions() == 1; }));
    m_portal.change(group, key, 0.8);
    EXPECT_TRUE(waitUntil([&] { return !m_told.empty(); }));
    EXPECT_THAT(m_told, ElementsAre(0.8)) << "the refusal came before this and was no answer";
}

TEST_F(DesktopSettingsTest, FollowsAPortalThatIsNotThereYet)
{
    const platform::DesktopSettings settings = follow();
    m_portal.appear();
    // What comes right with a name is not known to be that name's.
    EXPECT_TRUE(waitUntil([&] {
        m_portal.change(group, key, 1.3);
        return !m_told.empty();
    }));
    EXPECT_EQ(m_told.front(), 1.3);
}

} // namespace
} // namespace trellisport::test
