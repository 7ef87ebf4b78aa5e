#include "Shell/SetupProblemApp.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

QQuickWindow *shownWindow()
{
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible()) {
            return qobject_cast<QQuickWindow *>(window);
        }
    }
    return nullptr;
}

TEST(SetupProblemApp, ShowsTheSentenceInItsWindow)
{
    SetupProblemApp app("No service is named: so and so.");
    EXPECT_EQ(shownWindow(), nullptr);
    ASSERT_TRUE(app.showWindow());
    QQuickWindow *window = shownWindow();
    ASSERT_NE(window, nullptr);
    const auto *text = window->findChild<QQuickItem *>(QStringLiteral("problem"));
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->property("text").toString(), QStringLiteral("No service is named: so and so."));
    EXPECT_FALSE(text->property("truncated").toBool());
    EXPECT_GT(text->property("contentHeight").toReal(), 0);
}

TEST(SetupProblemApp, ItsWindowCanBeClosedAndShownAgain)
{
    SetupProblemApp app("So and so.");
    ASSERT_TRUE(app.showWindow());
    app.closeWindow();
    EXPECT_EQ(shownWindow(), nullptr);
    ASSERT_TRUE(app.showWindow());
    EXPECT_NE(shownWindow(), nullptr);
}

TEST(SetupProblemApp, ItsWindowHasAFrameOnADesktop)
{
    SetupProblemApp app("So and so.");
    ASSERT_TRUE(app.showWindow());
    EXPECT_FALSE(shownWindow()->flags().testFlag(Qt::FramelessWindowHint));
}

TEST(SetupProblemApp, LetsTheProgramRun)
{
    SetupProblemApp app("So and so.");
    EXPECT_TRUE(app.delegate().didFinishLaunching());
}

} // namespace
} // namespace trellisport::test
