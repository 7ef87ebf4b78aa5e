#include "PracticeDesk.h"

#include <gmock/gmock.h>

namespace trellisport::practice {
namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::SizeIs;

/// Lets the agent bid as often as it is allowed to.
int placeAllBids(PracticeDesk &desk)
{
    int bids = 0;
    while (!desk.happen("bid").project.empty())
        ++bids;
    return bids;
}

std::size_t countWith(PracticeDesk &desk, const char *work)
{
    return desk.keeper().ask([&](Keeper::Desk &inside) {
        Ledger ledger(inside.store.database(), Random(0));
        return ledger.jobsWith(work, -1).size();
    });
}

TEST(Settings, AreReplacedWhole)
{
    PracticeDesk desk;
    const TextMap config{{"preview_mode", "false"},
                         {"", "empty key"},
                         {std::string("a\0b", 3), ""},
                         {"något", "annat\n🙂"}};
    const ServiceReply reply = desk.send("PUT", "/api/v1/config", encode(config));
    EXPECT_EQ(reply.status, 200);
    EXPECT_THAT(decode<TextMap>(reply.body), ElementsAre(Pair("status", "ok")));
    EXPECT_EQ(desk.read<TextMap>("/config"), config);
    desk.restart();
    EXPECT_EQ(desk.read<TextMap>("/config"), config);
}

TEST(Settings, StartWithTheFourKnownKeysAndOthers)
{
    PracticeDesk desk;
    const auto config = desk.read<TextMap>("/config");
    for (const char *key :
         {"preview_mode", "max_daily_bids", "daily_revenue_target", "max_concurrent_projects"})
        EXPECT_TRUE(config.contains(key)) << key;
    EXPECT_GT(config.size(), 4U);
}

TEST(Settings, EmptyMapIsTaken)
{
    PracticeDesk desk;
    EXPECT_EQ(desk.send("PUT", "/api/v1/config", "{}").status, 200);
    EXPECT_EQ(desk.get("/api/v1/config").body, "{}");
}

TEST(Settings, PreviewModeLeavesOneActiveBid)
{
    PracticeDesk desk;
    ASSERT_GT(desk.inStage("bid_placed").size(), 1U);
    const auto planned = desk.inStage("plan_sent").size();
    const auto bids = desk.inStage("bid_placed").size();
    ASSERT_EQ(desk.configure({{"preview_mode", "true"}}).status, 200);

    const auto left = desk.inStage("bid_placed");
    ASSERT_THAT(left, SizeIs(1));
    EXPECT_DOUBLE_EQ(desk.read<DashboardData>("/dashboard").bidsPending,
                     left.front().bidAmount.value());
    EXPECT_EQ(desk.inStage("plan_sent").size(), planned + bids - 1);
    EXPECT_EQ(placeAllBids(desk), 0);
}

TEST(Settings, PreviewModeAllowsTheNextBidWhenThereIsNone)
{
    PracticeDesk desk;
    ASSERT_EQ(desk.configure({{"preview_mode", "TRUE"}}).status, 200);
    ASSERT_FALSE(desk.happen("reject").project.empty());
    EXPECT_EQ(placeAllBids(desk), 1);
}

TEST(Settings, WithdrawnBidIsGoneFromTheBids)
{
    PracticeDesk desk;
    const auto before = desk.inStage("bid_placed");
    ASSERT_EQ(desk.configure({{"preview_mode", "true"}}).status, 200);
    const auto left = desk.inStage("bid_placed").front().id;
    for (const Project &project : before) {
        if (project.id == left)
            continue;
        const std::string root = "/projects/" + std::string(project.id.view());
        EXPECT_FALSE(desk.read<ProjectDetail>(root).bidAmount);
        for (const BidInfo &bid : desk.read<std::vector<BidInfo>>(root + "/bids"))
            EXPECT_NE(bid.isOurs, true);
    }
}

TEST(Settings, DailyBidsAreLimited)
{
    PracticeDesk desk;
    ASSERT_EQ(desk.configure({{"max_daily_bids", "0"}}).status, 200);
    EXPECT_EQ(placeAllBids(desk), 0);
    const auto today = desk.keeper().ask([](Keeper::Desk &inside) {
        Ledger ledger(inside.store.database(), Random(0));
        return ledger.ourBidsSince(dayOf(inside.clock.now()));
    });
    ASSERT_EQ(desk.configure({{"max_daily_bids", std::to_string(today + 2)}}).status, 200);
    EXPECT_EQ(placeAllBids(desk), 2);
}

TEST(Settings, NoBidsOnADayThatHasEarnedItsTarget)
{
    PracticeDesk desk;
    ASSERT_EQ(desk.configure({{"daily_revenue_target", "1"}}).status, 200);
    ASSERT_FALSE(desk.happen("complete").project.empty());
    EXPECT_EQ(placeAllBids(desk), 0);
    ASSERT_EQ(desk.configure({{"daily_revenue_target", "1000000.50"}}).status, 200);
    EXPECT_GT(placeAllBids(desk), 0);
}

TEST(Settings, FewerConcurrentProjectsPauseSome)
{
    PracticeDesk desk;
    const auto active = countWith(desk, work::active);
    const auto blocked = countWith(desk, work::blocked);
    ASSERT_GT(active, 1U);
    ASSERT_EQ(desk.configure({{"max_concurrent_projects", std::to_string(blocked + 1)}}).status,
              200);
    EXPECT_EQ(countWith(desk, work::active), 1U);
    EXPECT_EQ(countWith(desk, work::paused), active - 1);
}

TEST(Settings, MoreConcurrentProjectsStartTheWaitingOnes)
{
    PracticeDesk desk;
    ASSERT_EQ(desk.configure({{"max_concurrent_projects", "0"}}).status, 200);
    const auto resting = countWith(desk, work::paused) + countWith(desk, work::queued);
    ASSERT_GT(countWith(desk, work::queued), 0U);
    EXPECT_EQ(countWith(desk, work::active), 0U);
    ASSERT_EQ(desk.configure({{"max_concurrent_projects", "100"}}).status, 200);
    EXPECT_EQ(countWith(desk, work::active), resting);
    EXPECT_EQ(countWith(desk, work::queued) + countWith(desk, work::paused), 0U);
}

TEST(Settings, AwardedProjectWaitsForAPlace)
{
    PracticeDesk desk;
    const auto waiting = countWith(desk, work::queued);
    ASSERT_FALSE(desk.happen("award").project.empty());
    EXPECT_EQ(countWith(desk, work::queued), waiting + 1);
}

struct PolicyCase {
    TextMap config;
    Policy policy;
};

TEST(Policy, ReadsTextsAsTheConsoleShowsThem)
{
    const std::vector<PolicyCase> cases{
        {{}, {true, 10, 10000, 5}},
        {{{"preview_mode", "false"}}, {false, 10, 10000, 5}},
        {{{"preview_mode", "True"}}, {true, 10, 10000, 5}},
        {{{"preview_mode", "1"}}, {false, 10, 10000, 5}},
        {{{"max_daily_bids", ""}, {"max_concurrent_projects", "many"}}, {true, 10, 10000, 5}},
        {{{"max_daily_bids", "-3"}, {"daily_revenue_target", "12.5"}}, {true, 10, 12.5, 5}},
        {{{"max_daily_bids", " 7 "}, {"max_concurrent_projects", "0"}}, {true, 7, 10000, 0}},
        {{{"daily_revenue_target", "nan"}}, {true, 10, 10000, 5}},
        {{{"max_daily_bids", "99999999999999999999"}}, {true, 10, 10000, 5}},
    };
    for (const auto &[config, policy] : cases) {
        const Policy read = Policy::of(config);
        EXPECT_EQ(read.preview, policy.preview) << encode(config);
        EXPECT_EQ(read.maxDailyBids, policy.maxDailyBids) << encode(config);
        EXPECT_EQ(read.dailyRevenueTarget, policy.dailyRevenueTarget) << encode(config);
        EXPECT_EQ(read.maxConcurrentProjects, policy.maxConcurrentProjects) << encode(config);
    }
}

} // namespace
} // namespace trellisport::practice
