#include "Platform/Linux/FindPart.h"
#include "Platform/Linux/IcuFoldTable.h"
#include "Platform/Linux/IcuTextRules.h"

#include <gmock/gmock.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace trellisport::platform {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Places = std::vector<std::uint32_t>;

std::string utf8(UChar32 codePoint)
{
    std::string bytes(U8_MAX_LENGTH, '\0');
    int size = 0;
    U8_APPEND_UNSAFE(bytes.data(), size, codePoint);
    return bytes.substr(0, static_cast<std::size_t>(size));
}

/// Everything that the search has a rule of its own for.
constexpr std::string_view pieces[] = {
    "a",      "e",      "E",      "s",      "S",      "ss",     "i",      "I",      "k",
    " ",      "st",     "deploy", "\r",     "\n",     "\r\n",   "\u00df", "\u1e9e", "\u0130",
    "\u0131", "\u212a", "\u017f", "\u037e", "\ufb01", "\ufb05", "\u0149", "\u1e9a", "\u00e9",
    "\u00c9", "\u0301", "\u0323", "\u0307", "\u0338", "\u1ec7", "\u0439", "\u0416", "\u0436",
    "\u03a3", "\u03c2", "\u4e2d", "\u0915", "\u093f", "\ud55c", "\u1112", "\u1161", "\u11ab",
    "\u200d", "\ufe0f", "\xff",   "\xe2",   "\xc3",   "\ufffd", "🇩",      "🇪",      "👩",
    "👍",      "🏽",   "𐐀",      "𐐨"};

std::string somePieces(std::mt19937 &random, std::size_t most)
{
    std::string text;
    for (std::size_t count = random() % (most + 1); count > 0; --count) {
        text += pieces[random() % std::size(pieces)];
    }
    return text;
}

std::unique_ptr<SearchableTexts> searchable(const TextRules &rules,
                                            const std::vector<std::string> &texts)
{
    return rules.searchable({texts.begin(), texts.end()});
}

TEST(SearchableTexts, GiveThePlacesOfThoseThatHoldThePart)
{
    const IcuTextRules rules("en");
    const std::vector<std::string> texts{
        "Deploy a web shop", "", "Logo", "re-DEPLOY", "caf\u00e9 web", "W", "EBWEB", "de", "ploy"};
    const auto made = searchable(rules, texts);
    EXPECT_THAT(made->holding("deploy"), ElementsAre(0, 3));
    EXPECT_THAT(made->holding("WEB"), ElementsAre(0, 4, 6));
    EXPECT_THAT(made->holding("CAFE\u0301"), ElementsAre(4));
    EXPECT_THAT(made->holding("cafe"), IsEmpty());
    EXPECT_THAT(made->holding("zebra"), IsEmpty());
    EXPECT_THAT(made->holding("\xff"), IsEmpty());
    EXPECT_THAT(made->holding(""), IsEmpty());
    EXPECT_THAT(searchable(rules, {})->holding("a"), IsEmpty());
    EXPECT_THAT(rules.searchable({{}, "a"})->holding("A"), ElementsAre(1));
}

TEST(SearchableTexts, AgreeWithSearchesOneByOne)
{
    std::mt19937 random(20260301); // NOLINT(cert-msc51-cpp): the same in every run
    int found = 0;
    for (const char *locale : {"en", "tr"}) {
        const IcuTextRules rules(locale);
        for (int round = 0; round < 400; ++round) {
            std::vector<std::string> texts(40);
            std::generate(texts.begin(), texts.end(), [&] { return somePieces(random, 12); });
            const auto made = searchable(rules, texts);
            const TextsOneByOne oneByOne(rules, {texts.begin(), texts.end()});
            for (int i = 0; i < 10; ++i) {
                const std::string part = somePieces(random, 3);
                const Places places = made->holding(part);
                ASSERT_EQ(places, oneByOne.holding(part))
                    << locale << ' ' << ::testing::PrintToString(part);
                found += static_cast<int>(places.size());
            }
        }
    }
    EXPECT_GT(found, 10000);
}

// What a letter becomes may end in what the part begins with, and the other way round.
TEST(SearchableTexts, AgreeWithSearchesOneByOneOnEveryLetterThatFolds)
{
    for (const char *locale : {"en", "tr"}) {
        const IcuTextRules rules(locale);
        const IcuFoldTable table(std::string_view(locale) == "tr");
        std::vector<std::string> texts;
        for (UChar32 c = 1; c <= 0x10ffff; ++c) {
            const bool isLessThanALetter = U_IS_SURROGATE(c) || (c >= 0xac00 && c <= 0xd7a3);
            if (!isLessThanALetter && !table.entry(c).isPlain) {
                texts.push_back("an" + utf8(c) + "es");
                texts.push_back("s" + utf8(c));
            }
        }
        ASSERT_GT(texts.size(), 5000U);
        const auto made = searchable(rules, texts);
        const TextsOneByOne oneByOne(rules, {texts.begin(), texts.end()});
        for (const char *part : {"a", "e", "i", "j", "k", "n", "s", "t", "ne", "ss", "st", "se",
                                 "an", "es", "\u0301", "\u02bc", "\u03b9", "an\u00e9", "n\u0131"}) {
            ASSERT_EQ(made->holding(part), oneByOne.holding(part)) << locale << ' ' << part;
        }
    }
}

TEST(FindPart, FindsTheFirstOccurrenceFromAnyOffset)
{
    std::mt19937 random(20260302); // NOLINT(cert-msc51-cpp): the same in every run
    for (int round = 0; round < 3000; ++round) {
        std::string text(random() % 400, '.');
        for (std::size_t letters = random() % 8; letters > 0 && !text.empty(); --letters) {
            text[random() % text.size()] = "abc"[random() % 3];
        }
        std::string part(1 + random() % 3, '.');
        part.front() = "abc"[random() % 3];
        part.back() = "abc"[random() % 3];
        const std::size_t from = random() % (text.size() + 1);
        ASSERT_EQ(findPart(text, part, from), text.find(part, from)) << text << ' ' << part;
    }
}

} // namespace
} // namespace trellisport::platform
