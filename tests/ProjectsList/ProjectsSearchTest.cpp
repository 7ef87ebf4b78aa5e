#include "ProjectsListScene.h"

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ProjectsSearchTest : public ProjectsListViewTest {
protected:
    void type(const char *text)
    {
        scene->tap(item("searchField"));
        for (const char *letter = text; *letter != 0; ++letter) {
            QTest::keyClick(&scene->window(), *letter);
        }
        settle();
    }
};

TEST_F(ProjectsSearchTest, TypingNarrowsTheList)
{
    showLoaded(
        {projectJson("1", "awarded", "Title API"), projectJson("2", "awarded", "Title Logo")});
    type("api");
    EXPECT_THAT(listed(), ElementsAre(u"AWARDED", u"Title API"));
}

TEST_F(ProjectsSearchTest, ASearchThatMatchesNothingShowsTheChipStripAndNoSections)
{
    showLoaded({projectJson("1", "awarded", "Title A")});
    type("zebra");
    EXPECT_TRUE(has("chipStrip"));
    EXPECT_THAT(listed(), IsEmpty());
}

TEST_F(ProjectsSearchTest, TheClearButtonShowsEverythingAgain)
{
    showLoaded({projectJson("1", "awarded", "Title A")});
    type("zebra");
    scene->tap(item("clearButton"));
    settle();
    EXPECT_EQ(model.searchText(), QString());
    EXPECT_THAT(listed(), ElementsAre(u"AWARDED", u"Title A"));
}

TEST_F(ProjectsSearchTest, TheFieldKeepsTheKeyboardWhateverTheListBecomes)
{
    std::vector<std::string> projects;
    projects.reserve(12);
    for (int place = 0; place < 12; ++place) {
        projects.push_back(projectJson(std::to_string(place), place < 4 ? "discovered" : "awarded",
                                       place % 5 == 4 ? "Title for a" : "Title other"));
    }
    showLoaded(projects);
    QTest::keyClick(&scene->window(), Qt::Key_Tab);
    for (int presses = 0; presses < 12; ++presses) {
        QTest::keyClick(&scene->window(), presses < 10 ? Qt::Key_Tab : Qt::Key_Down);
    }
    model.pressChip(6);
    settle();
    model.pressChip(6);
    settle();
    type("for a");
    EXPECT_EQ(model.searchText(), u"for a");
    EXPECT_TRUE(item("searchField")->hasActiveFocus());
    EXPECT_EQ(depth(), 0);
}

TEST_F(ProjectsSearchTest, TheListShowsNoRingWhileTheFieldInItHasTheKeyboard)
{
    showLoaded({projectJson("1", "awarded", "Title A")});
    scene->tap(item("searchField"));
    ASSERT_TRUE(item("searchField")->hasActiveFocus());
    EXPECT_FALSE(has("scrollFocus"));
}

TEST_F(ProjectsSearchTest, TheFieldStandsUnderTheLargeTitleAndScrollsAway)
{
    std::vector<std::string> projects;
    projects.reserve(40);
    for (int place = 0; place < 40; ++place) {
        projects.push_back(projectJson(std::to_string(place), "awarded", "Title"));
    }
    showLoaded(projects);
    const QRectF field = sceneRect(item("searchField"));
    EXPECT_EQ(field.top(), 44 + 52 + 4);
    EXPECT_EQ(field.left(), 16);
    EXPECT_EQ(field.size(), QSizeF(390 - 32, 36));
    EXPECT_GE(sceneRect(item("chip0")).top(), field.bottom());
    list()->setProperty("contentY", 300);
    EXPECT_LT(sceneRect(item("searchField")).bottom(), 0);
}

TEST_F(ProjectsSearchTest, TypingWhileScrolledShowsTheFirstMatches)
{
    std::vector<std::string> projects;
    projects.reserve(40);
    for (int place = 0; place < 40; ++place) {
        projects.push_back(projectJson(std::to_string(place), "awarded", "Title api"));
    }
    showLoaded(projects);
    scene->tap(item("searchField"));
    list()->setProperty("contentY", 600);
    QTest::keyClick(&scene->window(), 'a');
    settle();
    EXPECT_EQ(scrolled(), 0);
    EXPECT_EQ(sceneRect(item("searchField")).top(), 44 + 52 + 4);
}

TEST_F(ProjectsSearchTest, TheKeyboardGoesFromTheFieldOverTheChipsToTheRowsAndOn)
{
    showLoaded({projectJson("1", "awarded", "Title A"), projectJson("2", "awarded", "Title B")});
    const auto press = [&](Qt::Key key) { QTest::keyClick(&scene->window(), key); };
    press(Qt::Key_Tab);
    EXPECT_TRUE(item("searchField")->hasActiveFocus());
    for (int chip = 0; chip < 9; ++chip) {
        press(Qt::Key_Tab);
        EXPECT_TRUE(scene->item(QStringLiteral("chip%1").arg(chip))->hasActiveFocus()) << chip;
    }
    press(Qt::Key_Tab);
    const QList<QQuickItem *> made = rows();
    ASSERT_EQ(made.size(), 2);
    EXPECT_TRUE(made[0]->hasActiveFocus());
    press(Qt::Key_Down);
    EXPECT_TRUE(made[1]->hasActiveFocus());
    EXPECT_TRUE(made[1]->property("visualFocus").toBool());
    press(Qt::Key_Down);
    EXPECT_TRUE(made[1]->hasActiveFocus());
    press(Qt::Key_Up);
    EXPECT_TRUE(made[0]->hasActiveFocus());
    press(Qt::Key_Tab);
    EXPECT_FALSE(made[0]->hasActiveFocus());
    EXPECT_FALSE(made[1]->hasActiveFocus());
}

TEST_F(ProjectsSearchTest, AChipThatTheKeyboardReachesIsScrolledIntoView)
{
    showLoaded({}, {320, 568});
    for (int presses = 0; presses < 10; ++presses) {
        QTest::keyClick(&scene->window(), Qt::Key_Tab);
    }
    QQuickItem *last = item("chip8");
    ASSERT_TRUE(last->hasActiveFocus());
    EXPECT_GE(sceneRect(last).left(), 0);
    EXPECT_LE(sceneRect(last).right(), 320);
}

} // namespace
} // namespace trellisport::test
