#include "PracticeDesk.h"

#include <gmock/gmock.h>

namespace trellisport::practice {
namespace {

using testing::ElementsAre;
using testing::Pair;

TEST(Control, EveryEventHappens)
{
    PracticeDesk desk;
    for (const char *event : {"discover", "progress", "bid", "rival", "award", "reject", "work",
                              "error", "message", "decision", "expire", "report", "complete"})
        EXPECT_FALSE(desk.happen(event).project.empty()) << event;
}

TEST(Control, EventHappensToTheNamedProject)
{
    PracticeDesk desk;
    const std::string project(desk.inStage("bid_placed").back().id.view());
    EXPECT_EQ(desk.happen("award", project).project, project);
    EXPECT_EQ(desk.read<ProjectDetail>("/projects/" + project).bidStatus, "awarded");
}

TEST(Control, EventThatCannotHappenIsRefused)
{
    PracticeDesk desk;
    const std::string completed(desk.inStage("completed").front().id.view());
    EXPECT_EQ(desk.send("POST", "/control/tick?event=award&project=" + completed).status, 409);
    EXPECT_EQ(desk.send("POST", "/control/tick?event=award&project=nobody").status, 409);
}

TEST(Control, ProgressTakesAProjectThroughAllStages)
{
    PracticeDesk desk;
    const std::string project = desk.happen("discover").project;
    const auto status = [&] {
        return std::string(
            desk.read<ProjectDetail>("/projects/" + project).bidStatus.value().view());
    };
    std::vector<std::string> stages{status()};
    for (const char *event : {"progress", "progress", "progress", "bid", "award"}) {
        ASSERT_EQ(desk.happen(event, project).project, project) << event;
        stages.push_back(status());
    }
    ASSERT_EQ(desk.configure({{"max_concurrent_projects", "100"}}).status, 200);
    ASSERT_EQ(desk.happen("complete", project).project, project);
    stages.push_back(status());
    EXPECT_THAT(stages, ElementsAre("discovered", "questions_sent", "answers_received", "plan_sent",
                                    "bid_placed", "awarded", "completed"));
}

TEST(Control, FaultSpoilsAsManyRepliesAsAskedFor)
{
    PracticeDesk desk;
    ASSERT_EQ(desk.send("POST", "/control/fault?path=/dashboard&status=503&times=2").status, 200);
    EXPECT_EQ(desk.get("/api/v1/config").status, 200);
    EXPECT_EQ(desk.get("/api/v1/dashboard").status, 503);
    EXPECT_EQ(desk.get("/api/v1/dashboard").status, 503);
    EXPECT_EQ(desk.get("/api/v1/dashboard").status, 200);
}

TEST(Control, DevicesAreListed)
{
    PracticeDesk desk;
    ASSERT_EQ(desk.send("POST", "/api/v1/devices", R"({"device_token":"00ab10"})").status, 200);
    EXPECT_THAT(decode<TextMap>(desk.get("/control/devices").body),
                ElementsAre(Pair("0", "00ab10")));
}

TEST(Control, AlertsAreRaisedForWhatTheOwnerShouldHear)
{
    PracticeDesk desk;
    static_cast<void>(desk.alerts());
    const auto asked = desk.happen("decision");
    const auto awarded = desk.happen("award");
    const auto failed = desk.happen("error");
    ASSERT_FALSE(desk.happen("work").project.empty());
    const auto alerts = desk.alerts();
    ASSERT_EQ(alerts.size(), 3U);
    EXPECT_EQ(alerts[0].type, "decision_needed");
    EXPECT_EQ(alerts[0].projectId, asked.project);
    EXPECT_EQ(alerts[0].decisionId, asked.decision);
    EXPECT_EQ(alerts[1].type, "project_awarded");
    EXPECT_EQ(alerts[1].projectId, awarded.project);
    EXPECT_EQ(alerts[1].decisionId, "");
    EXPECT_EQ(alerts[2].type, "dev_error");
    EXPECT_EQ(alerts[2].projectId, failed.project);
}

TEST(Control, NewPortfolioRaisesNoAlerts)
{
    PracticeDesk desk;
    EXPECT_TRUE(desk.alerts().empty());
}

} // namespace
} // namespace trellisport::practice
