#include "PracticeService/Moment.h"

#include <gtest/gtest.h>

namespace trellisport::practice {
namespace {

TEST(Moment, IsWrittenAsIsoTextInUtc)
{
    EXPECT_EQ(isoText(Moment()), "1970-01-01T00:00:00Z");
    EXPECT_EQ(isoText(Moment(seconds(1'709'210'045))), "2024-02-29T12:34:05Z");
    EXPECT_EQ(dayText(Moment(seconds(1'709'210'045))), "2024-02-29");
}

TEST(Moment, IsReadBackFromItsText)
{
    for (const std::int64_t second : {0LL, 1LL, 951'782'399LL, 1'709'210'045LL, 4'102'444'800LL})
        EXPECT_EQ(momentOf(isoText(Moment(seconds(second)))), Moment(seconds(second)));
}

TEST(Moment, OtherTextsAreNone)
{
    for (const char *text :
         {"", "2024-02-29", "2024-02-30T00:00:00Z", "2024-13-01T00:00:00Z", "2024-01-01T24:00:00Z",
          "2024-01-01T00:60:00Z", "2024-01-01 00:00:00Z", "2024-01-01T00:00:00+",
          "x024-01-01T00:00:00Z", "2024-01-01T00:00:00Zx", "2024-0x-01T00:00:00Z"})
        EXPECT_FALSE(momentOf(text)) << text;
}

TEST(Moment, DayBeginsAtMidnight)
{
    EXPECT_EQ(isoText(dayOf(Moment(seconds(1'709'210'045)))), "2024-02-29T00:00:00Z");
}

} // namespace
} // namespace trellisport::practice
