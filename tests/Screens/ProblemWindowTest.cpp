#include "AccessibleTree.h"
#include "Geometry.h"

#include "QmlSupport/QmlScene.h"
#include "Shell/SetupProblemApp.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <gmock/gmock.h>

#include <string>
#include <tuple>

namespace trellisport::test {
namespace {

using ::testing::IsEmpty;

/// What stands in place of the console, in windows and text sizes of all kinds.
class ProblemWindow : public ::testing::TestWithParam<std::tuple<QSize, double>> {
protected:
    /// As long as the longest that is really told.
    static constexpr auto problem =
        "No service is named: set TRELLISPORT_BASE_URL to its address, such as "
        "https://agent.example/api/v1, in ~/.config/environment.d/trellisport-manager.conf and log "
        "in again.";

    void SetUp() override
    {
        const QSize size = std::get<0>(GetParam());
        qputenv("TRELLISPORT_TEXT_SCALE", QByteArray::number(std::get<1>(GetParam())));
        ASSERT_TRUE(m_app.showWindow());
        for (QWindow *each : QGuiApplication::topLevelWindows()) {
            window = each->isVisible() ? qobject_cast<QQuickWindow *>(each) : window;
        }
        ASSERT_NE(window, nullptr);
        window->resize(size);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        text = window->findChild<QQuickItem *>(QStringLiteral("problem"));
        area = window->findChild<QQuickItem *>(QStringLiteral("problemScroll"));
        ASSERT_NE(text, nullptr);
        ASSERT_NE(area, nullptr);
        ASSERT_TRUE(eventually([&] { return area->size().toSize() == size; }));
        (void)window->grabWindow();
    }
    void TearDown() override { qunsetenv("TRELLISPORT_TEXT_SCALE"); }

    void press(Qt::Key key) const { QTest::keyClick(window, key); }
    /// Whether the text and the room that it keeps around it are higher than the window.
    [[nodiscard]] bool scrolls() const { return text->height() + 2 * 16 > window->height(); }

    SetupProblemApp m_app{problem};
    QQuickWindow *window = nullptr;
    QQuickItem *text = nullptr;
    QQuickItem *area = nullptr;
};

TEST_P(ProblemWindow, ShowsAllOfItOrScrollsToIt)
{
    EXPECT_LE(text->property("contentWidth").toDouble(), text->width());
    EXPECT_LE(text->property("contentHeight").toDouble(), text->height());
    EXPECT_FALSE(text->property("truncated").toBool());
    EXPECT_GE(sceneRect(text).left(), 0);
    EXPECT_LE(sceneRect(text).right(), window->width());
    EXPECT_GE(sceneRect(text).top(), 0) << "its beginning is what is seen first";
    press(Qt::Key_End);
    EXPECT_LE(sceneRect(text).bottom(), window->height());
    press(Qt::Key_Home);
    EXPECT_GE(sceneRect(text).top(), 0);
}

TEST_P(ProblemWindow, ShowsByAMarkWhereThereIsMore)
{
    const auto *mark = window->findChild<QQuickItem *>(QStringLiteral("scrollMark"));
    ASSERT_NE(mark, nullptr);
    if (scrolls()) {
        EXPECT_TRUE(mark->isVisible());
    }
    EXPECT_EQ(mark->isVisible(), area->property("contentHeight").toDouble() > area->height() + 0.5);
}

TEST_P(ProblemWindow, IsReachedByTabWhereItScrolls)
{
    press(Qt::Key_Tab);
    EXPECT_EQ(area->hasActiveFocus(), scrolls());
}

TEST_P(ProblemWindow, TellsItToWhomCantSeeIt)
{
    EXPECT_THAT(untold(*window, window->contentItem()), IsEmpty());
    EXPECT_EQ(seenItems(window->contentItem()).texts.size(), 1);
    EXPECT_NE(accessibleNode(*window, QAccessible::AlertMessage, QString::fromUtf8(problem)).object,
              nullptr);
}

INSTANTIATE_TEST_SUITE_P(Windows, ProblemWindow,
                         ::testing::Combine(::testing::Values(QSize(390, 300), QSize(320, 200),
                                                              QSize(360, 720), QSize(640, 108)),
                                            ::testing::Values(0.8, 1.0, 2.0)),
                         [](const auto &tested) {
                             const QSize size = std::get<0>(tested.param);
                             return std::to_string(size.width()) + "x" +
                                    std::to_string(size.height()) + "_" +
                                    std::to_string(qRound(100 * std::get<1>(tested.param)));
                         });

} // namespace
} // namespace trellisport::test
