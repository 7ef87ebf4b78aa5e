#include "WorkspaceScene.h"

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;

class QuestionsTabTest : public WorkspaceScene {
protected:
    void showQuestions(const std::string &questionnaire, const std::string &answers,
                       QSize size = {390, 844})
    {
        model.setSelectedTab(Tab::Questions);
        showLoaded(R"({"id":"p1","title":"t","questionnaire":)" + quoted(questionnaire) +
                       R"(,"owner_answers":)" + quoted(answers) + "}",
                   size);
    }
};

TEST_F(QuestionsTabTest, WithoutANumberedLineItSaysSoWhateverTheAnswersHold)
{
    showQuestions("Some questions:\n 1. indented", "1. yes");
    EXPECT_THAT(tabTexts(), ElementsAre(u"No questions generated yet"));
    EXPECT_EQ(colorOf(item("emptyText")), colors::gray());
    EXPECT_EQ(place("emptyText").top(), tabTop() + 40);
}

TEST_F(QuestionsTabTest, AProjectWithoutAQuestionnaireSaysSoToo)
{
    model.setSelectedTab(Tab::Questions);
    showLoaded();
    EXPECT_THAT(tabTexts(), ElementsAre(u"No questions generated yet"));
}

TEST_F(QuestionsTabTest, AnsweredAndWaitingQuestionsAreToldApart)
{
    showQuestions("1. When?\n2) Where?", "1. yes");
    EXPECT_THAT(tabTexts(),
                ElementsAre(u"1. When?", u"Answered", u"yes", u"2) Where?", u"Waiting"));
    EXPECT_EQ(lookOf(text("1. When?")), subheadline(colors::white()));
    EXPECT_EQ(lookOf(text("Answered")), systemText(10, colors::green()));
    EXPECT_EQ(lookOf(text("Waiting")), systemText(10, colors::yellow()));
    EXPECT_EQ(lookOf(text("yes")), caption(colors::gray()));
    const auto dots = items("stateDot");
    ASSERT_EQ(dots.size(), 2);
    EXPECT_EQ(colorOf(dots[0]), colors::green());
    EXPECT_EQ(colorOf(dots[1]), colors::yellow());
    for (const QQuickItem *dot : dots) {
        EXPECT_EQ(dot->size(), QSizeF(6, 6));
        EXPECT_EQ(dot->property("radius"), 3);
    }
    EXPECT_EQ(sceneRect(text("Answered")).left() - sceneRect(dots[0]).right(), 4);
    EXPECT_NEAR(sceneRect(text("Answered")).center().y(), sceneRect(dots[0]).center().y(), 0.5);
}

TEST_F(QuestionsTabTest, EachPairIsACardWithItsAnswerInABox)
{
    showQuestions("1. When?\n2) Where?", "1. yes");
    const auto cards = items("card");
    ASSERT_EQ(cards.size(), 2);
    for (const QQuickItem *card : cards) {
        expectGround(card, 12, colors::surface(), 1, colors::hairline());
    }
    EXPECT_EQ(sceneRect(cards[0]).topLeft(), QPointF(16, tabTop() + 16));
    EXPECT_EQ(sceneRect(cards[1]).top() - sceneRect(cards[0]).bottom(), 12);
    QQuickItem *answer = text("yes");
    const QQuickItem *box = answer->parentItem();
    while (box != nullptr && box->property("outlineWidth").isNull()) {
        box = box->parentItem();
    }
    ASSERT_NE(box, nullptr);
    expectGround(box, 8, colors::innerSurface(), 0);
    EXPECT_EQ(sceneRect(box).left(), 32);
    EXPECT_EQ(sceneRect(box).width(), 390 - 64);
    EXPECT_EQ(sceneRect(answer).topLeft(), sceneRect(box).topLeft() + QPointF(10, 10));
    EXPECT_EQ(sceneRect(box).bottom() - sceneRect(answer).bottom(), 10);
    EXPECT_EQ(sceneRect(text("Answered")).top() - sceneRect(text("1. When?")).bottom(), 8);
    EXPECT_EQ(sceneRect(box).top() - sceneRect(text("Answered")).bottom(), 8);
}

TEST_F(QuestionsTabTest, AnAnswerOfSeveralLinesKeepsThem)
{
    showQuestions("1. When?", "Hello\n1.\nfirst\nsecond");
    EXPECT_THAT(tabTexts(), ElementsAre(u"1. When?", u"Answered", u"first\nsecond"));
}

TEST_F(QuestionsTabTest, OnlyTheSecondIsAnswered)
{
    showQuestions("1. When?\n2. Where?", "2. here");
    EXPECT_THAT(tabTexts(),
                ElementsAre(u"1. When?", u"Waiting", u"2. Where?", u"Answered", u"here"));
}

TEST_F(QuestionsTabTest, AQuestionnaireThatStartsAtFiveIsAnsweredByPlace)
{
    showQuestions("5. When?\n6. Where?\n7. Why?", "1. now");
    EXPECT_THAT(tabTexts(), ElementsAre(u"5. When?", u"Answered", u"now", u"6. Where?", u"Waiting",
                                        u"7. Why?", u"Waiting"));
}

TEST_F(QuestionsTabTest, CarriageReturnsDrawNoEmptyLines)
{
    showQuestions("1. When?\r\n2. Where?\r\n", "1. now\r\n");
    EXPECT_EQ(text("1. When?")->height(), 20);
    EXPECT_EQ(text("now")->height(), 16);
}

TEST_F(QuestionsTabTest, ALongAnswerIsWholeInOneCard)
{
    const std::string answer = numberedLines(300);
    showQuestions("1. When?", "1. " + answer, {390, 6000});
    const auto cards = items("card");
    ASSERT_GT(cards.size(), 1);
    EXPECT_EQ(joined("answer"), QString::fromStdString(answer));
    EXPECT_EQ(tabTexts().count(QStringLiteral("Answered")), 1);
}

} // namespace
} // namespace trellisport::test
