#include "ServiceAccess/Records.h"

#include <gtest/gtest.h>

#include <concepts>
#include <limits>
#include <type_traits>

namespace trellisport {
namespace {

template <typename T>
concept HasIdentity = requires(const T &record)
{
    {
        record.identity()
        } -> std::convertible_to<Text>;
};

TEST(Identity, SevenRecordsHaveOne)
{
    EXPECT_TRUE(HasIdentity<Project>);
    EXPECT_TRUE(HasIdentity<Message>);
    EXPECT_TRUE(HasIdentity<Decision>);
    EXPECT_TRUE(HasIdentity<DevLog>);
    EXPECT_TRUE(HasIdentity<Report>);
    EXPECT_TRUE(HasIdentity<BidInfo>);
    EXPECT_TRUE(HasIdentity<TimelineEvent>);
    EXPECT_FALSE(HasIdentity<ProjectDetail>);
    EXPECT_FALSE(HasIdentity<DashboardData>);
    EXPECT_FALSE(HasIdentity<AppConfig>);
}

TEST(Identity, IsTheIdWhereThereIsOne)
{
    EXPECT_EQ((Project{.id = "p", .title = "t"}).identity(), "p");
    EXPECT_EQ((Message{.id = "m", .sender = "s", .messageText = "x"}).identity(), "m");
    EXPECT_EQ((Decision{.id = "d", .question = "q", .status = "pending"}).identity(), "d");
    EXPECT_EQ((DevLog{.id = "l", .logType = "info", .content = "c"}).identity(), "l");
    EXPECT_EQ((Report{.id = "r"}).identity(), "r");
}

TEST(Identity, OfBidIsTheBiddersNumberOrZero)
{
    EXPECT_EQ(BidInfo{}.identity(), "0");
    EXPECT_EQ((BidInfo{.bidderId = 0}).identity(), "0");
    EXPECT_EQ((BidInfo{.bidderId = 4711}).identity(), "4711");
    EXPECT_EQ((BidInfo{.bidderId = std::numeric_limits<std::int64_t>::min()}).identity(),
              "-9223372036854775808");
}

TEST(Identity, OfEventIsTimeAndTitle)
{
    EXPECT_EQ((TimelineEvent{.event = "Created"}).identity(), "-Created");
    EXPECT_EQ((TimelineEvent{.time = "2026-01-02", .event = "Created"}).identity(),
              "2026-01-02-Created");
    EXPECT_EQ((TimelineEvent{.time = "", .event = ""}).identity(), "-");
}

TEST(Records, FieldsAreConstants)
{
    EXPECT_FALSE(std::is_copy_assignable_v<Project>);
    EXPECT_FALSE(std::is_copy_assignable_v<DashboardData>);
    EXPECT_TRUE(std::is_copy_constructible_v<Project>);
    EXPECT_TRUE(std::is_aggregate_v<Project>);
}

TEST(Config, StartsWithEverythingAbsent)
{
    const AppConfig config;
    EXPECT_FALSE(config.previewMode);
    EXPECT_FALSE(config.maxDailyBids);
    EXPECT_FALSE(config.dailyRevenueTarget);
    EXPECT_FALSE(config.maxConcurrentProjects);
    EXPECT_EQ(config.map(), TextMap{});
}

TEST(Config, TakesItsKeysFromAMap)
{
    const AppConfig one(TextMap{{"max_daily_bids", "5"}});
    EXPECT_EQ(one.maxDailyBids, "5");
    EXPECT_FALSE(one.previewMode);
    EXPECT_FALSE(one.dailyRevenueTarget);
    EXPECT_FALSE(one.maxConcurrentProjects);

    const AppConfig all(TextMap{{"preview_mode", "true"},
                                {"max_daily_bids", ""},
                                {"daily_revenue_target", "100"},
                                {"max_concurrent_projects", "2"},
                                {"unlisted", "x"}});
    EXPECT_EQ(all.previewMode, "true");
    EXPECT_EQ(all.maxDailyBids, "");
    EXPECT_EQ(all.dailyRevenueTarget, "100");
    EXPECT_EQ(all.maxConcurrentProjects, "2");
}

TEST(Config, FieldsChangeAndGoBackIntoAMap)
{
    AppConfig config(TextMap{{"preview_mode", "true"}, {"unlisted", "x"}});
    config.previewMode = "false";
    config.maxConcurrentProjects = Text("3");
    EXPECT_EQ(config.map(), (TextMap{{"max_concurrent_projects", "3"}, {"preview_mode", "false"}}));
    config.previewMode = std::nullopt;
    EXPECT_EQ(config.map(), (TextMap{{"max_concurrent_projects", "3"}}));
    EXPECT_FALSE(std::is_aggregate_v<AppConfig>);
}

} // namespace
} // namespace trellisport
