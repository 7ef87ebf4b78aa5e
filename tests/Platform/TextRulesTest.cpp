#include "Platform/Linux/IcuTextRules.h"

#include <gtest/gtest.h>

#include <string>

namespace trellisport::platform {
namespace {

const IcuTextRules &rules()
{
    static const IcuTextRules rules("en");
    return rules;
}

TEST(TextRules, CapitalizesEveryWord)
{
    EXPECT_EQ(rules().capitalized("bid placed"), "Bid Placed");
    EXPECT_EQ(rules().capitalized("ANSWERS RECEIVED"), "Answers Received");
    EXPECT_EQ(rules().capitalized("agent"), "Agent");
    EXPECT_EQ(rules().capitalized("  two\tblanks\nlines "), "  Two\tBlanks\nLines ");
    EXPECT_EQ(rules().capitalized(""), "");
}

TEST(TextRules, CapitalizesByWordBoundaries)
{
    EXPECT_EQ(rules().capitalized("o'neil's bid-plan"), "O'neil's Bid-Plan");
    EXPECT_EQ(rules().capitalized("(draft) a/b \"quoted\""), "(Draft) A/B \"Quoted\"");
    EXPECT_EQ(rules().capitalized("3d model"), "3D Model");
}

TEST(TextRules, CapitalizesBeyondAscii)
{
    EXPECT_EQ(rules().capitalized("ÉCOLE élémentaire"), "École Élémentaire");
    EXPECT_EQ(rules().capitalized("ǆungla"), "ǅungla") << "title case, not upper case";
    EXPECT_EQ(rules().capitalized("ΟΔΟΣ"), "Οδος") << "a final sigma";
    EXPECT_EQ(rules().capitalized("ßa"), "Ssa");
    EXPECT_EQ(rules().capitalized("e\u0301cole"), "E\u0301cole");
    EXPECT_EQ(rules().capitalized("שלום 🚀 go"), "שלום 🚀 Go");
}

TEST(TextRules, ChangesCaseOfWholeTexts)
{
    EXPECT_EQ(rules().uppercased("questions sent"), "QUESTIONS SENT");
    EXPECT_EQ(rules().uppercased("straße"), "STRASSE");
    EXPECT_EQ(rules().lowercased("QUESTIONS Sent"), "questions sent");
    EXPECT_EQ(rules().lowercased("ΟΔΟΣ"), "οδος");
}

TEST(TextRules, CaseOfServiceWordsIsTheSameInEveryLanguage)
{
    const IcuTextRules turkish("tr");
    EXPECT_EQ(turkish.uppercased("bid"), "BID");
    EXPECT_EQ(turkish.capitalized("in review"), "In Review");
    EXPECT_EQ(turkish.lowercased("BID"), "bid");
}

TEST(TextRules, PrefixCountsCharacters)
{
    EXPECT_EQ(rules().prefix("2026-01-02T03:04:05Z", 19), "2026-01-02T03:04:05");
    EXPECT_EQ(rules().prefix("short", 19), "short");
    EXPECT_EQ(rules().prefix("exact", 5), "exact");
    EXPECT_EQ(rules().prefix("text", 0), "");
    EXPECT_EQ(rules().prefix("", 3), "");
}

TEST(TextRules, PrefixKeepsCharactersWhole)
{
    EXPECT_EQ(rules().prefix("e\u0301e\u0301e\u0301", 2), "e\u0301e\u0301");
    EXPECT_EQ(rules().prefix("ae\u0301", 2), "ae\u0301");
    EXPECT_EQ(rules().prefix("ae\u0301x", 2), "ae\u0301");
    EXPECT_EQ(rules().prefix("👨‍👩‍👧👍🏽x", 2), "👨‍👩‍👧👍🏽");
    EXPECT_EQ(rules().prefix("🇩🇪🇫🇷🇵🇱", 2), "🇩🇪🇫🇷");
    EXPECT_EQ(rules().prefix("a\r\nb", 2), "a\r\n");
    EXPECT_EQ(rules().prefix("ab\r\n", 3), "ab\r\n");
    EXPECT_EQ(rules().prefix("\ud55c\uae00\ub9d0", 2), "\ud55c\uae00");
    EXPECT_EQ(rules().prefix("שלום", 2), "של");
}

TEST(TextRules, PrefixOfAllCharactersIsTheText)
{
    const std::string text = "é👍🏽ß";
    EXPECT_EQ(rules().prefix(text, 3), text);
    EXPECT_EQ(rules().prefix(text, 4), text);
}

TEST(TextRules, LocaleComesFromTheEnvironmentWhenNoneIsGiven)
{
    const IcuTextRules rules; // the test runs with a locale of no language
    EXPECT_TRUE(rules.containsIgnoringCase("BUILD IT", "build it"));
}

} // namespace
} // namespace trellisport::platform
