#include "Presentation/TextPieces.h"

#include <algorithm>
#include <string>

namespace trellisport {

namespace {

constexpr std::size_t maximumPiece = 2000;
constexpr std::size_t maximumLines = 50;
/// A line within which no piece ends: laid out at once it takes about five milliseconds.
constexpr std::size_t maximumLine = 16384;
constexpr std::size_t labelCharacters = 500;
constexpr std::size_t timeCharacters = 19;

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

bool isPrintableAscii(char byte)
{
    return byte >= ' ' && byte <= '~';
}

/// The longest beginning of at most that many bytes that parts no code point.
std::string_view beginning(std::string_view text, std::size_t bytes)
{
    if (text.size() <= bytes) {
        return text;
    }
    while (bytes > 0 && isContinuation(text[bytes])) {
        --bytes;
    }
    return text.substr(0, bytes);
}

/// Where the last line that fits ends, its end included; where the first one does when it is longer
/// than a piece; 0 when it is longer than any line may be.
std::size_t lineCut(std::string_view text)
{
    std::size_t cut = 0;
    for (std::size_t lines = 0; lines < maximumLines; ++lines) {
        const std::size_t end = text.substr(0, maximumPiece).find('\n', cut);
        if (end == std::string_view::npos) {
            break;
        }
        cut = end + 1;
    }
    return cut > 0 ? cut : text.substr(0, maximumLine).find('\n') + 1;
}

/// Whether a blank is a character of its own: a mark may follow that belongs to it.
bool standsAlone(std::string_view blankAndRest, const platform::TextRules &rules)
{
    return blankAndRest.size() < 2 || isPrintableAscii(blankAndRest[1]) ||
           rules.prefix(beginning(blankAndRest, maximumLine), 1).size() == 1;
}

/// Behind the last blank of the longest line; 0 when there is none.
std::size_t blankCut(std::string_view text, const platform::TextRules &rules)
{
    const std::size_t blank = text.substr(0, maximumLine).find_last_of(" \t");
    if (blank == std::string_view::npos || !standsAlone(text.substr(blank), rules)) {
        return 0;
    }
    return blank + 1;
}

/// Between two characters, as far on as fits.
std::size_t characterCut(std::string_view text, const platform::TextRules &rules)
{
    // Two printable ASCII characters are never one, and most long words are made of them.
    for (std::size_t cut = maximumLine; cut > maximumLine / 2; --cut) {
        if (isPrintableAscii(text[cut - 1]) && isPrintableAscii(text[cut])) {
            return cut;
        }
    }
    // As many whole characters as there are, short of the last, which the limit may have parted.
    const std::string_view window = beginning(text, maximumLine);
    for (std::size_t count = maximumLine / 4; count > 0; count /= 4) {
        const std::size_t cut = rules.prefix(window, count).size();
        if (cut < window.size()) {
            return cut;
        }
    }
    return window.size();
}

} // namespace

std::size_t firstPieceSize(std::string_view text, const platform::TextRules &rules)
{
    if (text.size() <= maximumPiece) {
        return text.size();
    }
    if (const std::size_t cut = lineCut(text); cut > 0) {
        return cut;
    }
    if (text.size() <= maximumLine) {
        return text.size();
    }
    if (const std::size_t cut = blankCut(text, rules); cut > 0) {
        return cut;
    }
    return characterCut(text, rules);
}

QString displayText(std::string_view text)
{
    QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    if (text.find('\r') != std::string_view::npos) {
        shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    }
    return shown;
}

QString pieceText(std::string_view piece, bool moreFollows)
{
    if (moreFollows && piece.ends_with('\n')) {
        piece.remove_suffix(piece.ends_with("\r\n") ? 2 : 1);
    }
    return displayText(piece);
}

QString labelText(std::string_view text, const platform::TextRules &rules)
{
    if (text.size() <= labelCharacters) {
        return displayText(text);
    }
    const std::string shown = rules.prefix(beginning(text, maximumLine), labelCharacters);
    return shown.size() == text.size() ? displayText(text) : displayText(shown) + QChar(0x2026);
}

QString shortTime(std::string_view time, const platform::TextRules &rules)
{
    QString text = displayText(rules.prefix(beginning(time, maximumLine), timeCharacters));
    for (qsizetype i = 0; i < text.size(); ++i) {
        // With a mark on it, it is another letter.
        const bool isMarked = i + 1 < text.size() && text[i + 1].isMark();
        if (text[i] == QLatin1Char('T') && !isMarked) {
            text[i] = QLatin1Char(' ');
        }
    }
    return text;
}

} // namespace trellisport
