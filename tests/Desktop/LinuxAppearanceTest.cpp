#include "Platform/Linux/Desktop/LinuxAppearance.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <optional>
#include <string>

namespace trellisport::test {
namespace {

class OneVariable : public platform::Environment {
public:
    [[nodiscard]] std::optional<std::string> variable(const std::string &name) const override
    {
        return name == "TRELLISPORT_TEXT_SCALE" ? value : std::nullopt;
    }

    std::optional<std::string> value;
};

class LinuxAppearanceTest : public ::testing::Test {
protected:
    OneVariable m_environment;
    platform::LinuxAppearance m_appearance{m_environment};
};

TEST_F(LinuxAppearanceTest, TextHasTheUsualSizeWhereNobodySaysOtherwise)
{
    EXPECT_EQ(m_appearance.textScale(), 1);
}

TEST_F(LinuxAppearanceTest, TextIsAsLargeAsTheDesktopSaysWithinTheLimits)
{
    m_appearance.setDesktopTextScale(1.5);
    EXPECT_EQ(m_appearance.textScale(), 1.5);
    m_appearance.setDesktopTextScale(3);
    EXPECT_EQ(m_appearance.textScale(), 2);
    m_appearance.setDesktopTextScale(0.5);
    EXPECT_EQ(m_appearance.textScale(), 0.8);
}

TEST_F(LinuxAppearanceTest, WhatIsNoSizeIsPassedOver)
{
    m_appearance.setDesktopTextScale(1.25);
    for (const double nonsense : {0.0, -1.0, std::numeric_limits<double>::infinity(),
                                  std::numeric_limits<double>::quiet_NaN()}) {
        m_appearance.setDesktopTextScale(nonsense);
        EXPECT_EQ(m_appearance.textScale(), 1.25) << nonsense;
    }
}

TEST_F(LinuxAppearanceTest, TheEnvironmentDecidesBeforeTheDesktop)
{
    m_appearance.setDesktopTextScale(1.5);
    m_environment.value = "1.3";
    EXPECT_EQ(m_appearance.textScale(), 1.3);
    m_environment.value = "9";
    EXPECT_EQ(m_appearance.textScale(), 2);
    for (const char *nonsense : {"", "large", "1.3x", "nan"}) {
        m_environment.value = nonsense;
        EXPECT_EQ(m_appearance.textScale(), 1.5) << nonsense;
    }
}

TEST_F(LinuxAppearanceTest, ObserversAreToldOfChangesAsLongAsTheyWantToBe)
{
    int first = 0;
    int second = 0;
    std::shared_ptr<void> leaving = m_appearance.observe([&] {
        ++first;
        leaving.reset();
    });
    const std::shared_ptr<void> staying = m_appearance.observe([&] { ++second; });
    m_appearance.setDesktopTextScale(1);
    EXPECT_EQ(first + second, 0) << "it was that before";
    m_appearance.setDesktopTextScale(1.5);
    m_appearance.setDesktopTextScale(2);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
}

} // namespace
} // namespace trellisport::test
