#include "DecodingSupport.h"

#include <vector>

namespace trellisport {
namespace {

using Kind = DecodingError::Kind;

TEST(Records, ProjectWithOnlyIdAndTitleDecodes)
{
    const auto project = decode<Project>(R"({"id":"p1","title":"Web shop"})");
    EXPECT_EQ(project, (Project{.id = "p1", .title = "Web shop"}));
    EXPECT_FALSE(project.refNumber);
    EXPECT_FALSE(project.freelancerProjectId);
    EXPECT_FALSE(project.description);
    EXPECT_FALSE(project.bidAmount);
    EXPECT_FALSE(project.bidStatus);
    EXPECT_FALSE(project.ownerUsername);
    EXPECT_FALSE(project.githubRepoUrl);
    EXPECT_FALSE(project.createdAt);
    EXPECT_FALSE(project.updatedAt);
}

TEST(Records, ProjectWithoutTitleFails)
{
    expectFailure<Project>(R"({"id":"p1"})", Kind::KeyMissing, "title");
}

TEST(Records, ProjectDecodesEveryField)
{
    const auto project = decode<Project>(R"({
        "id": "p1", "ref_number": "R-7", "freelancer_project_id": 39112233,
        "title": "Web shop", "description": "With a cart", "bid_amount": 250.5,
        "bid_status": "bid_placed", "owner_username": "client77",
        "github_repo_url": "https://git.example/p1",
        "created_at": "2026-01-02T03:04:05Z", "updated_at": "2026-01-03"})");
    EXPECT_EQ(project, (Project{"p1", "R-7", 39112233, "Web shop", "With a cart", 250.5,
                                "bid_placed", "client77", "https://git.example/p1",
                                "2026-01-02T03:04:05Z", "2026-01-03"}));
}

TEST(Records, ProjectDetailDecodesEveryField)
{
    const auto detail = decode<ProjectDetail>(R"({
        "updated_at": "u", "created_at": "c", "github_repo_url": "g", "owner_username": "o",
        "bid_status": "awarded", "bid_amount": 1, "owner_answers": "a", "questionnaire": "q",
        "delivery_plan": "p", "project_md": "m", "description": "d", "title": "t",
        "freelancer_project_id": -5, "ref_number": "r", "id": "i"})");
    EXPECT_EQ(detail, (ProjectDetail{"i", "r", -5, "t", "d", "m", "p", "q", "a", 1.0, "awarded",
                                     "o", "g", "c", "u"}));
}

TEST(Records, EveryOtherRecordDecodesEveryField)
{
    EXPECT_EQ(
        decode<Message>(R"({"id":"m","sender":"agent","message_text":"Hello","created_at":"now"})"),
        (Message{"m", "agent", "Hello", "now"}));
    EXPECT_EQ(decode<Decision>(R"({"id":"d","question":"Bid?","answer":"yes","status":"answered",
                  "timeout_minutes":30,"notified_at":"n","answered_at":"a"})"),
              (Decision{"d", "Bid?", "yes", "answered", 30, "n", "a"}));
    EXPECT_EQ(decode<DashboardData>(R"({"status_counts":{"awarded":2,"discovered":0},
                  "bids_pending":1250.75,"total_earned":9000,"pending_decisions":3})"),
              (DashboardData{{{"awarded", 2}, {"discovered", 0}}, 1250.75, 9000.0, 3}));
    EXPECT_EQ(decode<BidInfo>(R"({"bidder_id":7,"username":"u","display_name":"D","country":"PT",
                  "rating":4.9,"reviews":12,"amount":300,"period":14,"description":"t",
                  "is_ours":true})"),
              (BidInfo{7, "u", "D", "PT", 4.9, 12, 300.0, 14, "t", true}));
    EXPECT_EQ(decode<TimelineEvent>(R"({"time":"t","event":"e","detail":"d","type":"commit"})"),
              (TimelineEvent{"t", "e", "d", "commit"}));
    EXPECT_EQ(decode<DevLog>(R"({"id":"l","log_type":"error","content":"c","created_at":"a"})"),
              (DevLog{"l", "error", "c", "a"}));
    EXPECT_EQ(decode<Report>(R"({"id":"r","report_date":"2026-01-02","commit_diff_summary":"s",
                  "claude_md_diff":"d","artifact_links":["a",""],"created_at":"c"})"),
              (Report{"r", "2026-01-02", "s", "d", std::vector<Text>{"a", ""}, "c"}));
}

