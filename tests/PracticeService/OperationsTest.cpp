#include "PracticeDesk.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

namespace trellisport::practice {
namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::SizeIs;

std::string headerOf(const ServiceReply &reply, const std::string &name)
{
    for (const auto &[key, value] : reply.headers) {
        if (key == name)
            return value;
    }
    return {};
}

TEST(Operations, DashboardAddsUpTheProjects)
{
    PracticeDesk desk;
    const auto dashboard = desk.read<DashboardData>("/dashboard");
    const auto projects = desk.read<std::vector<Project>>("/projects");

    CountMap counts;
    double pending = 0;
    double earned = 0;
    for (const Project &project : projects) {
        if (!project.bidStatus.has_value())
            continue;
        ++counts[*project.bidStatus];
        pending += project.bidStatus == "bid_placed" ? project.bidAmount.value() : 0;
        earned += project.bidStatus == "completed" ? project.bidAmount.value() : 0;
    }
    EXPECT_EQ(dashboard.statusCounts, counts);
    EXPECT_DOUBLE_EQ(dashboard.bidsPending, pending);
    EXPECT_DOUBLE_EQ(dashboard.totalEarned, earned);
    EXPECT_EQ(static_cast<std::size_t>(dashboard.pendingDecisions), desk.openDecisions().size());
}

TEST(Operations, PortfolioHasProjectsInEveryStage)
{
    PracticeDesk desk;
    for (const char *status : {"discovered", "questions_sent", "answers_received", "plan_sent",
                               "bid_placed", "awarded", "rejected", "completed"})
        EXPECT_THAT(desk.inStage(status), SizeIs(testing::Ge(3U))) << status;
    EXPECT_THAT(desk.read<std::vector<Project>>("/projects"), SizeIs(testing::Ge(24U)));
}

TEST(Operations, StatusFilterGivesThatStatusOnly)
{
    PracticeDesk desk;
    const auto projects = desk.read<std::vector<Project>>("/projects");
    const auto awarded = desk.inStage("awarded");
    EXPECT_EQ(static_cast<std::size_t>(std::count_if(
                  projects.begin(), projects.end(),
                  [](const Project &project) { return project.bidStatus == "awarded"; })),
              awarded.size());
    for (const Project &project : awarded)
        EXPECT_EQ(project.bidStatus, "awarded");
}

TEST(Operations, UnknownStatusFilterGivesAnEmptyList)
{
    PracticeDesk desk;
    EXPECT_EQ(desk.get("/api/v1/projects?status=Awarded").body, "[]");
}

TEST(Operations, EmptyStatusFilterFiltersNothing)
{
    PracticeDesk desk;
    EXPECT_EQ(desk.get("/api/v1/projects?status=").body, desk.get("/api/v1/projects").body);
}

TEST(Operations, DetailAgreesWithTheList)
{
    PracticeDesk desk;
    for (const Project &listed : desk.read<std::vector<Project>>("/projects")) {
        const auto detail = desk.read<ProjectDetail>("/projects/" + std::string(listed.id.view()));
        EXPECT_EQ(detail.id, listed.id);
        EXPECT_EQ(detail.title, listed.title);
        EXPECT_EQ(detail.bidStatus, listed.bidStatus);
        EXPECT_EQ(detail.bidAmount, listed.bidAmount);
        EXPECT_EQ(detail.updatedAt, listed.updatedAt);
    }
}

TEST(Operations, EveryListOfEveryProjectDecodes)
{
    PracticeDesk desk;
    std::set<std::string> logTypes;
    std::set<std::string> eventTypes;
    std::set<std::string> senders;
    std::set<std::string> decisionStates;
    std::size_t reports = 0;
    std::size_t ourBids = 0;
    std::size_t bareBids = 0;
    for (const Project &project : desk.read<std::vector<Project>>("/projects")) {
        const std::string root = "/projects/" + std::string(project.id.view());
        for (const auto &log : desk.read<std::vector<DevLog>>(root + "/logs"))
            logTypes.emplace(log.logType.view());
        for (const auto &event : desk.read<std::vector<TimelineEvent>>(root + "/timeline"))
            eventTypes.emplace(event.type.value().view());
        for (const auto &message : desk.read<std::vector<Message>>(root + "/messages"))
            senders.emplace(message.sender.view());
        for (const auto &decision : desk.read<std::vector<Decision>>(root + "/decisions"))
            decisionStates.emplace(decision.status.view());
        for (const auto &bid : desk.read<std::vector<BidInfo>>(root + "/bids")) {
            ourBids += bid.isOurs == true ? 1 : 0;
            bareBids += !bid.amount || !bid.rating || !bid.country.has_value() ? 1 : 0;
        }
        reports += desk.read<std::vector<Report>>(root + "/reports").size();
    }
    EXPECT_THAT(logTypes,
                ElementsAre("claude_response", "error", "info", "tool_call", "tool_result"));
    for (const char *type :
         {"discovery", "analysis", "bid", "response", "plan", "awarded", "dev", "complete"})
        EXPECT_TRUE(eventTypes.contains(type)) << type;
    EXPECT_THAT(senders, ElementsAre("agent", "client"));
    EXPECT_THAT(decisionStates, ElementsAre("answered", "expired", "pending"));
    EXPECT_GT(reports, 20U);
    EXPECT_GE(ourBids, 10U);
    EXPECT_GT(bareBids, 0U);
}

TEST(Operations, OursIsTheBidThatTheProjectNames)
{
    PracticeDesk desk;
    for (const Project &project : desk.inStage("bid_placed")) {
        const auto bids = desk.read<std::vector<BidInfo>>("/projects/" +
                                                          std::string(project.id.view()) + "/bids");
        const auto ours = std::find_if(bids.begin(), bids.end(),
                                       [](const BidInfo &bid) { return bid.isOurs == true; });
        ASSERT_NE(ours, bids.end());
        EXPECT_EQ(ours->amount, project.bidAmount);
    }
}

TEST(Operations, RepliesAreJsonThatCanBeValidated)
{
    PracticeDesk desk;
    const ServiceReply reply = desk.get("/api/v1/projects");
    EXPECT_EQ(reply.contentType, "application/json");
    EXPECT_EQ(headerOf(reply, "Cache-Control"), "no-cache");
    EXPECT_THAT(headerOf(reply, "ETag"), testing::MatchesRegex("\"[0-9a-f]+\""));
}

TEST(Operations, KnownTagGivesNotModified)
{
    PracticeDesk desk;
    ServiceRequest request;
    request.method = "GET";
    request.path = "/api/v1/projects";
    const std::string tag = headerOf(desk.handle(request), "ETag");
    for (const std::string &known : {tag, "\"other\", W/" + tag, std::string("*")}) {
        request.ifNoneMatch = known;
        const ServiceReply reply = desk.handle(request);
        EXPECT_EQ(reply.status, 304) << known;
        EXPECT_TRUE(reply.body.empty()) << known;
        EXPECT_EQ(headerOf(reply, "ETag"), tag) << known;
    }
}

TEST(Operations, TagChangesWithTheContent)
{
    PracticeDesk desk;
    const std::string before = headerOf(desk.get("/api/v1/dashboard"), "ETag");
    ASSERT_FALSE(desk.happen("award").project.empty());
    EXPECT_NE(headerOf(desk.get("/api/v1/dashboard"), "ETag"), before);
}

TEST(Operations, DeviceTokensAreKeptOnceEachAcrossARestart)
{
    PracticeDesk desk;
    for (const char *token : {"00ab10", "ff", "00ab10"}) {
        const auto reply =
            desk.send("POST", "/api/v1/devices", encode(TextMap{{"device_token", token}}));
        EXPECT_EQ(reply.status, 200);
        EXPECT_THAT(decode<TextMap>(reply.body), ElementsAre(Pair("status", "ok")));
    }
    desk.restart();
    EXPECT_THAT(desk.keeper().ask([](Keeper::Desk &inside) { return inside.store.devices(); }),
                testing::UnorderedElementsAre("00ab10", "ff"));
}

} // namespace
} // namespace trellisport::practice
