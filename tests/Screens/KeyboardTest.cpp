#include "AllScreens.h"
#include "Geometry.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QTest>

#include <gmock/gmock.h>

#include <algorithm>
#include <string>

namespace trellisport::test {
namespace {

using ::testing::Contains;

class Keyboard : public AllScreens {
protected:
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&scene->window(), key, modifiers);
    }
    [[nodiscard]] QQuickItem *focused() const { return scene->window().activeFocusItem(); }

    /// Everything that Tab leads to, until it comes round again. Each must be seen by then.
    QList<QQuickItem *> tabStops()
    {
        QList<QQuickItem *> stops;
        for (int presses = 0; presses < 60; ++presses) {
            press(Qt::Key_Tab);
            QQuickItem *stop = focused();
            if (stop == nullptr || stops.contains(stop)) {
                return stops;
            }
            stops << stop;
            expectSeen(stop);
        }
        ADD_FAILURE() << "Tab does not come round";
        return stops;
    }
    /// Lists scroll to what has got the focus.
    void expectSeen(const QQuickItem *stop)
    {
        const auto isSeen = [&] {
            const QRectF shown = shownPart(stop);
            return shown.height() >= std::min(stop->height(), 100.0) - 1 &&
                   shown.width() >= std::min(stop->width(), 100.0) - 1;
        };
        EXPECT_TRUE(eventually(isSeen)) << nameOf(stop) << " has the keyboard out of sight";
        EXPECT_TRUE(showsFocus(stop)) << nameOf(stop) << " does not show that it has the keyboard";
    }
    bool showsFocus(const QQuickItem *stop) const
    {
        return stop->property("visualFocus").toBool() ||
               stop->inherits("QQuickFlickable"); // the frame around it belongs to its page
    }
    void expectAllReached(const std::string &name)
    {
        SCOPED_TRACE(name);
        const QList<QQuickItem *> stops = tabStops();
        for (QQuickItem *control : seenItems(scene->root()).controls) {
            // From one row of the projects the arrow keys lead to the others.
            const bool isOneOfMany = control->objectName() == QLatin1String("projectRow");
            if (!isOneOfMany) {
                EXPECT_THAT(stops, Contains(control)) << nameOf(control) << " is not reached";
            }
        }
        EXPECT_GE(stops.size(), 3);
    }
};

TEST_F(Keyboard, ReachesEverythingOnEveryScreenInSight)
{
    fill();
    show({360, 648});
    visitAll([&](const std::string &name) { expectAllReached(name); });
}

TEST_F(Keyboard, TabGoesThroughTheProjectsScreenFromTopToBottom)
{
    fill();
    show();
    showTab(1);
    settle();
    double last = -1;
    for (const QQuickItem *stop : tabStops()) {
        const QPointF place = sceneRect(stop).center();
        if (scrollsSideways(stop) || stop->objectName() == QLatin1String("rootTab")) {
            continue;
        }
        EXPECT_GT(place.y(), last) << nameOf(stop);
        last = place.y();
    }
    EXPECT_GT(last, 0);
}

TEST_F(Keyboard, ControlAndANumberShowTheRootTabs)
{
    fill();
    show();
    press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(content.selectedTab(), 2);
    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(content.selectedTab(), 1);
    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(content.selectedTab(), 0);
}

TEST_F(Keyboard, ControlAndFPutsTheKeyboardIntoTheSearchField)
{
    fill();
    show();
    showTab(1);
    settle();
    projects.setSearchText(QStringLiteral("bak"));
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focused(), item("searchField"));
    press(Qt::Key_X);
    EXPECT_EQ(projects.searchText(), u"x") << "what was there is ready to be replaced";
}

TEST_F(Keyboard, AFieldThatIsNoLongerShownDoesNotKeepTheKeyboard)
{
    fill();
    show();
    showTab(1);
    settle();
    press(Qt::Key_F, Qt::ControlModifier);
    press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_TRUE(eventually([&] { return focused() != item("searchField"); }));
    press(Qt::Key_X);
    EXPECT_EQ(projects.searchText(), u"");
    press(Qt::Key_Tab);
    EXPECT_TRUE(focused()->isVisible());
}

TEST_F(Keyboard, ControlAndFDoesNothingWhereThereIsNoSearchField)
{
    fill();
    show();
    settle();
    const QQuickItem *before = focused();
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focused(), before);
}

