#include "ProjectsListScene.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QPointingDevice>

#include <memory>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

class ProjectsNavigationTest : public ProjectsListViewTest {
protected:
    static std::vector<std::string> many(int count)
    {
        std::vector<std::string> projects;
        projects.reserve(static_cast<std::size_t>(count));
        for (int place = 0; place < count; ++place) {
            projects.push_back(projectJson("p-" + std::to_string(place), "awarded",
                                           "Title " + std::to_string(place)));
        }
        return projects;
    }
};

TEST_F(ProjectsNavigationTest, ATapOpensTheProjectsWorkspace)
{
    showLoaded(
        {projectJson("p-1", "awarded", "Title A"), projectJson("p-2", "awarded", "Title B")});
    scene->tap(text("Title B"));
    EXPECT_EQ(depth(), 1);
    ASSERT_TRUE(stackRests());
    EXPECT_THAT(scene->texts(), ElementsAre(u"workspace of p-2 from Projects"));
}

TEST_F(ProjectsNavigationTest, AFingerOpensTheWorkspaceAndStaysThere)
{
    showLoaded(
        {projectJson("p-1", "awarded", "Title A"), projectJson("p-2", "awarded", "Title B")});
    const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
    const auto touch = [&](QPoint place) {
        QTest::touchEvent(&scene->window(), finger.get()).press(0, place);
        QTest::touchEvent(&scene->window(), finger.get()).release(0, place);
    };
    touch(sceneRect(text("Title B")).center().toPoint());
    EXPECT_EQ(depth(), 1);
    ASSERT_TRUE(stackRests());
    touch({200, 400});
    runPendingEvents();
    ASSERT_TRUE(stackRests());
    EXPECT_THAT(scene->texts(), ElementsAre(u"workspace of p-2 from Projects"));
}

TEST_F(ProjectsNavigationTest, AnEmptyIdentifierOpensToo)
{
    showLoaded({projectJson("", "awarded", "Title A")});
    scene->tap(text("Title A"));
    ASSERT_TRUE(stackRests());
    EXPECT_THAT(scene->texts(), ElementsAre(u"workspace of  from Projects"));
}

TEST_F(ProjectsNavigationTest, TheWorkspacesWayBackLeadsToTheListWhichLoadsAgainAndKeepsItsPlace)
{
    showLoaded(many(60));
    list()->setProperty("contentY", 500);
    settle();
    const double before = scrolled();
    scene->tap(rows()[rows().size() / 2]);
    ASSERT_TRUE(stackRests());
    EXPECT_EQ(session->requestCount(), 1U);

    session->queueReply(200, listJson(many(60)));
    scene->tap(item("back"));
    EXPECT_TRUE(eventually([&] { return session->requestCount() == 2; }));
    ASSERT_TRUE(stackRests());
    runPendingEvents();
    settle();
    EXPECT_EQ(depth(), 0);
    EXPECT_EQ(scrolled(), before);
}

TEST_F(ProjectsNavigationTest, ReturnOpensTheRowThatHasTheKeyboardAndEscapeComesBackToIt)
{
    showLoaded(many(5));
    session->alwaysReply("/projects", 200, listJson(many(5)));
    rows()[0]->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&scene->window(), Qt::Key_Down);
    QTest::keyClick(&scene->window(), Qt::Key_Return);
    ASSERT_TRUE(stackRests());
    EXPECT_THAT(scene->texts(), ElementsAre(u"workspace of p-1 from Projects"));
    QTest::keyClick(&scene->window(), Qt::Key_Escape);
    ASSERT_TRUE(stackRests());
    EXPECT_TRUE(rows()[1]->hasActiveFocus());
    EXPECT_TRUE(rows()[1]->property("visualFocus").toBool());
}

TEST_F(ProjectsNavigationTest, TheListLoadsAgainEachTimeItsTabIsShownAndNotWhileItIsCovered)
{
    showLoaded(many(3));
    session->alwaysReply("/projects", 200, listJson(many(3)));
    scene->root()->setVisible(false);
    scene->root()->setVisible(true);
    EXPECT_TRUE(eventually([&] { return session->requestCount() == 2; }));
    scene->tap(rows()[0]);
    ASSERT_TRUE(stackRests());
    scene->root()->setVisible(false);
    scene->root()->setVisible(true);
    runPendingEvents();
    EXPECT_EQ(session->requestCount(), 2U);
    EXPECT_EQ(depth(), 1);
}

TEST_F(ProjectsNavigationTest, APendingProjectIsTakenOverAndNoWorkspaceOpens)
{
    showLoaded({projectJson("p-1", "awarded", "Title A")});
    notifications.setPendingProjectId("p-1");
    EXPECT_TRUE(eventually([&] { return !notifications.pendingProjectId(); }));
    EXPECT_EQ(model.navigateToProjectId(), "p-1");
    runPendingEvents();
    EXPECT_EQ(depth(), 0);
}

TEST_F(ProjectsNavigationTest, ANewProjectAboveDoesNotMoveWhatIsBeingRead)
{
    showLoaded(many(60));
    list()->setProperty("contentY", 2000);
    settle();
    QQuickItem *read = rows()[rows().size() / 2];
    const double before = sceneRect(read).top();
    auto more = many(60);
    more.insert(more.begin(), projectJson("new", "awarded", "Title new"));
    session->queueReply(200, listJson(more));
    model.refresh();
    ASSERT_TRUE(eventually([&] { return model.rows()->rowCount() == 61; }));
    settle();
    ASSERT_TRUE(eventually([&] { return !has("refreshSpinner"); }));
    EXPECT_EQ(sceneRect(read).top(), before);
}

TEST_F(ProjectsNavigationTest, OfAHundredThousandProjectsOnlyThoseNearTheWindowExist)
{
    showLoaded(many(100'000));
    EXPECT_EQ(model.rows()->rowCount(), 100'000);
    EXPECT_GT(rows().size(), 5);
    EXPECT_LT(rows().size(), 40);
    QMetaObject::invokeMethod(list(), "positionViewAtEnd");
    settle();
    EXPECT_TRUE(scene->texts().contains(QStringLiteral("Title 99999")));
    EXPECT_LT(rows().size(), 60);
}

TEST_F(ProjectsNavigationTest, ATitleOfAMegabyteIsARowLikeAnyOther)
{
    showLoaded({projectJson("1", "awarded", "Title " + std::string(1'000'000, 'x')),
                projectJson("2", "awarded", "Title B")});
    const QList<QQuickItem *> made = rows();
    ASSERT_EQ(made.size(), 2);
    EXPECT_LT(made[0]->height(), 100);
    EXPECT_TRUE(scene->texts().contains(QStringLiteral("Title B")));
}

} // namespace
} // namespace trellisport::test
