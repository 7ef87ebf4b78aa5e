#include "ProjectDetail/ProjectListModel.h"
#include "ProjectDetail/Chat/MessageRows.h"
#include "ServiceFixture.h"
#include "Support/Waiting.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

using Content = ListScreenModel::Content;

const char *const twoMessages = R"([{"id":"1","sender":"agent","message_text":"a"},)"
                                R"({"id":"2","sender":"client","message_text":"b"}])";

class ProjectListModelTest : public ServiceFixture {
protected:
    using Model = ProjectListModel<MessageRows, &TrellisportAPI::getMessages>;

    bool eventuallyShows(Content content)
    {
        return waitUntil([&] { return model.content() == content; });
    }
    void load(const char *messages)
    {
        session->queueReply(200, messages);
        model.appear();
        ASSERT_TRUE(waitUntil([&] { return session->queued() == 0 && !model.isLoading(); }));
    }

    Model model{api, rules(), "p1"};
};

TEST_F(ProjectListModelTest, ShowsTheSpinnerUntilTheFirstLoadHasEnded)
{
    EXPECT_EQ(model.content(), Content::Spinner);
    session->hold();
    session->queueReply(200, twoMessages);
    model.appear();
    runPendingEvents();
    EXPECT_EQ(model.content(), Content::Spinner);
    session->release();
    EXPECT_TRUE(eventuallyShows(Content::Rows));
    EXPECT_EQ(session->requests().at(0).url, "https://service.example/api/v1/projects/p1/messages");
    EXPECT_EQ(model.rows()->rowCount(), 2);
}

TEST_F(ProjectListModelTest, AnEmptyListIsEmpty)
{
    load("[]");
    EXPECT_EQ(model.content(), Content::Empty);
}

TEST_F(ProjectListModelTest, AFirstLoadThatFailsIsAnEmptyList)
{
    session->queueReply(500);
    model.appear();
    EXPECT_TRUE(eventuallyShows(Content::Empty));
    EXPECT_FALSE(model.isLoading());
}

TEST_F(ProjectListModelTest, ALaterLoadThatFailsKeepsTheList)
{
    load(twoMessages);
    model.disappear();
    session->queueReply(500);
    model.appear();
    ASSERT_TRUE(waitUntil([&] { return session->requestCount() == 2; }));
    runPendingEvents();
    EXPECT_EQ(model.content(), Content::Rows);
    EXPECT_EQ(model.rows()->rowCount(), 2);
}

TEST_F(ProjectListModelTest, LoadsAgainEachTimeItAppearsWithoutASpinner)
{
    load(twoMessages);
    model.appear();
    runPendingEvents();
    EXPECT_EQ(session->requestCount(), 1U) << "it was already seen";
    model.disappear();
    session->hold();
    session->queueReply(200, "[]");
    model.appear();
    EXPECT_EQ(model.content(), Content::Rows);
    session->release();
    EXPECT_TRUE(eventuallyShows(Content::Empty));
}

TEST_F(ProjectListModelTest, AListThatWasEmptyMayFill)
{
    load("[]");
    model.disappear();
    const QSignalSpy changed(&model, &ListScreenModel::contentChanged);
    session->queueReply(200, twoMessages);
    model.appear();
    EXPECT_TRUE(eventuallyShows(Content::Rows));
    EXPECT_GE(changed.size(), 1);
}

TEST_F(ProjectListModelTest, GoingAwayCancelsTheLoad)
{
    session->hold();
    session->queueReply(200, twoMessages);
    model.appear();
    model.disappear();
    EXPECT_TRUE(waitUntil([&] { return session->cancelled() == 1; }));
    EXPECT_TRUE(eventuallyShows(Content::Empty));
}

TEST_F(ProjectListModelTest, AModelThatGoesWhileItLoadsLeavesNothingBehind)
{
    session->hold();
    session->queueReply(200, twoMessages);
    {
        Model shortLived(api, rules(), "p1");
        shortLived.appear();
    }
    session->release();
    EXPECT_TRUE(waitUntil([&] { return session->held() == 0; }));
    runPendingEvents();
    EXPECT_EQ(session->cancelled(), 1U);
}

} // namespace
} // namespace trellisport::test
