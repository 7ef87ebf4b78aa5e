#include "Dashboard/DashboardCards.h"
#include "Presentation/Colors.h"

#include <gmock/gmock.h>

namespace trellisport {
namespace {

using ::testing::ElementsAre;

QStringList values(const DashboardData &data)
{
    QStringList texts;
    for (const StatCardData &card : statCards(data)) {
        texts << card.value;
    }
    return texts;
}

TEST(DashboardCards, AnEmptySummaryShowsZeroInEveryTile)
{
    EXPECT_THAT(values({{}, 0, 0, 0}), ElementsAre(u"0", u"0", u"0", u"0", u"0", u"0"));
}

TEST(DashboardCards, TilesStandInTheirOrderWithTheirLabelsAndColours)
{
    const QList<StatCardData> cards = statCards({{{"discovered", 1},
                                                  {"questions_sent", 2},
                                                  {"bid_placed", 3},
                                                  {"awarded", 4},
                                                  {"completed", 6},
                                                  {"rejected", 99}},
                                                 0,
                                                 0,
                                                 5});
    QStringList labels;
    QList<QColor> tints;
    for (const StatCardData &card : cards) {
        labels << card.label;
        tints << card.color;
    }
    EXPECT_THAT(labels, ElementsAre(u"Discovered", u"Questions", u"Bids Active", u"Awarded",
                                    u"Decisions", u"Completed"));
    EXPECT_THAT(tints, ElementsAre(colors::gray(), colors::yellow(), colors::accent(),
                                   colors::green(), colors::yellow(), colors::mint()));
    EXPECT_EQ(cards[0].value, u"1");
    EXPECT_EQ(cards[4].value, u"5");
    EXPECT_EQ(cards[5].value, u"6");
}

TEST(DashboardCards, NoPendingDecisionIsGrayAndOneIsYellow)
{
    const StatCardData none = statCards({{}, 0, 0, 0})[4];
    EXPECT_EQ(none.value, u"0");
    EXPECT_EQ(none.color, colors::gray());
    const StatCardData one = statCards({{}, 0, 0, 1})[4];
    EXPECT_EQ(one.value, u"1");
    EXPECT_EQ(one.color, colors::yellow());
}

TEST(DashboardCards, CountsAreWrittenWithoutGroupingAndWithTheirSign)
{
    const DashboardData data{{{"awarded", 1234567}, {"completed", -3}}, 0, 0, -1};
    EXPECT_THAT(values(data), ElementsAre(u"0", u"0", u"0", u"1234567", u"-1", u"-3"));
    EXPECT_EQ(statCards(data)[4].color, colors::gray());
}

TEST(DashboardCards, MoneyTilesShowTheirAmounts)
{
    const QList<RevenueCardData> cards = revenueCards({{}, 2500, 1234567.891, 0});
    ASSERT_EQ(cards.size(), 2);
    EXPECT_EQ(cards[0].title, u"Bids Pending");
    EXPECT_EQ(cards[0].amount, u"$2500.00");
    EXPECT_EQ(cards[0].color, colors::accent());
    EXPECT_EQ(cards[1].title, u"Total Earned");
    EXPECT_EQ(cards[1].amount, u"$1234567.89");
    EXPECT_EQ(cards[1].color, colors::mint());
}

} // namespace
} // namespace trellisport
