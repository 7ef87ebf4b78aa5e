#include "PracticeService/Material.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

namespace trellisport::practice {
namespace {

constexpr const char *sample = R"(title: A shed
owner: shed_owner
stage: awarded
waits: yes
repo: shed
module: shed.c
budget: 12.5
days: 3
== description
First line

After an empty line
== questionnaire
1. Why?
== chat
> agent
Hello
there
> client
Hi
== decisions
? 30
Red or
blue?
= Red
? 0
Open?
)";

TEST(Material, StoryFileIsRead)
{
    const Story story = parseStory("shed", sample);
    EXPECT_EQ(story.name, "shed");
    EXPECT_EQ(story.title, "A shed");
    EXPECT_EQ(story.stage, "awarded");
    EXPECT_TRUE(story.waits);
    EXPECT_DOUBLE_EQ(story.budget, 12.5);
    EXPECT_EQ(story.days, 3);
    EXPECT_EQ(story.description, "First line\n\nAfter an empty line");
    EXPECT_EQ(story.answers, "");
    ASSERT_EQ(story.chat.size(), 2U);
    EXPECT_TRUE(story.chat[0].byAgent);
    EXPECT_EQ(story.chat[0].text, "Hello\nthere");
    EXPECT_FALSE(story.chat[1].byAgent);
    ASSERT_EQ(story.dilemmas.size(), 2U);
    EXPECT_EQ(story.dilemmas[0].timeoutMinutes, 30);
    EXPECT_EQ(story.dilemmas[0].question, "Red or\nblue?");
    EXPECT_EQ(story.dilemmas[0].answer, "Red");
    EXPECT_EQ(story.dilemmas[1].answer, "");
}

TEST(Material, StoryWithoutTitleIsRefused)
{
    std::string text(sample);
    text.erase(0, text.find('\n') + 1);
    EXPECT_THROW(static_cast<void>(parseStory("shed", text)), std::runtime_error);
}

TEST(Material, StoriesThatShipAreComplete)
{
    const Material material = Material::load();
    EXPECT_GE(material.stories.size(), 24U);
    std::set<std::string> names;
    for (const Story &story : material.stories) {
        EXPECT_TRUE(names.insert(story.name).second);
        EXPECT_FALSE(story.questionnaire.empty()) << story.name;
        EXPECT_FALSE(story.answers.empty()) << story.name;
        EXPECT_FALSE(story.plan.empty()) << story.name;
        EXPECT_GE(story.chat.size(), 5U) << story.name;
        EXPECT_FALSE(story.later.empty()) << story.name;
        EXPECT_GT(story.budget, 0) << story.name;
        EXPECT_GT(story.days, 0) << story.name;
    }
}

TEST(Material, ErrorsEndInAnError)
{
    for (const auto &burst : Material::load().errors) {
        ASSERT_FALSE(burst.empty());
        EXPECT_EQ(burst.back().type, "error");
    }
}

TEST(Material, LogsUseKnownTypesOnly)
{
    const std::set<std::string> known{"tool_call", "tool_result", "claude_response", "error",
                                      "info"};
    const Material material = Material::load();
    for (const auto *bursts : {&material.work, &material.errors}) {
        for (const auto &burst : *bursts) {
            for (const LogEntry &entry : burst)
                EXPECT_TRUE(known.contains(entry.type)) << entry.type;
        }
    }
}

TEST(Material, ExpandReplacesKnownKeysOnly)
{
    EXPECT_EQ(expand("a {x} {y} {", {{"x", "1"}}), "a 1 {y} {");
    EXPECT_EQ(expand("{\"x\": {x}}", {{"x", "{x}"}}), "{\"x\": {x}}");
    EXPECT_EQ(expand("", {}), "");
}

} // namespace
} // namespace trellisport::practice