TEST(Records, TextWhereIntegerBelongsFails)
{
    expectFailure<Project>(R"({"id":"p","title":"t","freelancer_project_id":"123"})",
                           Kind::TypeMismatch, "freelancer_project_id");
}

TEST(Records, IntegerIsTakenForNumber)
{
    const auto project = decode<Project>(R"({"id":"p","title":"t","bid_amount":250})");
    EXPECT_EQ(project.bidAmount, 250.0);
}

TEST(Records, NullAnswerIsAbsentButNullStatusFails)
{
    const auto decision =
        decode<Decision>(R"({"id":"d","question":"q","answer":null,"status":"pending"})");
    EXPECT_FALSE(decision.answer);
    expectFailure<Decision>(R"({"id":"d","question":"q","answer":null,"status":null})",
                            Kind::ValueMissing, "status");
}

TEST(Records, DashboardNeedsPendingDecisions)
{
    expectFailure<DashboardData>(R"({"status_counts":{},"bids_pending":1,"total_earned":2})",
                                 Kind::KeyMissing, "pending_decisions");
}

TEST(Records, DashboardWithoutProjectsHasNoCounts)
{
    const auto data = decode<DashboardData>(
        R"({"status_counts":{},"bids_pending":1,"total_earned":2,"pending_decisions":0})");
    EXPECT_TRUE(data.statusCounts.empty());
}

TEST(Records, EmptyBidDecodesWithEverythingAbsent)
{
    EXPECT_EQ(decode<BidInfo>("{}"), BidInfo{});
}

TEST(Records, LinksThatAreNoListFail)
{
    expectFailure<Report>(R"({"id":"r","artifact_links":"https://a.example"})", Kind::TypeMismatch,
                          "artifact_links");
    expectFailure<Report>(R"({"id":"r","artifact_links":["a",1]})", Kind::TypeMismatch,
                          "artifact_links[1]");
    expectFailure<Report>(R"({"id":"r","artifact_links":["a",null]})", Kind::ValueMissing,
                          "artifact_links[1]");
}

TEST(Records, EmptyTextsAreNotAbsent)
{
    const auto project = decode<Project>(R"({"id":"","title":"","description":""})");
    EXPECT_EQ(project.id, "");
    ASSERT_TRUE(project.description);
    EXPECT_EQ(*project.description, "");
    EXPECT_EQ(decode<Report>(R"({"id":"r","artifact_links":[]})").artifactLinks,
              std::vector<Text>{});
}

TEST(Records, UnknownKeysAreIgnoredWhateverTheyHold)
{
    const Project expected{.id = "p", .title = "t"};
    for (const std::string &value :
         {std::string("null"), std::string("1e400"), std::string("[{},[],\"\"]"),
          std::string(R"("\ud800")"), "1" + std::string(400, '0'), std::string("{\"id\":5}")}) {
        std::string json = "{" + member("Id", value) + R"(,"id":"p",)";
        json += member("idx", value) + R"(,"title":"t",)" + member("", value) + '}';
        EXPECT_EQ(decode<Project>(json), expected) << value;
    }
}

TEST(Records, KeysMatchExactly)
{
    expectFailure<Project>(R"({"ID":"p","title":"t"})", Kind::KeyMissing, "id");
    expectFailure<Project>(R"({"id ":"p","title":"t"})", Kind::KeyMissing, "id");
    EXPECT_FALSE(decode<Project>(R"({"id":"p","title":"t","bidStatus":"awarded"})").bidStatus);
    EXPECT_EQ(decode<Project>(R"({"\u0069d":"p","t\u0069tle":"t"})").id, "p")
        << "escaped or not, it is the same key";
}

TEST(Records, LastOfRepeatedKeysCounts)
{
    const auto project = decode<Project>(
        R"({"id":5,"title":"a","id":"p","title":"b","description":"x","description":null})");
    EXPECT_EQ(project, (Project{.id = "p", .title = "b"}));
    expectFailure<Project>(R"({"id":"p","title":"t","id":5})", Kind::TypeMismatch, "id");
    EXPECT_EQ(decode<TextMap>(R"({"a":1,"b":"x","a":"y"})"), (TextMap{{"a", "y"}, {"b", "x"}}));
    expectFailure<TextMap>(R"({"a":"y","a":1})", Kind::TypeMismatch, "a");
}

