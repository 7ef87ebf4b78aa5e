#include "Platform/Linux/Desktop/LinuxAppearance.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <gmock/gmock.h>

#include <optional>
#include <string>

namespace trellisport::test {
namespace {

class NoVariables : public platform::Environment {
public:
    [[nodiscard]] std::optional<std::string> variable(const std::string & /*name*/) const override
    {
        return std::nullopt;
    }
};

/// On an X11 display of 144 dots an inch, which is what a desktop makes of text at 150 %.
TEST(X11TextSize, AllOfTheWindowIsLargerAndTextInItNotOnceMore)
{
    ASSERT_EQ(QGuiApplication::platformName(), u"xcb");
    ASSERT_EQ(QGuiApplication::primaryScreen()->size() * 1.5, QSize(1200, 900));
    QWindow window;
    window.create();
    EXPECT_EQ(window.devicePixelRatio(), 1.5);
    const NoVariables environment;
    platform::LinuxAppearance appearance{environment};
    EXPECT_EQ(appearance.textScale(), 1);
    // The portal tells of the same setting.
    appearance.setDesktopTextScale(1.5);
    EXPECT_EQ(appearance.textScale(), 1);
}

} // namespace
} // namespace trellisport::test

int main(int argc, char *argv[])
{
    ::testing::InitGoogleMock(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
