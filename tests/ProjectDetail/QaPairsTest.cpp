#include "ProjectDetail/Questions/QaPairs.h"

#include <gmock/gmock.h>

#include <string>

namespace trellisport {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> questions(std::string_view questionnaire)
{
    std::vector<std::string> found;
    for (const QaPair &pair : qaPairs(questionnaire, "")) {
        found.push_back(pair.question);
    }
    return found;
}

/// The answers to four questions.
std::vector<std::string> answers(std::string_view ownerAnswers)
{
    std::vector<std::string> found;
    for (const QaPair &pair : qaPairs("1. a\n2. b\n3. c\n4. d", ownerAnswers)) {
        found.push_back(pair.answer);
    }
    return found;
}

TEST(QaPairs, AreNoneWithoutANumberedLineWhateverTheAnswersHold)
{
    EXPECT_THAT(qaPairs("", "1. yes"), IsEmpty());
    EXPECT_THAT(qaPairs("Questions\nfor you", "1. yes"), IsEmpty());
}

TEST(QaPairs, AQuestionHasTheAnswerOfItsNumberAndTheNextWaits)
{
    EXPECT_THAT(qaPairs("1. Which database?\n2) Which host?", "1. yes"),
                ElementsAre(QaPair{"1. Which database?", "yes"}, QaPair{"2) Which host?", ""}));
}

TEST(QaPairs, PlainLinesBelowABareNumberAreItsAnswer)
{
    EXPECT_THAT(answers("1.\nfirst line\nsecond line"),
                ElementsAre("first line\nsecond line", "", "", ""));
}

TEST(QaPairs, TextBeforeTheFirstNumberIsIgnored)
{
    EXPECT_THAT(answers("Hello!\nThanks for asking.\n1. yes"), ElementsAre("yes", "", "", ""));
}

TEST(QaPairs, AnAnswerNumberedTwoLeavesTheFirstQuestionWaiting)
{
    EXPECT_THAT(answers("2. only this"), ElementsAre("", "only this", "", ""));
}

TEST(QaPairs, ALineWithABlankBeforeItsNumberIsNoQuestion)
{
    EXPECT_THAT(questions(" 1. a\n\t2. b\n3. c"), ElementsAre("3. c"));
}

TEST(QaPairs, AQuestionnaireNumberedFromFiveIsAnsweredFromOne)
{
    EXPECT_THAT(qaPairs("5. a\n6. b\n7. c", "1. one\n5. five"),
                ElementsAre(QaPair{"5. a", "one"}, QaPair{"6. b", ""}, QaPair{"7. c", ""}));
}

TEST(QaPairs, HeadingsAndContinuedLinesAreNoQuestions)
{
    EXPECT_THAT(questions("Questions:\n1. a\nmore of a\n\n2. b\n3 c\n4"),
                ElementsAre("1. a", "2. b"));
}

TEST(QaPairs, AQuestionKeepsItsNumberAndLosesItsBlanks)
{
    EXPECT_THAT(questions("12)\t a question \t"), ElementsAre("12)\t a question"));
    EXPECT_THAT(questions("1."), ElementsAre("1."));
    EXPECT_THAT(questions("1.x"), ElementsAre("1.x"));
}

TEST(QaPairs, OfTwoAnswersWithOneNumberTheLaterHolds)
{
    EXPECT_THAT(answers("1. first\n1. second"), ElementsAre("second", "", "", ""));
    EXPECT_THAT(answers("1. first\nmore\n2. b\n1)\nagain"),
                ElementsAre("first\nmore\nagain", "b", "", ""));
}

TEST(QaPairs, AnAnswerNumberedNoughtAndWhatFollowsItIsNobodys)
{
    EXPECT_THAT(answers("0. lost\nlost too\n2. b"), ElementsAre("", "b", "", ""));
    EXPECT_THAT(answers("1. a\n0.\nlost"), ElementsAre("a", "", "", ""));
}

TEST(QaPairs, ANumberBeyondSixtyFourBitsCountsAsNought)
{
    EXPECT_THAT(answers("1. a\n99999999999999999999. lost\nlost too"),
                ElementsAre("a", "", "", ""));
    EXPECT_THAT(answers("9223372036854775807. nobody's"), ElementsAre("", "", "", ""));
}

TEST(QaPairs, LeadingNoughtsDoNotCount)
{
    EXPECT_THAT(answers("0002. b"), ElementsAre("", "b", "", ""));
}

TEST(QaPairs, BlankLinesAddNothingToAnAnswer)
{
    EXPECT_THAT(answers("1. a\n\n  \t\nmore\n"), ElementsAre("a\nmore", "", "", ""));
    EXPECT_THAT(answers("1.   \n \nlate"), ElementsAre("late", "", "", ""));
}

TEST(QaPairs, AnswersLoseBlanksAndTabsAtTheirEndsOnly)
{
    EXPECT_THAT(answers("1.\t  a  b\t \n \tmore \u00A0"), ElementsAre("a  b\nmore", "", "", ""));
}

TEST(QaPairs, OtherLineEndsAreTextLikeAnyOther)
{
    EXPECT_THAT(qaPairs("1. a\r\n2. b", "1. x\r\n\r\n2. y"),
                ElementsAre(QaPair{"1. a\r", "x\r\n\r"}, QaPair{"2. b", "y"}));
}

TEST(QaPairs, DigitsOfEveryScriptNumberAQuestion)
{
    EXPECT_THAT(questions("\u0661. a\n\uFF12) b\n\u00B2. superscript\n\u2160. roman"),
                ElementsAre("\u0661. a", "\uFF12) b"));
}

TEST(QaPairs, AnAnswersNumberIsReadFromAsciiDigitsOnly)
{
    EXPECT_THAT(answers("1. a\n\u0662. lost\nlost too\n3. c"), ElementsAre("a", "", "c", ""));
}

TEST(QaPairs, ANumberInsideALineIsText)
{
    EXPECT_THAT(answers("1. see 2. below\nand 3) there"),
                ElementsAre("see 2. below\nand 3) there", "", "", ""));
}

TEST(QaPairs, BytesThatAreNoTextDoNoHarm)
{
    EXPECT_THAT(questions("\xC3. a\n1. \xE2\x82\n\xFF\xFE"), ElementsAre("1. \xE2\x82"));
}

TEST(QaPairs, TakesTextsOfMegabytes)
{
    std::string questionnaire;
    std::string ownerAnswers;
    for (int i = 1; i <= 100'000; ++i) {
        questionnaire += std::to_string(i) + ". q\n";
        ownerAnswers += std::to_string(i) + ".\na\nb\n";
    }
    const auto pairs = qaPairs(questionnaire, ownerAnswers);
    ASSERT_EQ(pairs.size(), 100'000U);
    EXPECT_EQ(pairs.back(), (QaPair{"100000. q", "a\nb"}));
}

} // namespace
} // namespace trellisport
