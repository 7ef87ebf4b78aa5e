#include "Presentation/TextPieces.h"
#include "Platform/Platform.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace trellisport {
namespace {

using ::testing::ElementsAre;

const platform::TextRules &rules()
{
    return platform::Platform::current().textRules();
}

std::vector<std::string> pieces(std::string_view text)
{
    std::vector<std::string> found;
    while (!text.empty()) {
        const std::size_t size = firstPieceSize(text, rules());
        if (size == 0) {
            ADD_FAILURE() << "a piece of nothing";
            break;
        }
        found.emplace_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return found;
}

std::string repeated(std::string_view part, std::size_t times)
{
    std::string text;
    for (; times > 0; --times) {
        text += part;
    }
    return text;
}

TEST(TextPieces, ATextOfTwoThousandBytesIsOnePiece)
{
    const std::string text = repeated("ten bytes\n", 200);
    EXPECT_EQ(firstPieceSize(text, rules()), text.size());
    EXPECT_EQ(firstPieceSize("", rules()), 0U);
}

TEST(TextPieces, AreCutAtLineEndsAndLoseNothing)
{
    const std::string text = repeated("a line of thirty characters..\n", 500) + "the end";
    const auto found = pieces(text);
    EXPECT_GT(found.size(), 7U);
    std::string whole;
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_LE(found[i].size(), 2000U);
        EXPECT_TRUE(i + 1 == found.size() || found[i].ends_with('\n'));
        whole += found[i];
    }
    EXPECT_EQ(whole, text);
}

TEST(TextPieces, HoldFiftyLinesAtMost)
{
    const auto found = pieces(std::string(5000, '\n'));
    EXPECT_EQ(found.size(), 60U + 2000 / 2000);
    EXPECT_EQ(found.front().size(), 50U);
}

TEST(TextPieces, ALineOfUpToSixteenKibibytesIsNeverCut)
{
    const std::string line = repeated("lorem ipsum ", 1300); // 15,600 bytes
    EXPECT_THAT(pieces(line), ElementsAre(line));
    EXPECT_THAT(pieces(line + '\n' + line), ElementsAre(line + '\n', line));
    const std::string lines = repeated("a line of thirty characters..\n", 50);
    EXPECT_THAT(pieces(lines + line + "\nend"), ElementsAre(lines, line + '\n', "end"));
}

TEST(TextPieces, OfALineBeyondSixteenKibibytesAreCutAtBlanks)
{
    const std::string text = repeated("lorem ipsum ", 10'000);
    const auto found = pieces(text);
    EXPECT_EQ(found.size(), 8U);
    for (const std::string &piece : found) {
        EXPECT_LE(piece.size(), 16U * 1024);
        EXPECT_TRUE(piece.ends_with(' '));
    }
}

TEST(TextPieces, OfALongWordAreCutAnywhere)
{
    const auto found = pieces(std::string(1'000'000, 'x'));
    EXPECT_EQ(found.size(), 62U);
}

TEST(TextPieces, OfALongWordOfAnyScriptAreFewAndWhole)
{
    const std::string letter = "\u4E2D";
    const auto found = pieces(repeated(letter, 100'000));
    EXPECT_LE(found.size(), 30U);
    for (const std::string &piece : found) {
        EXPECT_EQ(piece.size() % letter.size(), 0U);
        EXPECT_LE(piece.size(), 16U * 1024);
    }
}

TEST(TextPieces, NeverPartACharacter)
{
    // A family of four is one character of 25 bytes.
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466";
    const auto found = pieces(repeated(family, 1000));
    EXPECT_GT(found.size(), 1U);
    for (const std::string &piece : found) {
        EXPECT_EQ(piece.size() % family.size(), 0U);
        EXPECT_LE(piece.size(), 16U * 1024);
    }
}

TEST(TextPieces, KeepAMarkWithTheBlankThatCarriesIt)
{
    // The only blank that fits carries an acute accent.
    const std::string text = repeated("\u00E9", 8000) + " \u0301" + repeated("\u00E9", 2000);
    const auto found = pieces(text);
    EXPECT_GT(found.size(), 1U);
    for (const std::string &piece : found) {
        EXPECT_FALSE(piece.starts_with("\u0301"));
    }
}

TEST(TextPieces, OfMarksWithoutEndAreCutAllTheSame)
{
    const auto found = pieces("e" + repeated("\u0301", 100'000));
    EXPECT_GT(found.size(), 10U);
    for (const std::string &piece : found) {
        EXPECT_LE(piece.size(), 16U * 1024);
    }
}

TEST(TextPieces, LeaveOutTheLineEndTheyWereCutAt)
{
    EXPECT_EQ(pieceText("one\ntwo\n", true), u"one\ntwo");
    EXPECT_EQ(pieceText("one\r\n", true), u"one");
    EXPECT_EQ(pieceText("one\n\n", true), u"one\n");
    EXPECT_EQ(pieceText("one\n", false), u"one\n");
    EXPECT_EQ(pieceText("one ", true), u"one ");
}

TEST(DisplayText, KeepsLineBreaksOfEverySystem)
{
    EXPECT_EQ(displayText("a\r\nb\rc\nd"), u"a\nb\nc\nd");
}

TEST(LabelText, ShortensWhatNoLineHolds)
{
    EXPECT_EQ(labelText("agent", rules()), u"agent");
    EXPECT_EQ(labelText(std::string(500, 'x'), rules()).size(), 500);
    const QString shortened = labelText(std::string(1'000'000, 'x'), rules());
    EXPECT_EQ(shortened.size(), 501);
    EXPECT_TRUE(shortened.endsWith(QChar(0x2026)));
    // 1,500 bytes, 500 characters.
    EXPECT_EQ(labelText(repeated("\u4E2D", 500), rules()).size(), 500);
}

TEST(ShortTime, IsTheFirstNineteenCharactersWithBlanksForT)
{
    EXPECT_EQ(shortTime("2024-05-01T09:30:00.123Z", rules()), u"2024-05-01 09:30:00");
    EXPECT_EQ(shortTime("2024-05-01T09:30:00Z", rules()), u"2024-05-01 09:30:00");
    EXPECT_EQ(shortTime("2024-05-01", rules()), u"2024-05-01");
    EXPECT_EQ(shortTime("", rules()), u"");
}

TEST(ShortTime, ReplacesEveryTAndNoOther)
{
    EXPECT_EQ(shortTime("TTt ThursdayT", rules()), u"  t  hursday ");
    EXPECT_EQ(shortTime("nineteen characters, Then more", rules()), u"nineteen characters");
}

TEST(ShortTime, CountsWholeCharacters)
{
    const std::string accented = "e\u0301"; // one character of two code points
    EXPECT_EQ(shortTime(repeated(accented, 30), rules()),
              QString::fromStdString(repeated(accented, 19)));
    EXPECT_EQ(shortTime(repeated("\U0001F1E9\U0001F1EA", 25), rules()),
              QString::fromStdString(repeated("\U0001F1E9\U0001F1EA", 19)));
    EXPECT_EQ(shortTime("T\u0301", rules()), u"T\u0301");
}

} // namespace
} // namespace trellisport
