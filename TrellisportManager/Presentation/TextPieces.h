#pragma once

#include "Platform/TextRules.h"

#include <QString>

#include <cstddef>
#include <string_view>

namespace trellisport {

// Texts of any length for the screen: none is ever laid out as a whole when it is long. All texts
// are UTF-8. Any thread.

/// How many bytes of the text its first piece takes: all of a text of up to 2,000; of a longer one
/// the lines that end within 2,000, 50 at most, or one longer line. A line is parted only beyond
/// 16 KiB, behind a blank or else between two characters (grapheme clusters), and a character only
/// when it is longer than that itself.
[[nodiscard]] std::size_t firstPieceSize(std::string_view text, const platform::TextRules &rules);

/// The text with every line end (CR LF, CR) as "\n".
[[nodiscard]] QString displayText(std::string_view text);

/// One piece of a longer text. Where more follows, the line end it was cut at is left out: what
/// follows begins on a new line anyhow.
[[nodiscard]] QString pieceText(std::string_view piece, bool moreFollows);

/// A text for a label that is seen on a line or two: beyond 500 characters it ends in
/// an ellipsis.
[[nodiscard]] QString labelText(std::string_view text, const platform::TextRules &rules);

/// A time as the service sends it, shortened for the screen: its first 19 characters, with a blank
/// for every "T" in them. 2024-05-01T09:30:00.123Z gives 2024-05-01 09:30:00.
[[nodiscard]] QString shortTime(std::string_view time, const platform::TextRules &rules);

} // namespace trellisport
