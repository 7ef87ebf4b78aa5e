#include "Platform/Platform.h"
#include "Presentation/Colors.h"
#include "ProjectDetail/Bids/BidRows.h"
#include "ProjectDetail/Chat/MessageRows.h"
#include "ProjectDetail/Decisions/DecisionRows.h"
#include "ProjectDetail/Development/TimelineRows.h"
#include "ProjectDetail/Logs/LogRows.h"
#include "ProjectDetail/Overview/OverviewRows.h"
#include "ProjectDetail/Questions/QuestionRows.h"
#include "ProjectDetail/Reports/ReportRows.h"

#include <QAbstractItemModelTester>
#include <QColor>
#include <QSignalSpy>

#include <gmock/gmock.h>

#include <memory>

namespace trellisport {
namespace {

using ::testing::ElementsAre;

const platform::TextRules &rules()
{
    return platform::Platform::current().textRules();
}

QVariant at(const QAbstractItemModel &rows, int row, const char *role)
{
    return rows.data(rows.index(row, 0), rows.roleNames().key(role, -1));
}

QStringList texts(const QAbstractItemModel &rows, const char *role)
{
    QStringList found;
    for (int row = 0; row < rows.rowCount(); ++row) {
        found << at(rows, row, role).toString();
    }
    return found;
}

ProjectRecord projectWith(const OptionalText &description, const OptionalText &plan,
                          const OptionalText &questionnaire = {}, const OptionalText &answers = {})
{
    return {std::make_shared<const ProjectDetail>(ProjectDetail{.id = "p",
                                                                .title = "t",
                                                                .description = description,
                                                                .deliveryPlan = plan,
                                                                .questionnaire = questionnaire,
                                                                .ownerAnswers = answers})};
}

TEST(OverviewRows, AreTheDescriptionAndThePlanAsTheyCame)
{
    OverviewRows rows(rules());
    rows.setProject(projectWith(" a\n\n- b *c*  ", "1. d"));
    EXPECT_THAT(texts(rows, "title"), ElementsAre(u"Description", u"Delivery Plan"));
    EXPECT_THAT(texts(rows, "body"), ElementsAre(u" a\n\n- b *c*  ", u"1. d"));
}

TEST(OverviewRows, AnEmptyTextIsLikeAMissingOneAndBlanksAreAText)
{
    OverviewRows rows(rules());
    rows.setProject(projectWith("", {}));
    EXPECT_EQ(rows.rowCount(), 0);
    rows.setProject(projectWith("   ", ""));
    EXPECT_THAT(texts(rows, "title"), ElementsAre(u"Description"));
    EXPECT_THAT(texts(rows, "body"), ElementsAre(u"   "));
}

TEST(QuestionRows, TellAnsweredFromWaiting)
{
    QuestionRows rows(rules());
    rows.setProject(projectWith({}, {}, "1. a\n2. b", "1. yes"));
    EXPECT_FALSE(rows.isEmpty());
    EXPECT_THAT(texts(rows, "question"), ElementsAre(u"1. a", u"2. b"));
    EXPECT_TRUE(at(rows, 0, "isAnswered").toBool());
    EXPECT_TRUE(at(rows, 0, "showsAnswer").toBool());
    EXPECT_EQ(at(rows, 0, "answer"), u"yes"_qs);
    EXPECT_FALSE(at(rows, 1, "isAnswered").toBool());
    EXPECT_FALSE(at(rows, 1, "showsAnswer").toBool());
    EXPECT_TRUE(at(rows, 1, "showsState").toBool());
}

TEST(QuestionRows, AnswersAreNotMixedUpWhenTheProjectIsLoadedAnew)
{
    QuestionRows rows(rules());
    const QAbstractItemModelTester tester(&rows);
    rows.setProject(projectWith({}, {}, "1. a\n2. b\n3. c", ""));
    rows.setProject(projectWith({}, {}, "1. a\n2. b\n3. c", "2. yes"));
    EXPECT_THAT(texts(rows, "answer"), ElementsAre(u"", u"yes", u""));
    rows.setProject(projectWith({}, {}));
    EXPECT_TRUE(rows.isEmpty());
}

TEST(QuestionRows, OfLinesThatEndInCarriageReturnsShowNoEmptyOnes)
{
    QuestionRows rows(rules());
    rows.setProject(projectWith({}, {}, "1. When?\r\n2. Where?\r\n", "1. today\r\nat noon\r\n"));
    EXPECT_THAT(texts(rows, "question"), ElementsAre(u"1. When?", u"2. Where?"));
    EXPECT_THAT(texts(rows, "answer"), ElementsAre(u"today\nat noon", u""));
}

TEST(MessageRows, ShortenASenderThatNoLineHolds)
{
    MessageRows rows(rules());
    std::string sender = "agent smith ";
    while (sender.size() < 1'000'000) {
        sender += "x";
    }
    rows.show({{.id = "1", .sender = sender, .messageText = ""}});
    const QString shown = at(rows, 0, "sender").toString();
    EXPECT_EQ(shown.size(), 501);
    EXPECT_TRUE(shown.startsWith(QLatin1String("Agent Smith X")));
}

TEST(MessageRows, OnlyTheExactWordAgentIsTheAgent)
{
    MessageRows rows(rules());
    rows.show({{.id = "1", .sender = "agent", .messageText = "a"},
               {.id = "2", .sender = "Agent", .messageText = "b"},
               {.id = "3", .sender = "some client", .messageText = ""}});
    EXPECT_THAT(texts(rows, "sender"), ElementsAre(u"Agent", u"Agent", u"Some Client"));
    EXPECT_TRUE(at(rows, 0, "isAgent").toBool());
    EXPECT_FALSE(at(rows, 1, "isAgent").toBool());
    EXPECT_FALSE(at(rows, 2, "isAgent").toBool());
    EXPECT_THAT(texts(rows, "body"), ElementsAre(u"a", u"b", u""));
}

TEST(BidRows, ShowEveryBidThoughTheirIdentityIsTheSame)
{
    BidRows rows(rules());
    rows.show(std::make_shared<const std::vector<BidInfo>>(
        std::vector<BidInfo>{{.username = "a"}, {.username = "a"}, {}}));
    EXPECT_THAT(texts(rows, "username"), ElementsAre(u"@a", u"@a", u"@unknown"));
}

TEST(BidRows, TellWhoOnWhatTermsAndHowRated)
{
    BidRows rows(rules());
    rows.show(std::make_shared<const std::vector<BidInfo>>(
        std::vector<BidInfo>{{.username = "a",
                              .displayName = "A B",
                              .country = "Chile",
                              .rating = 4.96,
                              .reviews = 12,
                              .amount = 150,
                              .period = 7,
                              .description = "d"},
                             {.displayName = "", .country = ""}}));
    EXPECT_EQ(at(rows, 0, "displayName"), u"A B"_qs);
    EXPECT_EQ(at(rows, 0, "country"), u"Chile"_qs);
    EXPECT_EQ(at(rows, 0, "rating"), u"5.0"_qs);
    EXPECT_EQ(at(rows, 0, "reviews"), u"(12)"_qs);
    EXPECT_EQ(at(rows, 0, "amount"), u"$150.00"_qs);
    EXPECT_EQ(at(rows, 0, "period"), u"/ 7 days"_qs);
    EXPECT_EQ(at(rows, 0, "description"), u"d"_qs);
    EXPECT_EQ(at(rows, 1, "displayName"), QString());
    EXPECT_EQ(at(rows, 1, "country"), QString());
    EXPECT_EQ(at(rows, 1, "rating"), QString());
    EXPECT_EQ(at(rows, 1, "reviews"), QString());
    EXPECT_EQ(at(rows, 1, "amount"), u"$0.00"_qs);
    EXPECT_EQ(at(rows, 1, "period"), u"/ 0 days"_qs);
    EXPECT_EQ(at(rows, 1, "description"), QString());
}

TEST(BidRows, AreColouredAgainstOurAmountWhereverItStands)
{
    BidRows rows(rules());
    rows.show(std::make_shared<const std::vector<BidInfo>>(std::vector<BidInfo>{
        {.amount = 90}, {.amount = 110}, {.amount = 100}, {}, {.amount = 100, .isOurs = true}}));
    EXPECT_EQ(at(rows, 0, "amountColor").value<QColor>(), colors::red());
    EXPECT_EQ(at(rows, 1, "amountColor").value<QColor>(), colors::green());
    EXPECT_EQ(at(rows, 2, "amountColor").value<QColor>(), colors::white());
    EXPECT_EQ(at(rows, 3, "amountColor").value<QColor>(), colors::white());
}

TEST(BidRows, ANewAmountOfOursColoursTheRowsAnew)
{
    BidRows rows(rules());
    const QAbstractItemModelTester tester(&rows);
    const auto bids = [](OptionalNumber ours) {
        return std::make_shared<const std::vector<BidInfo>>(
            std::vector<BidInfo>{{.amount = 90}, {.amount = ours, .isOurs = true}});
    };
    rows.show(bids({}));
    EXPECT_EQ(at(rows, 0, "amountColor").value<QColor>(), colors::white());
    const QSignalSpy changed(&rows, &QAbstractItemModel::dataChanged);
    rows.show(bids(100));
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(at(rows, 0, "amountColor").value<QColor>(), colors::red());
}

TEST(BidRows, GiveOfALongProposalNoMoreThanFourLinesCanHold)
{
    BidRows rows(rules());
    rows.show(std::make_shared<const std::vector<BidInfo>>(
        std::vector<BidInfo>{{.description = std::string(1'000'000, 'x')}}));
    EXPECT_EQ(at(rows, 0, "description").toString().size(), 4000);
}

TEST(TimelineRows, ShowEventsThatAreAlikeEachInItsRow)
{
    TimelineRows rows(rules());
    rows.show({{.time = "t", .event = "e"}, {.time = "t", .event = "e"}});
    EXPECT_THAT(texts(rows, "event"), ElementsAre(u"e", u"e"));
}

TEST(TimelineRows, ShowDetailAndTimeWhereThereAreAny)
{
    TimelineRows rows(rules());
    rows.show({{.time = "2024-05-01T09:30:00Z", .event = "a", .detail = "d", .type = "bid"},
               {.time = "2024-05-01", .event = "b", .detail = ""},
               {.event = "c"}});
    EXPECT_THAT(texts(rows, "time"), ElementsAre(u"2024-05-01 09:30:00", u"2024-05-01", u""));
    EXPECT_TRUE(at(rows, 0, "showsDetail").toBool());
    EXPECT_TRUE(at(rows, 0, "hasTime").toBool());
    EXPECT_EQ(at(rows, 0, "dotColor").value<QColor>(), colors::accent());
    EXPECT_FALSE(at(rows, 1, "showsDetail").toBool());
    EXPECT_FALSE(at(rows, 2, "showsDetail").toBool());
    EXPECT_FALSE(at(rows, 2, "hasTime").toBool());
    EXPECT_EQ(at(rows, 2, "dotColor").value<QColor>(), colors::gray());
}

TEST(LogRows, ShowTypeTimeAndContent)
{
    LogRows rows(rules());
    rows.show({{.id = "1",
                .logType = "tool_call",
                .content = "a\n\tb",
                .createdAt = "2024-05-01T09:30:00.123Z"},
               {.id = "2", .logType = "info", .content = ""}});
    EXPECT_THAT(texts(rows, "logType"), ElementsAre(u"tool_call", u"info"));
    EXPECT_THAT(texts(rows, "time"), ElementsAre(u"2024-05-01 09:30:00", u""));
    EXPECT_FALSE(at(rows, 1, "hasTime").toBool());
    EXPECT_THAT(texts(rows, "body"), ElementsAre(u"a\n\tb", u""));
}

TEST(ReportRows, AMissingDateIsUnknownAndAnEmptyOneStays)
{
    ReportRows rows(rules());
    rows.show(
        {{.id = "1", .reportDate = "2024-05-01"}, {.id = "2"}, {.id = "3", .reportDate = ""}});
    EXPECT_THAT(texts(rows, "date"), ElementsAre(u"2024-05-01", u"Unknown date", u""));
    EXPECT_TRUE(at(rows, 2, "showsDate").toBool());
}

TEST(ReportRows, ShowWhatIsThereAndNotEmpty)
{
    ReportRows rows(rules());
    rows.show({{.id = "1", .commitDiffSummary = "c", .claudeMdDiff = "+d"},
               {.id = "2", .commitDiffSummary = "", .claudeMdDiff = "+d"},
               {.id = "3"}});
    EXPECT_TRUE(at(rows, 0, "commitsStart").toBool());
    EXPECT_TRUE(at(rows, 0, "changesStart").toBool());
    EXPECT_FALSE(at(rows, 1, "showsCommits").toBool());
    EXPECT_FALSE(at(rows, 1, "commitsStart").toBool());
    EXPECT_TRUE(at(rows, 1, "showsChanges").toBool());
    EXPECT_FALSE(at(rows, 2, "showsCommits").toBool());
    EXPECT_FALSE(at(rows, 2, "showsChanges").toBool());
}

TEST(DecisionRows, OnlyTheExactWordPendingIsPending)
{
    DecisionRows rows(rules());
    rows.show({{.id = "1", .question = "q", .answer = "early", .status = "pending"},
               {.id = "2", .question = "q", .answer = "a", .status = "Pending"},
               {.id = "3", .question = "q", .answer = "", .status = "answered"}});
    EXPECT_TRUE(at(rows, 0, "isPending").toBool());
    EXPECT_FALSE(at(rows, 0, "showsAnswer").toBool());
    EXPECT_FALSE(at(rows, 1, "isPending").toBool());
    EXPECT_TRUE(at(rows, 1, "showsAnswer").toBool());
    EXPECT_FALSE(at(rows, 2, "showsAnswer").toBool());
}

TEST(DecisionRows, TypedAnswersBelongToTheirDecision)
{
    DecisionRows rows(rules());
    const QAbstractItemModelTester tester(&rows);
    rows.show({{.id = "1", .question = "q", .status = "pending"},
               {.id = "2", .question = "q", .status = "pending"}});
    const QSignalSpy changed(&rows, &QAbstractItemModel::dataChanged);
    rows.setTypedAnswer(u"2"_qs, u"so"_qs);
    EXPECT_THAT(texts(rows, "typedAnswer"), ElementsAre(u"", u"so"));
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 1);
}

TEST(DecisionRows, ShortenTheTime)
{
    DecisionRows rows(rules());
    rows.show(
        {{.id = "1", .question = "q", .status = "s", .notifiedAt = "2024-05-01T09:30:00.123Z"},
         {.id = "2", .question = "q", .status = "s"}});
    EXPECT_THAT(texts(rows, "time"), ElementsAre(u"2024-05-01 09:30:00", u""));
    EXPECT_FALSE(at(rows, 1, "hasTime").toBool());
}

} // namespace
} // namespace trellisport
