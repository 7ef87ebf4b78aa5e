#include "PracticeDesk.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

namespace trellisport::practice {
namespace {

/// Moves the agent's time in steps small enough that nothing is left out.
void live(PracticeDesk &desk, std::chrono::minutes span)
{
    desk.keeper().ask([&](Keeper::Desk &inside) {
        const Moment end = inside.clock.now() + span;
        inside.agent.advance(inside.clock.now());
        while (inside.clock.now() < end) {
            inside.clock.advance(seconds(30));
            inside.agent.advance(inside.clock.now());
        }
    });
}

TEST(Agent, DoesNothingWhileTimeStandsStill)
{
    PracticeDesk desk;
    const std::string before = desk.get("/api/v1/projects").body;
    desk.keeper().ask([](Keeper::Desk &inside) {
        for (int look = 0; look < 50; ++look)
            inside.agent.advance(inside.clock.now());
    });
    EXPECT_EQ(desk.get("/api/v1/projects").body, before);
}

TEST(Agent, DaysBringEverythingThatTheConsoleShows)
{
    PracticeDesk desk;
    const auto projects = desk.read<std::vector<Project>>("/projects").size();
    const auto earned = desk.read<DashboardData>("/dashboard").totalEarned;
    std::set<std::string> alerts;
    std::set<std::string> titles; // lock screens show them: they name no project
    for (int day = 0; day < 7; ++day) {
        live(desk, std::chrono::hours(24));
        for (const Alert &alert : desk.alerts()) {
            alerts.insert(alert.type);
            titles.insert(alert.title);
        }
    }
    EXPECT_THAT(titles,
                testing::ElementsAre("Decision needed", "Error in development", "Project awarded"));
    EXPECT_THAT(alerts, testing::ElementsAre("decision_needed", "dev_error", "project_awarded"));
    EXPECT_GT(desk.read<std::vector<Project>>("/projects").size(), projects);
    EXPECT_GT(desk.read<DashboardData>("/dashboard").totalEarned, earned);
}

TEST(Agent, StaysWithinTheSettingsForDays)
{
    PracticeDesk desk;
    ASSERT_EQ(desk.configure({{"preview_mode", "true"}, {"max_concurrent_projects", "2"}}).status,
              200);
    for (int part = 0; part < 24; ++part) {
        live(desk, std::chrono::hours(3));
        EXPECT_LE(desk.inStage("bid_placed").size(), 1U);
        const auto active = desk.keeper().ask([](Keeper::Desk &inside) {
            Ledger ledger(inside.store.database(), Random(0));
            return ledger.countWith(work::active);
        });
        EXPECT_LE(active, 2);
    }
}

TEST(Agent, WhatHappensIsInOrder)
{
    PracticeDesk desk;
    live(desk, std::chrono::hours(30));
    for (const Project &project : desk.read<std::vector<Project>>("/projects")) {
        const std::string root = "/projects/" + std::string(project.id.view());
        const auto logs = desk.read<std::vector<DevLog>>(root + "/logs");
        EXPECT_TRUE(std::is_sorted(logs.rbegin(), logs.rend(),
                                   [](const DevLog &one, const DevLog &other) {
                                       return one.createdAt.value() < other.createdAt.value();
                                   }))
            << project.title.view();
        const auto events = desk.read<std::vector<TimelineEvent>>(root + "/timeline");
        EXPECT_TRUE(std::is_sorted(events.begin(), events.end(),
                                   [](const auto &one, const auto &other) {
                                       return one.time.value() < other.time.value();
                                   }))
            << project.title.view();
    }
}

TEST(Agent, OpenDecisionsExpireWhenTheirTimeIsOver)
{
    PracticeDesk desk;
    const auto decisions = [&](const std::string &project) {
        return desk.read<std::vector<Decision>>("/projects/" + project + "/decisions");
    };
    int expired = 0;
    for (const auto &open : desk.openDecisions()) {
        const auto now = desk.keeper().ask([](Keeper::Desk &inside) { return inside.clock.now(); });
        // The newest decision is the open one.
        const Decision decision = decisions(open.project).front();
        ASSERT_EQ(decision.id, open.decision);
        if (decision.status != "pending" || !decision.timeoutMinutes)
            continue;
        const auto left = momentOf(decision.notifiedAt.value()).value() +
                          std::chrono::minutes(*decision.timeoutMinutes) - now;
        const auto statusAfter = [&](seconds span) {
            live(desk, std::chrono::floor<std::chrono::minutes>(span));
            for (const Decision &later : decisions(open.project)) {
                if (later.id == open.decision)
                    return std::string(later.status.view());
            }
            return std::string("gone");
        };
        EXPECT_EQ(statusAfter(left - std::chrono::minutes(2)), "pending");
        EXPECT_EQ(statusAfter(std::chrono::minutes(4)), "expired");
        ++expired;
        break;
    }
    EXPECT_EQ(expired, 1);
}

TEST(Agent, EachFinishedDayIsReportedOnce)
{
    PracticeDesk desk;
    live(desk, std::chrono::hours(72));
    int reports = 0;
    for (const Project &project : desk.read<std::vector<Project>>("/projects")) {
        std::set<std::string> days;
        for (const Report &report : desk.read<std::vector<Report>>(
                 "/projects/" + std::string(project.id.view()) + "/reports")) {
            ++reports;
            EXPECT_TRUE(days.insert(std::string(report.reportDate.value().view())).second)
                << project.title.view() << ' ' << report.reportDate.value().view();
        }
    }
    EXPECT_GT(reports, 20);
}

TEST(Agent, LogsDoNotGrowForEver)
{
    PracticeDesk desk;
    const std::string project = desk.happen("work").project;
    ASSERT_FALSE(project.empty());
    desk.keeper().ask([&](Keeper::Desk &inside) {
        for (int burst = 0; burst < 1000; ++burst)
            inside.agent.perform("work", project, inside.clock.now());
    });
    EXPECT_LT(desk.read<std::vector<DevLog>>("/projects/" + project + "/logs").size(), 1500U);
}

TEST(Agent, ALongAbsenceIsNotMadeUpForAtOnce)
{
    PracticeDesk desk;
    live(desk, std::chrono::minutes(1));
    const auto before = desk.read<std::vector<Project>>("/projects").size();
    desk.keeper().ask([](Keeper::Desk &inside) {
        inside.clock.advance(std::chrono::hours(24 * 365));
        inside.agent.advance(inside.clock.now());
    });
    EXPECT_LE(desk.read<std::vector<Project>>("/projects").size(), before + 40);
}

TEST(Agent, TimeGoesOnWhereItStoodAfterARestart)
{
    PracticeDesk desk;
    live(desk, std::chrono::hours(48));
    const auto before = desk.keeper().ask([](Keeper::Desk &inside) { return inside.clock.now(); });
    desk.restart();
    const auto after = desk.keeper().ask([](Keeper::Desk &inside) { return inside.clock.now(); });
    EXPECT_GE(after, before - std::chrono::minutes(1));
    EXPECT_LE(after, before);
}

/// What time it is for the agent of the folder; for that of a new one it begins then.
Moment timeIn(const QTemporaryDir &folder, double speed, Moment begin)
{
    Keeper::Setup setup;
    setup.file = folder.filePath(QStringLiteral("state.sqlite")).toStdString();
    setup.speed = speed;
    setup.begin = begin;
    Keeper keeper(std::move(setup));
    return keeper.ask([](Keeper::Desk &inside) { return inside.clock.now(); });
}

TEST(Agent, TimeBeginsWhenItIsToldOfANewFolder)
{
    const Moment begin = momentOf("2021-03-14T15:09:26Z").value();
    const QTemporaryDir still;
    EXPECT_EQ(timeIn(still, 0, begin), begin);
    EXPECT_EQ(timeIn(still, 0, begin + std::chrono::hours(24)), begin);

    const QTemporaryDir passing;
    const Moment passed = timeIn(passing, 1, begin);
    EXPECT_GE(passed, begin);
    EXPECT_LT(passed, begin + std::chrono::hours(1));
}

TEST(Agent, MovesByItselfWhenTimePasses)
{
    PracticeDesk desk(5000);
    const auto projects = [&] { return desk.get("/api/v1/projects").body; };
    const std::string before = projects();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (projects() == before && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    EXPECT_NE(projects(), before);
}

} // namespace
} // namespace trellisport::practice
