#include "Presentation/StatusStyle.h"

#include "Platform/Platform.h"
#include "Presentation/Colors.h"

#include <gtest/gtest.h>

#include <string>

namespace trellisport {
namespace {

const platform::TextRules &rules()
{
    return platform::Platform::current().textRules();
}

TEST(StatusStyle, EveryStageHasItsColour)
{
    EXPECT_EQ(statusColor("discovered"), colors::gray());
    EXPECT_EQ(statusColor("questions_sent"), colors::yellow());
    EXPECT_EQ(statusColor("answers_received"), colors::orange());
    EXPECT_EQ(statusColor("plan_sent"), colors::purple());
    EXPECT_EQ(statusColor("bid_placed"), QColor(59, 130, 246));
    EXPECT_EQ(statusColor("awarded"), colors::green());
    EXPECT_EQ(statusColor("rejected"), colors::red());
    EXPECT_EQ(statusColor("completed"), colors::mint());
}

TEST(StatusStyle, EveryOtherWordIsGray)
{
    for (const char *status : {"unknown", "pending", "", "awarded ", "Awarded"}) {
        EXPECT_EQ(statusColor(status), colors::gray()) << status;
    }
}

TEST(StatusStyle, AStatusInOtherLetterCaseIsGrayAndReadsTheSame)
{
    EXPECT_EQ(statusColor("BID_PLACED"), colors::gray());
    EXPECT_EQ(statusLabel("BID_PLACED", rules()), "Bid Placed");
}

TEST(StatusStyle, TheLabelHasBlanksAndCapitals)
{
    EXPECT_EQ(statusLabel("bid_placed", rules()), "Bid Placed");
    EXPECT_EQ(statusLabel("questions_sent", rules()), "Questions Sent");
    EXPECT_EQ(statusLabel("unknown", rules()), "Unknown");
    EXPECT_EQ(statusLabel("awarded", rules()), "Awarded");
}

} // namespace
} // namespace trellisport