TEST_F(Keyboard, F5ReloadsTheScreenThatCanBePulled)
{
    fill();
    show();
    settle();
    showTab(1);
    settle();
    const std::size_t before = session->requestCount();
    press(Qt::Key_F5);
    EXPECT_TRUE(eventually([&] { return session->requestCount() == before + 1; }));
    EXPECT_TRUE(QString::fromStdString(session->requests().back().url)
                    .endsWith(QLatin1String("/projects")));
    EXPECT_TRUE(eventually([&] { return !projects.isRefreshing(); }));
}

TEST_F(Keyboard, EscapeAndAltLeftGoBackFromAProject)
{
    fill();
    show();
    showTab(1);
    settle();
    for (const bool escape : {true, false}) {
        openProject();
        settle();
        ASSERT_TRUE(has("workspace"));
        press(escape ? Qt::Key_Escape : Qt::Key_Left, escape ? Qt::NoModifier : Qt::AltModifier);
        EXPECT_TRUE(eventually([&] { return !has("workspace"); })) << escape;
    }
}

/// Sixty projects of one stage.
class LongList : public Keyboard {
protected:
    void SetUp() override
    {
        fillWithNothing();
        std::string list = "[";
        for (int i = 0; i < 60; ++i) {
            const std::string number = std::to_string(i);
            list += i > 0 ? "," : "";
            list.append(R"({"id":"p)").append(number);
            list.append(R"(","bid_status":"awarded","title":"Title )")
                .append(number)
                .append(R"("})");
        }
        session->alwaysReply("/projects", 200, list + "]");
        show();
        showTab(1);
        settle();
    }
    /// The title of the row that has the keyboard.
    QString focusedTitle() const
    {
        QQuickItem *row = focused();
        const bool isRow = row != nullptr && row->objectName() == QLatin1String("projectRow");
        return isRow ? textOf(scene->item(QStringLiteral("projectTitle"), row)) : QString();
    }
    bool isSliding() const
    {
        const auto objects = scene->root()->findChildren<QObject *>();
        return std::any_of(objects.begin(), objects.end(), [](const QObject *object) {
            return object->inherits("QQuickNumberAnimation") &&
                   object->property("property") == QStringLiteral("contentY") &&
                   object->property("running").toBool();
        });
    }
    void focusFirstRow()
    {
        for (int presses = 0; presses < 30 && focusedTitle() != u"Title 0"; ++presses) {
            press(Qt::Key_Tab);
        }
        ASSERT_EQ(focusedTitle(), u"Title 0");
    }
};

TEST_F(LongList, HomeAndEndLeadToTheFirstAndTheLastRow)
{
    focusFirstRow();
    press(Qt::Key_End);
    EXPECT_EQ(focusedTitle(), u"Title 59");
    expectSeen(focused());
    press(Qt::Key_Home);
    EXPECT_EQ(focusedTitle(), u"Title 0");
    expectSeen(focused());
}

// The list slides to what has got the keyboard. A slide from before would pull it back, and on the
// way the list would take the first row for another one, with the keyboard.
TEST_F(LongList, AMoveEndsTheSlideOfTheOneBefore)
{
    focusFirstRow();
    press(Qt::Key_End);
    ASSERT_TRUE(eventually([&] { return isSliding(); }));
    QKeyEvent home(QEvent::KeyPress, Qt::Key_Home, Qt::NoModifier);
    QCoreApplication::sendEvent(&scene->window(), &home);
    EXPECT_FALSE(isSliding());
    ASSERT_TRUE(eventually([&] { return !isSliding(); }));
    EXPECT_EQ(focusedTitle(), u"Title 0");
    expectSeen(focused());
}

TEST_F(LongList, PageKeysMoveByAboutWhatIsSeen)
{
    focusFirstRow();
    press(Qt::Key_PageDown);
    const int moved = focusedTitle().mid(6).toInt();
    EXPECT_GE(moved, 4);
    EXPECT_LE(moved, 12);
    expectSeen(focused());
    press(Qt::Key_PageUp);
    EXPECT_EQ(focusedTitle(), u"Title 0");
}

TEST_F(LongList, PageKeysScrollFromTheSearchField)
{
    press(Qt::Key_F, Qt::ControlModifier);
    const double before = item("projectsList")->property("contentY").toDouble();
    press(Qt::Key_PageDown);
    EXPECT_GT(item("projectsList")->property("contentY").toDouble(), before + 300);
    EXPECT_EQ(focused(), item("searchField"));
}

} // namespace
} // namespace trellisport::test
