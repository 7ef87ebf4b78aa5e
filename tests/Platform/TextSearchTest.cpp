#include "Platform/Linux/AsciiFolding.h"
#include "Platform/Linux/IcuFoldTable.h"
#include "Platform/Linux/IcuTextRules.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace trellisport::platform {
namespace {

bool contains(std::string_view text, std::string_view part, const char *locale = "en")
{
    return IcuTextRules(locale).containsIgnoringCase(text, part);
}

std::string joined(std::initializer_list<std::string_view> pieces)
{
    std::string text;
    for (const std::string_view piece : pieces) {
        text += piece;
    }
    return text;
}

TEST(TextSearch, FindsPartsOfEveryLengthAtEveryPlace)
{
    const IcuTextRules rules("en");
    const std::string letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    for (std::size_t size = 1; size <= letters.size(); ++size) {
        const std::string text = letters.substr(0, size);
        for (std::size_t place = 0; place < size; ++place) {
            for (std::size_t length = 1; length <= size - place; ++length) {
                std::string part = text.substr(place, length);
                ASSERT_TRUE(rules.search(part)->isIn(text)) << part << " in " << text;
                part.insert(part.size() / 2, 1, '-');
                ASSERT_FALSE(rules.search(part)->isIn(text)) << part << " in " << text;
            }
        }
    }
}

TEST(TextSearch, FindsPartAtStartMiddleAndEnd)
{
    EXPECT_TRUE(contains("Build a web shop", "Build"));
    EXPECT_TRUE(contains("Build a web shop", "a web"));
    EXPECT_TRUE(contains("Build a web shop", "shop"));
    EXPECT_TRUE(contains("Build a web shop", "Build a web shop"));
    EXPECT_FALSE(contains("Build a web shop", "shops"));
    EXPECT_FALSE(contains("Build a web shop", "webshop"));
}

TEST(TextSearch, IgnoresCaseInBothTexts)
{
    EXPECT_TRUE(contains("Build a WEB Shop", "web sHOP"));
    EXPECT_TRUE(contains("ПРИЛОЖЕНИЕ для iOS", "приложение ДЛЯ ios"));
    EXPECT_TRUE(contains("ÉCOLE", "école"));
}

TEST(TextSearch, ComparesEveryAsciiCharacterAsItself)
{
    std::string all;
    for (char c = ' '; c <= '~'; ++c) {
        all += c;
    }
    const IcuTextRules rules("en");
    for (char a = ' '; a <= '~'; ++a) {
        const auto search = rules.search(std::string(1, a));
        for (char b = ' '; b <= '~'; ++b) {
            const bool same = a == b || ((a ^ b) == 0x20 && std::isalpha(a) && std::isalpha(b));
            // Long enough for the way that takes eight bytes at once, and short for the other.
            EXPECT_EQ(search->isIn(std::string(1, b)), same) << a << ' ' << b;
            EXPECT_EQ(search->isIn(std::string(17, b)), same) << a << ' ' << b;
        }
        EXPECT_TRUE(search->isIn(all)) << a;
    }
}

TEST(TextSearch, NoTextHoldsAnEmptyPart)
{
    EXPECT_FALSE(contains("title", ""));
    EXPECT_FALSE(contains("", ""));
    EXPECT_FALSE(contains("", "a"));
}

TEST(TextSearch, TellsAccentsApart)
{
    EXPECT_FALSE(contains("résumé", "resume"));
    EXPECT_FALSE(contains("resume", "résumé"));
    EXPECT_TRUE(contains("Mein Résumé", "résumé"));
}

TEST(TextSearch, ComposedAndDecomposedSpellingsAreAlike)
{
    EXPECT_TRUE(contains("caf\u00e9 site", "cafe\u0301"));
    EXPECT_TRUE(contains("cafe\u0301 site", "CAF\u00c9"));
    EXPECT_TRUE(contains("Vi\u1ec7t", "vie\u0323\u0302t"));
    EXPECT_TRUE(contains("\ud55c\uae00", "\u1112\u1161\u11ab"));
    EXPECT_TRUE(contains("\u212b", "a\u030a")) << "the sign for the unit is the letter";
}

TEST(TextSearch, OrderOfMarksThatDoNotMeetDoesNotCount)
{
    EXPECT_TRUE(contains("Vie\u0302\u0323t", "vi\u1ec7t"));
    EXPECT_TRUE(contains("Vi\u1ec7t", "vie\u0302\u0323t"));
    EXPECT_FALSE(contains("Vie\u0302\u0323t", "vi\u00ea"));
}

TEST(TextSearch, MarksOutOfOrderElsewhereDoNotHideAPart)
{
    EXPECT_TRUE(contains("Vie\u0302\u0323t t\u0338\u0323K", "t\u0338\u0323k"));
    EXPECT_TRUE(contains("\u00ea\u0323", "\u1ec7")) << "the part does not begin like the text";
    EXPECT_FALSE(contains("Vie\u0302\u0323t t\u0338\u0323K", "t\u0338k"));
}

TEST(TextSearch, FindsWholeCharactersOnly)
{
    EXPECT_FALSE(contains("cafe\u0301", "e"));
    EXPECT_FALSE(contains("cafe\u0301", "cafe"));
    EXPECT_FALSE(contains("cafe\u0301", "\u0301"));
    EXPECT_FALSE(contains("caf\u00e9", "\u0301"));
    EXPECT_TRUE(contains("cafe\u0301 e", "e")) << "the second one stands alone";
    EXPECT_FALSE(contains("a\r\nb", "\r"));
    EXPECT_FALSE(contains("a\r\nb", "\nb"));
    EXPECT_TRUE(contains("a\r\nb", "a\r\nB"));
    EXPECT_TRUE(contains("a\rb\r\n", "\r"));
    EXPECT_FALSE(contains("é\r\nb", "\r"));
}

TEST(TextSearch, EmojiSequenceIsOneCharacter)
{
    constexpr auto family = "👨‍👩‍👧";
    EXPECT_TRUE(contains("shop 🚀 launch", "🚀"));
    EXPECT_TRUE(contains("for the 👨‍👩‍👧 app", family));
    EXPECT_FALSE(contains("for the 👨‍👩‍👧 app", "👩"));
    EXPECT_FALSE(contains("thumbs 👍🏽 up", "👍"));
    EXPECT_TRUE(contains("thumbs 👍🏽 up", "👍🏽 UP"));
    EXPECT_FALSE(contains("❤️", "❤")) << "the variation selector belongs to it";
}

TEST(TextSearch, FlagsAreNotCutInHalves)
{
    // Two flags, whose inner two letters would make a third.
    EXPECT_FALSE(contains("🇩🇪🇫🇷", "🇪🇫"));
    EXPECT_TRUE(contains("🇩🇪🇫🇷", "🇫🇷"));
    EXPECT_TRUE(contains("🇩🇪🇫🇷", "🇩🇪"));
}

TEST(TextSearch, SharpSIsDoubleS)
{
    EXPECT_TRUE(contains("Hauptstraße", "STRASSE"));
    EXPECT_TRUE(contains("HAUPTSTRASSE", "straße"));
    EXPECT_TRUE(contains("GROẞ", "groß"));
    EXPECT_FALSE(contains("Maß", "mas")) << "half of it";
    EXPECT_TRUE(contains("of\ufb01ce", "FI")) << "a ligature";
    EXPECT_FALSE(contains("of\ufb01ce", "OF\ufb02"));
}

TEST(TextSearch, GreekFinalSigmaIsSigma)
{
    EXPECT_TRUE(contains("ΟΔΟΣ", "οδος"));
    EXPECT_TRUE(contains("οδος", "ΟΔΟΣ"));
    EXPECT_TRUE(contains("οδοσ", "οδος"));
}

TEST(TextSearch, TurkishTellsDottedFromDotlessI)
{
    for (const char *locale : {"tr", "tr-TR", "az-Latn-AZ"}) {
        EXPECT_TRUE(contains("İSTANBUL", "istanbul", locale));
        EXPECT_TRUE(contains("istanbul", "İstanbul", locale));
        EXPECT_TRUE(contains("I\u0307STANBUL", "istanbul", locale));
        EXPECT_TRUE(contains("istanbul", "I\u0307stanbul", locale));
        EXPECT_TRUE(contains("s\u0307 NAME", "\u1e61 name", locale));
        EXPECT_FALSE(contains("ISTANBUL", "istanbul", locale));
        EXPECT_TRUE(contains("DIŞ CEPHE", "dış cephe", locale));
        EXPECT_TRUE(contains("ISPARTA ILE GIDER", "ısparta ıle", locale));
        EXPECT_TRUE(contains("build it", "it", locale));
        EXPECT_FALSE(contains("BUILD IT", "it", locale));
        EXPECT_TRUE(contains("BUILD WEB SHOP", "web shop", locale));
    }
}

TEST(TextSearch, OtherLanguagesTakeBothCasesOfIForOneLetter)
{
    EXPECT_TRUE(contains("BUILD IT", "build it"));
    EXPECT_FALSE(contains("İSTANBUL", "istanbul")) << "its dot is a mark that i has not";
    EXPECT_TRUE(contains("İSTANBUL", "i\u0307stanbul"));
    EXPECT_FALSE(contains("DIŞ", "dış"));
}

TEST(TextSearch, RightToLeftTextIsSearchedInItsLogicalOrder)
{
    EXPECT_TRUE(contains("בניית אתר חדש", "אתר"));
    EXPECT_TRUE(contains("تطبيق جديد", "جديد"));
    EXPECT_FALSE(contains("تطبيق جديد", "ديدج"));
    EXPECT_FALSE(contains("שָׁלוֹם", "שלום")) << "points are marks";
}

TEST(TextSearch, InvalidBytesCountAsReplacementCharacters)
{
    EXPECT_TRUE(contains("bad \xff byte", "bad \ufffd byte"));
    EXPECT_TRUE(contains("bad \xc3", "D \ufffd"));
    EXPECT_TRUE(contains("bad \xf0\x9f byte", "BYTE"));
    EXPECT_FALSE(contains("ok", "\xff"));
}

TEST(TextSearch, LooksOnAfterAnOccurrenceThatEndsInsideACharacter)
{
    EXPECT_TRUE(contains("ne\u0301 ne\u0301 ne", "ne"));
    EXPECT_TRUE(contains("ßs", "s"));
    EXPECT_FALSE(contains("ne\u0301 ne\u0301 ne\u0301", "ne"));
}

TEST(TextSearch, FindsPartAtEveryOffsetBesideOtherScripts)
{
    const IcuTextRules rules("en");
    const auto search = rules.search("Заказ 42");
    for (std::size_t length = 0; length < 20; ++length) {
        const std::string ascii(length, 'x');
        EXPECT_TRUE(search->isIn(joined({ascii, "заказ 42", ascii}))) << length;
        EXPECT_TRUE(search->isIn(joined({ascii, "é", ascii, "ЗАКАЗ 42"}))) << length;
        EXPECT_FALSE(search->isIn(joined({ascii, "заказ 4", ascii}))) << length;
    }
}

TEST(TextSearch, FindsPartsOfManyScriptsAtEveryPlace)
{
    struct Sample {
        const char *part;
        const char *written; ///< the same in another case or spelling
        const char *other;   ///< of the same letters, but not the part
    };
    const IcuTextRules rules("en");
    for (const Sample &sample :
         {Sample{"заказ", "ЗАКАЗ", "казаз"}, Sample{"été", "E\u0301T\u00c9", "te\u0301e\u0301"},
          Sample{"straße", "STRASSE", "strase"}, Sample{"विकास", "विकास", "सकावि"},
          Sample{"프로젝트", "\u1111\u1173로젝트", "로프젝트"},
          Sample{"集成项目", "集成项目", "成集项目"}, Sample{"がぎ", "か\u3099き\u3099", "かぎ"},
          Sample{"trực", "TRỰC", "trứcu"}, Sample{"☕ café", "☕ CAFE\u0301", "☕ cafe"},
          Sample{"𐐨𐐩", "𐐀𐐁", "𐐩𐐨"}}) {
        const auto search = rules.search(sample.part);
        for (std::size_t length = 0; length < 40; ++length) {
            const std::string before(length, 'x');
            EXPECT_TRUE(search->isIn(joined({before, " ", sample.written})))
                << sample.part << length;
            EXPECT_TRUE(search->isIn(joined({sample.other, before, " ", sample.written, " ж"})))
                << sample.part << length;
            EXPECT_FALSE(search->isIn(joined({before, " ", sample.other, " ж"})))
                << sample.part << length;
        }
    }
}

TEST(TextSearch, OutlivesTheRules)
{
    auto rules = std::make_unique<IcuTextRules>("en");
    const auto search = rules->search("Ключ");
    rules.reset();
    EXPECT_TRUE(search->isIn("новый КЛЮЧ"));
}

TEST(TextSearch, RulesServeManyThreads)
{
    const IcuTextRules rules("en");
    std::vector<std::thread> threads;
    std::vector<int> found(4, 0);
    for (std::size_t i = 0; i < found.size(); ++i) {
        threads.emplace_back([&rules, &count = found[i]] {
            for (const char *text : {"ключ", "鍵", "مفتاح", "מפתח", "한글", "κλειδί"}) {
                count += rules.containsIgnoringCase(std::string("x") + text, text) ? 1 : 0;
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(found, std::vector<int>(4, 6));
}

// Texts in which ASCII does not show may hold it in disguise; the search knows these by heart.
TEST(TextSearch, FindsAsciiInEveryCodePointThatFoldsToIt)
{
    for (const char *locale : {"en", "tr"}) {
        const IcuFoldTable table(std::string_view(locale) == "tr");
        const IcuTextRules rules(locale);
        int disguises = 0;
        for (UChar32 c = 0x80; c <= 0x10ffff; ++c) {
            const auto &entry = table.entry(c);
            const std::string_view folded(entry.bytes.data(), entry.size);
            if (std::all_of(folded.begin(), folded.end(),
                            [](char b) { return b != '\0' && isAscii(b); })) {
                std::string text = "Ж";
                icu::UnicodeString(c).toUTF8String(text);
                EXPECT_TRUE(rules.containsIgnoringCase(text + "Ж", folded)) << std::hex << c;
                ++disguises;
            }
        }
        EXPECT_GT(disguises, 10);
    }
}

// The search reserves memory by this bound.
TEST(FoldTable, NoCodePointGrowsMoreThanThreefold)
{
    for (const bool turkic : {false, true}) {
        const IcuFoldTable table(turkic);
        for (UChar32 c = 0; c <= 0x10ffff; ++c) {
            const std::size_t own = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
            const auto &entry = table.entry(c);
            ASSERT_GT(entry.size, 0U) << c;
            ASSERT_LE(entry.size, 3 * own) << c;
            ASSERT_LE(entry.size, IcuFoldTable::Entry::capacity) << c;
        }
    }
}

} // namespace
} // namespace trellisport::platform