TEST(Records, FirstFailureInTableOrderIsReported)
{
    // In the document the later field stands first.
    expectFailure<Project>(R"({"updated_at":1,"bid_amount":"x","title":null,"ref_number":2})",
                           Kind::KeyMissing, "id");
    expectFailure<Project>(R"({"updated_at":1,"bid_amount":"x","ref_number":2,"id":"p"})",
                           Kind::TypeMismatch, "ref_number");
    expectFailure<Project>(R"({"updated_at":1,"bid_amount":"x","title":null,"id":"p"})",
                           Kind::ValueMissing, "title");
    expectFailure<Project>(R"({"updated_at":1,"bid_amount":"x","title":"t","id":"p"})",
                           Kind::TypeMismatch, "bid_amount");
    expectFailure<DashboardData>("{}", Kind::KeyMissing, "status_counts");
}

TEST(Records, OneBadElementFailsTheList)
{
    expectFailure<std::vector<Project>>(
        R"([{"id":"1","title":"a"},{"id":"2","title":"b"},{"id":"3"},{"title":4}])",
        Kind::KeyMissing, "[2].title");
    expectFailure<std::vector<Project>>(R"([{"id":"1","title":"a"},null])", Kind::ValueMissing,
                                        "[1]");
    expectFailure<std::vector<Report>>(R"([{"id":"1"},{"id":"2","artifact_links":["",[]]}])",
                                       Kind::TypeMismatch, "[1].artifact_links[1]");
}

TEST(Records, ListsKeepTheirOrder)
{
    const auto logs = decode<std::vector<DevLog>>(
        R"([{"id":"2","log_type":"info","content":"b"},{"id":"1","log_type":"error","content":"a",
            "created_at":"t"}])");
    EXPECT_EQ(logs,
              (std::vector<DevLog>{{"2", "info", "b", std::nullopt}, {"1", "error", "a", "t"}}));
    EXPECT_TRUE(decode<std::vector<BidInfo>>(" [ ] ").empty());
}

TEST(Records, DocumentOfAnotherShapeFails)
{
    expectFailure<Project>("[]", Kind::TypeMismatch, "");
    expectFailure<Project>("null", Kind::ValueMissing, "");
    expectFailure<Project>(R"("id")", Kind::TypeMismatch, "");
    expectFailure<std::vector<Project>>("{}", Kind::TypeMismatch, "");
    expectFailure<TextMap>("[]", Kind::TypeMismatch, "");
    expectFailure<DashboardData>(
        R"({"status_counts":[],"bids_pending":1,"total_earned":2,"pending_decisions":3})",
        Kind::TypeMismatch, "status_counts");
    expectFailure<Project>("", Kind::DamagedData, "");
    expectFailure<Project>(R"({"id":"p","title":"t"}{})", Kind::DamagedData, "");
}

TEST(Records, TextMapTakesTextsOnly)
{
    EXPECT_EQ(decode<TextMap>("{}"), TextMap{});
    EXPECT_EQ(decode<TextMap>(R"({"status":"ok","":""})"), (TextMap{{"", ""}, {"status", "ok"}}));
    expectFailure<TextMap>(R"({"status":"ok","done":true})", Kind::TypeMismatch, "done");
    expectFailure<TextMap>(R"({"status":null})", Kind::ValueMissing, "status");
    expectFailure<TextMap>(R"({"count":1})", Kind::TypeMismatch, "count");
}

TEST(Records, ConfigDecodesFromObjectOfTexts)
{
    const auto config = decode<AppConfig>(
        R"({"preview_mode":"true","max_daily_bids":"5","other":"x","daily_revenue_target":""})");
    EXPECT_EQ(config.previewMode, "true");
    EXPECT_EQ(config.maxDailyBids, "5");
    EXPECT_EQ(config.dailyRevenueTarget, "");
    EXPECT_FALSE(config.maxConcurrentProjects);
}

TEST(Records, ConfigWithAnyOtherValueFails)
{
    expectFailure<AppConfig>(R"({"max_daily_bids":5})", Kind::TypeMismatch, "max_daily_bids");
    expectFailure<AppConfig>(R"({"preview_mode":"true","unlisted":false})", Kind::TypeMismatch,
                             "unlisted");
    expectFailure<AppConfig>(R"({"preview_mode":null})", Kind::ValueMissing, "preview_mode");
    expectFailure<AppConfig>("[]", Kind::TypeMismatch, "");
}

} // namespace
} // namespace trellisport
