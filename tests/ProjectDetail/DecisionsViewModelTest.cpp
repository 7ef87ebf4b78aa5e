#include "ProjectDetail/Decisions/DecisionsViewModel.h"
#include "ServiceFixture.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

using Content = ListScreenModel::Content;

const char *const twoPending = R"([{"id":"d1","question":"Which?","status":"pending"},)"
                               R"({"id":"d2","question":"When?","status":"pending"}])";
const char *const oneAnswered =
    R"([{"id":"d1","question":"Which?","status":"answered","answer":"this"},)"
    R"({"id":"d2","question":"When?","status":"pending"}])";

class DecisionsViewModelTest : public ServiceFixture {
protected:
    void load(const char *decisions)
    {
        session->queueReply(200, decisions, "/decisions");
        model.appear();
        ASSERT_TRUE(waitUntil([&] { return model.content() != Content::Spinner; }));
    }
    [[nodiscard]] QString typed(const char *id)
    {
        return model.rows()->typedAnswer(QString::fromUtf8(id));
    }
    void type(const char *id, const QString &text)
    {
        model.setTypedAnswer(QString::fromUtf8(id), text);
    }
    void submit(const char *id) { model.submitAnswer(QString::fromUtf8(id)); }
    [[nodiscard]] std::string statusOf(std::size_t number)
    {
        return std::string(model.rows()->entries().at(number).status.view());
    }
    [[nodiscard]] bool eventuallySent(std::size_t count)
    {
        return waitUntil([&] { return session->requestCount() == count; });
    }
    [[nodiscard]] platform::HttpRequest request(std::size_t number)
    {
        return session->requests().at(number);
    }

    DecisionsViewModel model{api, rules(), "p1"};
};

TEST_F(DecisionsViewModelTest, LoadsTheDecisionsInTheServicesOrder)
{
    load(twoPending);
    EXPECT_EQ(request(0).url, "https://service.example/api/v1/projects/p1/decisions");
    ASSERT_EQ(model.content(), Content::Rows);
    EXPECT_EQ(model.rows()->entries()[0].id, "d1");
    EXPECT_EQ(model.rows()->entries()[1].id, "d2");
}

TEST_F(DecisionsViewModelTest, AFailedLoadIsAnEmptyListAndLaterOnesKeepTheList)
{
    session->queueReply(500);
    model.appear();
    ASSERT_TRUE(waitUntil([&] { return model.content() == Content::Empty; }));
    model.disappear();
    load(twoPending);
    ASSERT_TRUE(waitUntil([&] { return model.content() == Content::Rows; }));
    model.disappear();
    session->queueReply(500);
    model.appear();
    EXPECT_TRUE(eventuallySent(3));
    runPendingEvents();
    EXPECT_EQ(model.content(), Content::Rows);
}

TEST_F(DecisionsViewModelTest, AnEmptyAnswerIsNotSent)
{
    load(twoPending);
    submit("d1");
    type("d2", QStringLiteral("x"));
    type("d2", {});
    submit("d2");
    runPendingEvents();
    EXPECT_EQ(session->requestCount(), 1U);
}

TEST_F(DecisionsViewModelTest, ThreeBlanksAreSentAsThreeBlanks)
{
    load(twoPending);
    session->queueReply(200, "{}");
    session->queueReply(200, oneAnswered);
    type("d1", QStringLiteral("   "));
    submit("d1");
    ASSERT_TRUE(eventuallySent(3));
    EXPECT_EQ(request(1).method, "POST");
    EXPECT_EQ(request(1).url, "https://service.example/api/v1/projects/p1/decisions/d1/answer");
    EXPECT_EQ(request(1).body, R"({"answer":"   "})");
    EXPECT_EQ(request(2).method, "GET");
}

TEST_F(DecisionsViewModelTest, SubmittingClearsOnlyThatDecisionsText)
{
    load(twoPending);
    session->queueReply(200, "{}");
    session->queueReply(200, oneAnswered);
    type("d1", QStringLiteral("this"));
    type("d2", QStringLiteral("later"));
    submit("d1");
    ASSERT_TRUE(waitUntil([&] { return typed("d1").isEmpty(); }));
    EXPECT_EQ(typed("d2"), u"later");
    EXPECT_EQ(statusOf(0), "answered");
}

TEST_F(DecisionsViewModelTest, TheTextIsClearedOnlyWhenTheDecisionsAreThereAnew)
{
    load(twoPending);
    session->hold();
    session->queueReply(200, "{}");
    session->queueReply(200, oneAnswered);
    type("d1", QStringLiteral("this"));
    submit("d1");
    ASSERT_TRUE(waitUntil([&] { return session->releaseOne("/answer"); }));
    ASSERT_TRUE(eventuallySent(3));
    runPendingEvents();
    EXPECT_EQ(typed("d1"), u"this");
    EXPECT_EQ(statusOf(0), "pending");
    session->release();
    EXPECT_TRUE(waitUntil([&] { return typed("d1").isEmpty(); }));
}

