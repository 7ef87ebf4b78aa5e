#include "Presentation/Colors.h"
#include "ProjectDetail/Development/TimelineRows.h"
#include "ProjectDetail/Logs/LogTypeStyle.h"

#include <gtest/gtest.h>

namespace trellisport {
namespace {

TEST(TimelineColor, FollowsTheTable)
{
    EXPECT_EQ(timelineColor("discovery"), colors::gray());
    EXPECT_EQ(timelineColor("analysis"), colors::purple());
    EXPECT_EQ(timelineColor("bid"), colors::accent());
    EXPECT_EQ(timelineColor("response"), colors::yellow());
    EXPECT_EQ(timelineColor("plan"), colors::cyan());
    EXPECT_EQ(timelineColor("awarded"), colors::green());
    EXPECT_EQ(timelineColor("dev"), colors::indigo());
    EXPECT_EQ(timelineColor("complete"), colors::mint());
}

TEST(TimelineColor, IsGrayForABidWithACapitalAndForNoType)
{
    EXPECT_EQ(timelineColor("Bid"), colors::gray());
    EXPECT_EQ(timelineColor(""), colors::gray());
    EXPECT_EQ(timelineColor("bids"), colors::gray());
}

TEST(LogTypeStyle, FollowsTheTable)
{
    EXPECT_EQ(logTypeColor("tool_call"), colors::blue());
    EXPECT_EQ(logTypeColor("tool_result"), colors::cyan());
    EXPECT_EQ(logTypeColor("claude_response"), colors::purple());
    EXPECT_EQ(logTypeColor("error"), colors::red());
    EXPECT_EQ(logTypeColor("info"), colors::gray());
}

TEST(LogTypeStyle, AnErrorWithACapitalIsGrayAndReadsAsItIs)
{
    EXPECT_EQ(logTypeColor("Error"), colors::gray());
    EXPECT_EQ(LogTypeStyle::label(QStringLiteral("Error")), u"Error");
}

TEST(LogTypeStyle, ALabelHasBlanksAndKeepsItsCase)
{
    EXPECT_EQ(LogTypeStyle::label(QStringLiteral("tool_call")), u"tool call");
    EXPECT_EQ(LogTypeStyle::label(QStringLiteral("claude_response")), u"claude response");
    EXPECT_EQ(LogTypeStyle::label(QStringLiteral("build_step")), u"build step");
}

} // namespace
} // namespace trellisport
