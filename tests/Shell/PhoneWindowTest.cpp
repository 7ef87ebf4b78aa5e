#include "Shell/SetupProblemApp.h"
#include "Shell/TrellisportManagerApp.h"
#include "Support/NotificationsBench.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

/// Runs on a phone's screen (phone_screen.json), where a title bar would take room and lead
/// nowhere.
class PhoneWindow : public ::testing::Test {
protected:
    PhoneWindow() { qputenv("TRELLISPORT_BASE_URL", "https://127.0.0.1:1/api/v1"); }
    void SetUp() override { ASSERT_EQ(QGuiApplication::primaryScreen()->size(), QSize(360, 720)); }
    static void expectOneWithoutFrame()
    {
        QWindowList windows = QGuiApplication::topLevelWindows();
        windows.removeIf([](const QWindow *window) { return !window->isVisible(); });
        ASSERT_EQ(windows.size(), 1);
        EXPECT_TRUE(windows.first()->flags().testFlag(Qt::FramelessWindowHint));
    }
};

TEST_F(PhoneWindow, TheConsolesHasNoFrame)
{
    NotificationsBench bench;
    TrellisportManagerApp app(bench.manager);
    ASSERT_TRUE(app.showWindow());
    expectOneWithoutFrame();
}

TEST_F(PhoneWindow, TheOneThatTellsAProblemHasNoFrame)
{
    SetupProblemApp app("So and so.");
    ASSERT_TRUE(app.showWindow());
    expectOneWithoutFrame();
}

} // namespace
} // namespace trellisport::test