TEST_F(DecisionsViewModelTest, ARejectedAnswerKeepsTheTextAndTheList)
{
    load(twoPending);
    session->queueReply(409, R"({"error":"answered"})");
    type("d1", QStringLiteral("this"));
    submit("d1");
    ASSERT_TRUE(eventuallySent(2));
    runPendingEvents();
    EXPECT_EQ(typed("d1"), u"this");
    EXPECT_EQ(statusOf(0), "pending");
    EXPECT_EQ(session->requestCount(), 2U);
}

TEST_F(DecisionsViewModelTest, AnAcceptedAnswerWhoseReloadFailsKeepsTheTextAndTheList)
{
    load(twoPending);
    session->queueReply(200, "{}");
    session->queueReply(500);
    type("d1", QStringLiteral("this"));
    submit("d1");
    ASSERT_TRUE(eventuallySent(3));
    runPendingEvents();
    EXPECT_EQ(typed("d1"), u"this");
    EXPECT_EQ(statusOf(0), "pending");
}

TEST_F(DecisionsViewModelTest, TwoQuickPressesSendTwice)
{
    load(twoPending);
    session->queueReply(200, "{}", "/answer");
    session->queueReply(200, "{}", "/answer");
    session->queueReply(200, oneAnswered, "/decisions");
    session->queueReply(200, oneAnswered, "/decisions");
    type("d1", QStringLiteral("this"));
    submit("d1");
    submit("d1");
    ASSERT_TRUE(eventuallySent(5));
    const auto requests = session->requests();
    EXPECT_EQ(std::count_if(requests.begin(), requests.end(),
                            [](const auto &sent) { return sent.method == "POST"; }),
              2);
}

TEST_F(DecisionsViewModelTest, OfTwoSubmissionsThatEndOutOfOrderEachClearsItsOwnText)
{
    load(twoPending);
    session->hold();
    session->queueReply(200, "{}", "/d1/answer");
    session->queueReply(200, "{}", "/d2/answer");
    session->queueReply(200, twoPending, "/decisions");
    session->queueReply(200, oneAnswered, "/decisions");
    type("d1", QStringLiteral("this"));
    type("d2", QStringLiteral("that"));
    submit("d1");
    submit("d2");
    ASSERT_TRUE(session->releaseOne("/d2/answer"));
    ASSERT_TRUE(eventuallySent(4));
    ASSERT_TRUE(session->releaseOne("/decisions"));
    ASSERT_TRUE(waitUntil([&] { return typed("d2").isEmpty(); }));
    EXPECT_EQ(typed("d1"), u"this");
    ASSERT_TRUE(session->releaseOne("/d1/answer"));
    ASSERT_TRUE(eventuallySent(5));
    ASSERT_TRUE(session->releaseOne("/decisions"));
    ASSERT_TRUE(waitUntil([&] { return typed("d1").isEmpty(); }));
}

TEST_F(DecisionsViewModelTest, WhatIsTypedDuringASubmissionIsClearedWithIt)
{
    load(twoPending);
    session->hold();
    session->queueReply(200, "{}");
    session->queueReply(200, twoPending);
    type("d1", QStringLiteral("this"));
    submit("d1");
    type("d1", QStringLiteral("this and that"));
    session->release();
    ASSERT_TRUE(waitUntil([&] { return typed("d1").isEmpty(); }));
    EXPECT_EQ(request(1).body, R"({"answer":"this"})");
}

TEST_F(DecisionsViewModelTest, ASubmissionGoesOnWhenTheTabHasGone)
{
    session->hold();
    session->queueReply(200, "{}", "/answer");
    session->queueReply(200, oneAnswered, "/decisions");
    {
        DecisionsViewModel shortLived(api, rules(), "p1");
        shortLived.setTypedAnswer(QStringLiteral("d1"), QStringLiteral("this"));
        shortLived.submitAnswer(QStringLiteral("d1"));
    }
    EXPECT_EQ(session->cancelled(), 0U);
    session->release();
    ASSERT_TRUE(eventuallySent(2));
    EXPECT_EQ(request(0).body, R"({"answer":"this"})");
    EXPECT_EQ(request(1).url, "https://service.example/api/v1/projects/p1/decisions");
    runPendingEvents();
}

TEST_F(DecisionsViewModelTest, ASubmissionIsNotCancelledWhenTheTabGoes)
{
    load(twoPending);
    session->hold();
    session->queueReply(200, "{}");
    session->queueReply(200, oneAnswered);
    type("d1", QStringLiteral("this"));
    submit("d1");
    model.disappear();
    session->release();
    EXPECT_TRUE(waitUntil([&] { return typed("d1").isEmpty(); }));
    EXPECT_EQ(session->cancelled(), 0U);
}

TEST_F(DecisionsViewModelTest, FindsTheEditorsInTheirOrder)
{
    load(R"([{"id":"a","question":"?","status":"answered"},)"
         R"({"id":"b","question":"?","status":"pending"},)"
         R"({"id":"c","question":"?","status":"Pending"},)"
         R"({"id":"d","question":"?","status":"pending"}])");
    EXPECT_EQ(model.editorRow(-1, true), 1);
    EXPECT_EQ(model.editorRow(1, true), 3);
    EXPECT_EQ(model.editorRow(3, true), -1);
    EXPECT_EQ(model.editorRow(3, false), 1);
    EXPECT_EQ(model.editorRow(1, false), -1);
}

} // namespace
} // namespace trellisport::test
