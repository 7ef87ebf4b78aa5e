#include "Platform/Linux/HttpDate.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace trellisport::platform {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

constexpr sys_seconds sample = sys_days(1994y / November / 6) + 8h + 49min + 37s;

TEST(HttpDate, ReadsTheCurrentLayout)
{
    EXPECT_EQ(parseHttpDate("Sun, 06 Nov 1994 08:49:37 GMT"), sample);
}

TEST(HttpDate, ReadsTheLayoutWithATwoDigitYear)
{
    EXPECT_EQ(parseHttpDate("Sunday, 06-Nov-94 08:49:37 GMT"), sample);
    EXPECT_EQ(parseHttpDate("Tuesday, 06-Nov-29 08:49:37 GMT"),
              sys_days(2029y / November / 6) + 8h + 49min + 37s);
}

TEST(HttpDate, ReadsTheLayoutWithTheYearLast)
{
    EXPECT_EQ(parseHttpDate("Sun Nov  6 08:49:37 1994"), sample);
    EXPECT_EQ(parseHttpDate("Wed Nov 16 08:49:37 1994"), sample + days(10));
}

TEST(HttpDate, ReadsALeapDayAndALeapSecond)
{
    EXPECT_EQ(parseHttpDate("Thu, 29 Feb 2024 23:59:60 GMT"), sys_days(2024y / March / 1));
}

TEST(HttpDate, RefusesWhatIsNoDate)
{
    for (const char *text : {"",
                             "0",
                             "-1",
                             "now",
                             "Sun, 06 Nov 1994 08:49:37",
                             "Sun, 06 Nov 1994 08:49:37 UTC",
                             "Sun, 6 Nov 1994 08:49:37 GMT",
                             "Sun, 06 Nov 94 08:49:37 GMT",
                             "Sun, 31 Feb 2025 08:49:37 GMT",
                             "Sun, 00 Nov 1994 08:49:37 GMT",
                             "Sun, 06 Nov 1994 24:00:00 GMT",
                             "Sun, 06 Nov 1994 08:60:00 GMT",
                             "Sun, 06 Nov 1994 08:49:61 GMT",
                             "Sun, 06 nov 1994 08:49:37 GMT",
                             "Sun, 06 Nov 1994 08:49:37 GMT ",
                             " Sun, 06 Nov 1994 08:49:37 GMT",
                             "Sun, 06 Nov 1994 08:49:-7 GMT",
                             "Sunday, 06-Nov-1994 08:49:37 GMT",
                             "Sun Nov 6 08:49:37 1994",
                             "Sun Nov  6 08:49:37 94"}) {
        EXPECT_FALSE(parseHttpDate(text)) << text;
    }
}

TEST(HttpDate, RefusesEveryBeginningOfADate)
{
    const std::string date = "Sun, 06 Nov 1994 08:49:37 GMT";
    for (std::size_t length = 0; length < date.size(); ++length) {
        EXPECT_FALSE(parseHttpDate(date.substr(0, length))) << length;
    }
}

} // namespace
} // namespace trellisport::platform
