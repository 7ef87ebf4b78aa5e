#include "ServiceAccess/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <unordered_set>
#include <utility>
#include <vector>

namespace trellisport {
namespace {

TEST(Text, HoldsTheBytesItWasMadeFrom)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(Text("literal").view(), "literal");
    EXPECT_EQ(Text(std::string("string")).view(), "string");
    EXPECT_EQ(Text("with\0NUL"sv).size(), 8U);
    EXPECT_EQ(Text("é").size(), 2U);
}

TEST(Text, EmptyOnesAreAlike)
{
    EXPECT_TRUE(Text().empty());
    EXPECT_EQ(Text(), Text(""));
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(Text().data(), Text().end());
}

TEST(Text, IsAsWideAsAPointer)
{
    EXPECT_EQ(sizeof(Text), sizeof(void *));
    EXPECT_EQ(sizeof(OptionalText), sizeof(void *));
}

TEST(Text, CopiesShareTheirBytes)
{
    const Text one("shared");
    const Text two = one; // NOLINT(performance-unnecessary-copy-initialization): to be compared
    EXPECT_EQ(one.data(), two.data());
}

TEST(Text, OutlivesWhatItWasCopiedOrMovedFrom)
{
    Text kept;
    {
        const Text first("value");
        kept = first;
    }
    EXPECT_EQ(kept, "value");
    Text moved = std::move(kept);
    EXPECT_EQ(moved, "value");
    moved = moved; // NOLINT(clang-diagnostic-self-assign-overloaded)
    EXPECT_EQ(moved, "value");
    moved = Text("other");
    EXPECT_EQ(moved, "other");
}

TEST(Text, ComparesByBytes)
{
    EXPECT_EQ(Text("a"), Text("a"));
    EXPECT_NE(Text("a"), Text("b"));
    EXPECT_NE(Text("a"), "A");
    EXPECT_LT(Text("a"), Text("ab"));
    EXPECT_LT(Text("z"), Text("é"));
    EXPECT_GT(Text("b"), "a");
    EXPECT_EQ("a", Text("a"));
}

TEST(Text, IsFoundInHashedContainers)
{
    const std::unordered_set<Text> texts = {"a", "b", ""};
    EXPECT_TRUE(texts.contains(Text("b")));
    EXPECT_TRUE(texts.contains(Text()));
    EXPECT_FALSE(texts.contains(Text("c")));
}

TEST(Text, CopiesMayBeUsedOnDifferentThreads)
{
    const Text shared(std::string(1000, 'x'));
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([copy = shared] {
            for (int round = 0; round < 20000; ++round) {
                const Text another = copy; // NOLINT(performance-unnecessary-copy-initialization)
                ASSERT_EQ(another.size(), 1000U);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(shared, std::string(1000, 'x'));
}

TEST(OptionalText, TellsAbsentFromEmpty)
{
    const OptionalText absent;
    const OptionalText empty = "";
    EXPECT_FALSE(absent);
    EXPECT_TRUE(empty);
    EXPECT_NE(absent, empty);
    EXPECT_EQ(absent, std::nullopt);
    EXPECT_NE(empty, std::nullopt);
    EXPECT_EQ(empty, "");
    EXPECT_NE(absent, "");
    EXPECT_EQ(OptionalText(Text()), empty);
}

TEST(OptionalText, GivesItsTextOrAnother)
{
    const OptionalText absent = std::nullopt;
    const OptionalText present = "text";
    EXPECT_EQ(*present, "text");
    EXPECT_EQ(present->size(), 4U);
    EXPECT_EQ(present.value(), "text");
    EXPECT_EQ(present.value_or("other"), "text");
    EXPECT_EQ(absent.value_or("other"), "other");
    EXPECT_THROW((void)absent.value(), std::bad_optional_access);
}

TEST(OptionalText, CanBeSetAndTakenBack)
{
    OptionalText text;
    text = "a";
    EXPECT_EQ(text, "a");
    text = Text("b");
    EXPECT_EQ(text, Text("b"));
    const OptionalText copy = text;
    text = std::nullopt;
    EXPECT_FALSE(text);
    EXPECT_EQ(copy, "b");
    OptionalText taken = copy;
    const OptionalText target = std::move(taken);
    EXPECT_EQ(target, "b");
}

} // namespace
} // namespace trellisport
