#include "ServiceAccess/TextArena.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace trellisport {
namespace {

/// Differs from others of other numbers, in content and length.
std::string content(std::size_t number)
{
    return std::string(number % 97, static_cast<char>('a' + number % 26)) + std::to_string(number);
}

TEST(TextArena, TextsHoldWhatTheyWereMadeFrom)
{
    TextArena arena(1000);
    std::vector<Text> texts;
    for (std::size_t i = 0; i < 5000; ++i) {
        texts.push_back(arena.make(content(i)));
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(texts[i], content(i));
    }
}

TEST(TextArena, TextsOutliveTheArena)
{
    std::optional<TextArena> arena(std::in_place, 100'000);
    const Text first = arena->make("first");
    const Text second = arena->make("second");
    arena.reset();
    EXPECT_EQ(first, "first");
    EXPECT_EQ(second, "second");
}

TEST(TextArena, TextOutlivesTheOthersOfItsPiece)
{
    TextArena arena(100'000);
    Text kept;
    {
        const Text before = arena.make("before");
        kept = arena.make("kept");
        const Text after = arena.make("after");
    }
    EXPECT_EQ(kept, "kept");
    EXPECT_EQ(arena.make("one more"), "one more");
    EXPECT_EQ(kept, "kept");
}

TEST(TextArena, TextsThatWentBeforeTheNextLeaveTheArenaUsable)
{
    TextArena arena(0);
    for (std::size_t i = 0; i < 5000; ++i) {
        EXPECT_EQ(arena.make(content(i)), content(i));
    }
}

TEST(TextArena, MakesEmptyAndLongTexts)
{
    TextArena arena(10);
    EXPECT_EQ(arena.make(""), "");
    for (const std::size_t size : {100U, 4000U, 4092U, 4093U, 70'000U, 1'000'000U}) {
        EXPECT_EQ(arena.make(std::string(size, 'x')), std::string(size, 'x'));
    }
    EXPECT_EQ(arena.make("short"), "short");
}

TEST(TextArena, TextsOfOnePieceMayBeUsedOnDifferentThreads)
{
    std::vector<Text> texts;
    {
        TextArena arena(100'000);
        for (std::size_t i = 0; i < 4; ++i) {
            texts.push_back(arena.make(content(i)));
        }
    }
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        threads.emplace_back([i, text = std::move(texts[i])]() mutable {
            for (int round = 0; round < 10'000; ++round) {
                Text copy = text;
                text = std::move(copy);
                ASSERT_EQ(text.view(), content(i));
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace trellisport
