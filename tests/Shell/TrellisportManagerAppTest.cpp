#include "Shell/TrellisportManagerApp.h"
#include "Support/NotificationsBench.h"
#include "Support/Waiting.h"

#include <QGuiApplication>
#include <QPointer>
#include <QWindow>

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

class TrellisportManagerAppTest : public ::testing::Test {
protected:
    // Nobody listens there: the screens show what they show without a service.
    TrellisportManagerAppTest() { qputenv("TRELLISPORT_BASE_URL", "https://127.0.0.1:1/api/v1"); }

    static QWindowList shownWindows()
    {
        QWindowList windows = QGuiApplication::topLevelWindows();
        windows.removeIf([](const QWindow *window) { return !window->isVisible(); });
        return windows;
    }

    NotificationsBench m_bench;
    TrellisportManagerApp m_app{m_bench.manager};
};

TEST_F(TrellisportManagerAppTest, HasNoWindowBeforeItIsAskedForOne)
{
    EXPECT_THAT(shownWindows(), IsEmpty());
}

TEST_F(TrellisportManagerAppTest, ShowsOneWindowHoweverOftenItIsAsked)
{
    ASSERT_TRUE(m_app.showWindow());
    ASSERT_THAT(shownWindows(), SizeIs(1));
    const QWindow *window = shownWindows().first();
    EXPECT_EQ(window->title(), QStringLiteral("TrellisportManager"));
    ASSERT_TRUE(m_app.showWindow());
    ASSERT_THAT(shownWindows(), SizeIs(1));
    EXPECT_EQ(shownWindows().first(), window);
}

TEST_F(TrellisportManagerAppTest, BringsBackAMinimizedOrHiddenWindow)
{
    ASSERT_TRUE(m_app.showWindow());
    QWindow *window = shownWindows().first();
    window->showMinimized();
    ASSERT_TRUE(m_app.showWindow());
    EXPECT_FALSE(window->windowStates().testFlag(Qt::WindowMinimized));
    window->close();
    EXPECT_THAT(shownWindows(), IsEmpty());
    ASSERT_TRUE(m_app.showWindow());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(TrellisportManagerAppTest, AClosedWindowIsGoneAndTheNextOneIsNew)
{
    ASSERT_TRUE(m_app.showWindow());
    const QPointer<QWindow> window = shownWindows().first();
    m_app.closeWindow();
    EXPECT_TRUE(window.isNull());
    EXPECT_THAT(shownWindows(), IsEmpty());
    ASSERT_TRUE(m_app.showWindow());
    EXPECT_THAT(shownWindows(), SizeIs(1));
    m_app.closeWindow();
    m_app.closeWindow(); // there is none; nothing happens
}

} // namespace
} // namespace trellisport::test
