#include "Platform/Linux/Session/Display.h"

#include <QDir>
#include <QLocalServer>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <map>

namespace trellisport::platform {
namespace {

/// Puts back what it found.
class DisplayTest : public ::testing::Test {
protected:
    DisplayTest()
    {
        for (const char *name :
             {"DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR", "QT_QPA_PLATFORM", "XAUTHORITY"}) {
            m_before[name] = qgetenv(name);
            qunsetenv(name);
        }
        qputenv("XDG_RUNTIME_DIR", m_runtime.path().toUtf8());
    }
    void TearDown() override
    {
        for (const auto &[name, value] : m_before) {
            if (value.isNull()) {
                qunsetenv(name);
            } else {
                qputenv(name, value);
            }
        }
    }
    void listen(const QString &name) { ASSERT_TRUE(m_server.listen(m_runtime.filePath(name))); }

    QTemporaryDir m_runtime;
    QLocalServer m_server;
    std::map<const char *, QByteArray> m_before;
};

TEST_F(DisplayTest, WithoutAnyItIsNotReachable)
{
    EXPECT_FALSE(displayIsReachable());
}

TEST_F(DisplayTest, ACompositorThatListensIsReachable)
{
    qputenv("WAYLAND_DISPLAY", "wayland-7");
    EXPECT_FALSE(displayIsReachable());
    listen(QStringLiteral("wayland-7"));
    EXPECT_TRUE(displayIsReachable());
    qputenv("WAYLAND_DISPLAY", m_runtime.filePath(QStringLiteral("wayland-7")).toUtf8());
    EXPECT_TRUE(displayIsReachable());
}

TEST_F(DisplayTest, AnXServerThatDoesNotListenIsNotReachable)
{
    qputenv("DISPLAY", ":9876");
    EXPECT_FALSE(displayIsReachable());
    qputenv("DISPLAY", "nonsense");
    EXPECT_FALSE(displayIsReachable());
}

TEST_F(DisplayTest, ToolkitsThatNeedNoDisplayAreReachable)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    EXPECT_TRUE(displayIsReachable());
    qputenv("QT_QPA_PLATFORM", "wayland-egl;xcb");
    EXPECT_FALSE(displayIsReachable());
}

TEST_F(DisplayTest, TheSessionsOwnEnvironmentIsAdopted)
{
    listen(QStringLiteral("compositor"));
    adoptDisplay({QStringLiteral("HOME=/nowhere"), QStringLiteral("WAYLAND_DISPLAY=compositor")});
    EXPECT_EQ(qgetenv("WAYLAND_DISPLAY"), QByteArray("compositor"));
    EXPECT_NE(qgetenv("HOME"), QByteArray("/nowhere"));
    EXPECT_TRUE(displayIsReachable());
}

TEST_F(DisplayTest, WhenTheSessionTellsNothingTheCompositorInItsUsualPlaceIsFound)
{
    listen(QStringLiteral("wayland-0"));
    adoptDisplay({});
    EXPECT_TRUE(displayIsReachable());
}

TEST_F(DisplayTest, ACompositorAloneIsPreferredAndATellingEnvironmentIsKept)
{
    preferReachableDisplay();
    EXPECT_FALSE(qEnvironmentVariableIsSet("QT_QPA_PLATFORM"));
    listen(QStringLiteral("wayland-0"));
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    preferReachableDisplay();
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), QByteArray("wayland"));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    preferReachableDisplay();
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), QByteArray("offscreen"));
}

} // namespace
} // namespace trellisport::platform
