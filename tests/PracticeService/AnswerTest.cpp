#include "PracticeDesk.h"

#include <gmock/gmock.h>

namespace trellisport::practice {
namespace {

using testing::ElementsAre;
using testing::Pair;

Decision decisionOf(PracticeDesk &desk, const PracticeDesk::Done &wanted)
{
    for (const Decision &decision :
         desk.read<std::vector<Decision>>("/projects/" + wanted.project + "/decisions")) {
        if (decision.id == wanted.decision)
            return decision;
    }
    throw std::runtime_error("no such decision");
}

std::string stateOf(PracticeDesk &desk, const std::string &project)
{
    return desk.keeper().ask([&](Keeper::Desk &inside) {
        Ledger ledger(inside.store.database(), Random(0));
        return ledger.job(project).value().work;
    });
}

TEST(Answer, MakesTheDecisionAnswered)
{
    PracticeDesk desk;
    const auto open = desk.openDecisions().front();
    const ServiceReply reply = desk.answer(open, "Do it");
    EXPECT_EQ(reply.status, 200);
    EXPECT_THAT(decode<TextMap>(reply.body), ElementsAre(Pair("status", "ok")));

    const Decision decision = decisionOf(desk, open);
    EXPECT_EQ(decision.status, "answered");
    EXPECT_EQ(decision.answer, "Do it");
    EXPECT_TRUE(decision.answeredAt.has_value());
}

TEST(Answer, KeepsTheTextAsItIs)
{
    PracticeDesk desk;
    const auto open = desk.openDecisions();
    const std::vector<std::string> texts{"   ", "שלום \"עולם\"\n\tو سلام 🙂",
                                         "'; DROP TABLE logs; --"};
    ASSERT_GE(open.size(), texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(desk.answer(open[i], texts[i]).status, 200);
        EXPECT_EQ(decisionOf(desk, open[i]).answer, texts[i]);
    }
}

TEST(Answer, SurvivesARestart)
{
    PracticeDesk desk;
    const auto open = desk.openDecisions().front();
    ASSERT_EQ(desk.answer(open, "Yes").status, 200);
    desk.restart();
    EXPECT_EQ(decisionOf(desk, open).answer, "Yes");
}

TEST(Answer, ShowsInTheCountTheLogTheTimelineAndTheChat)
{
    PracticeDesk desk;
    const auto open = desk.openDecisions().front();
    const std::string root = "/projects/" + open.project;
    const auto before = desk.read<DashboardData>("/dashboard").pendingDecisions;
    const auto messages = desk.read<std::vector<Message>>(root + "/messages").size();
    ASSERT_EQ(desk.answer(open, "Blue, please").status, 200);

    EXPECT_EQ(desk.read<DashboardData>("/dashboard").pendingDecisions, before - 1);
    const auto logs = desk.read<std::vector<DevLog>>(root + "/logs");
    EXPECT_THAT(logs, testing::Contains(
                          testing::Field(&DevLog::content, "The owner answered: Blue, please")));
    EXPECT_THAT(desk.read<std::vector<TimelineEvent>>(root + "/timeline"),
                testing::Contains(testing::Field(&TimelineEvent::event, "Decision answered")));
    const auto after = desk.read<std::vector<Message>>(root + "/messages");
    ASSERT_EQ(after.size(), messages + 1);
    EXPECT_EQ(after.back().sender, "agent");
}

TEST(Answer, BringsTheProjectToTheTopOfTheList)
{
    PracticeDesk desk;
    const auto open = desk.openDecisions().front();
    desk.keeper().ask([](Keeper::Desk &inside) { inside.clock.advance(seconds(5)); });
    ASSERT_EQ(desk.answer(open, "Yes").status, 200);
    EXPECT_EQ(desk.read<std::vector<Project>>("/projects").front().id, open.project);
}

TEST(Answer, UnblocksTheProject)
{
    PracticeDesk desk;
    const auto asked = desk.happen("decision");
    ASSERT_FALSE(asked.decision.empty());
    EXPECT_EQ(stateOf(desk, asked.project), "blocked");
    EXPECT_TRUE(desk.happen("work", asked.project).project.empty()) << "worked while it waited";
    ASSERT_EQ(desk.answer(asked, "Go on").status, 200);
    EXPECT_EQ(stateOf(desk, asked.project), "active");
    EXPECT_EQ(desk.happen("work", asked.project).project, asked.project);
}

TEST(Answer, LeavesTheProjectBlockedWhileAnotherDecisionIsOpen)
{
    PracticeDesk desk;
    const auto first = desk.happen("decision");
    ASSERT_FALSE(first.decision.empty());
    const std::string second = desk.keeper().ask([&](Keeper::Desk &inside) {
        Ledger ledger(inside.store.database(), Random(77));
        return ledger.ask(ledger.job(first.project).value(), "And this?", 60, Moment());
    });
    ASSERT_EQ(desk.answer(first, "Yes").status, 200);
    EXPECT_EQ(stateOf(desk, first.project), "blocked");
    ASSERT_EQ(desk.answer({first.project, second}, "Yes").status, 200);
    EXPECT_EQ(stateOf(desk, first.project), "active");
}

TEST(Answer, SecondAnswerIsRefusedAndChangesNothing)
{
    PracticeDesk desk;
    const auto open = desk.openDecisions().front();
    ASSERT_EQ(desk.answer(open, "First").status, 200);
    EXPECT_EQ(desk.answer(open, "Second").status, 409);
    EXPECT_EQ(decisionOf(desk, open).answer, "First");
}

TEST(Answer, ExpiredDecisionIsRefused)
{
    PracticeDesk desk;
    const auto expired = desk.happen("expire");
    ASSERT_FALSE(expired.decision.empty());
    EXPECT_EQ(decisionOf(desk, expired).status, "expired");
    EXPECT_EQ(desk.answer(expired, "Too late").status, 409);
    EXPECT_FALSE(decisionOf(desk, expired).answer.has_value());
}

TEST(Answer, ToAnotherProjectsDecisionIsUnknown)
{
    PracticeDesk desk;
    auto open = desk.openDecisions();
    ASSERT_GE(open.size(), 2U);
    EXPECT_EQ(desk.answer({open[0].project, open[1].decision}, "Yes").status, 404);
    EXPECT_EQ(decisionOf(desk, open[1]).status, "pending");
}

} // namespace
} // namespace trellisport::practice
