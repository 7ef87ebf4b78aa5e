#pragma once

#include "Platform/Linux/FoldScan.h"
#include "Platform/Linux/IcuFoldTable.h"
#include "Platform/TextRules.h"

#include <unicode/brkiter.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace trellisport::platform {

/// Looks for the folded part in the folded text, then checks that what was found begins and ends
/// where characters of the text do.
class IcuTextSearch final : public TextSearch {
public:
    IcuTextSearch(std::shared_ptr<const IcuFoldTable> table, std::string_view part);

    [[nodiscard]] bool isIn(std::string_view text) override;

private:
    class Walk;
    enum class Finding : std::uint8_t { Held, NotHeld, Unclear };

    void reserve(std::size_t textSize);
    /// The way for most texts when the part is ASCII.
    [[nodiscard]] Finding lookForAscii(std::string_view text);
    /// The way for the other texts and parts.
    [[nodiscard]] Finding look(std::string_view text);
    /// Whether fold() would give true; to be asked when the text has been scanned.
    [[nodiscard]] bool isInOrder(std::string_view text);
    /// Puts the text into m_folded with no more than its ASCII letters folded. Whether it has no
    /// others.
    [[nodiscard]] bool foldAscii(std::string_view text);
    /// Puts the folded text into m_folded. False when it counts only for the composed text: marks
    /// stand in an order other than the canonical one, or one must be seen with its letter.
    [[nodiscard]] bool fold(std::string_view text);
    [[nodiscard]] bool isFoldedPartIn(std::string_view text);
    /// Whether the part, and nothing else, is what the text becomes from the offset on up to a
    /// place where a character ends; the offset must be a character's beginning for it, too.
    [[nodiscard]] bool isPartAt(std::string_view text, std::size_t offset);
    /// Whether a character ends at the offset; before: the code point before it.
    [[nodiscard]] bool isBoundary(std::string_view text, std::size_t offset, UChar32 before);

    std::shared_ptr<const IcuFoldTable> m_table;
    std::string m_part; ///< folded
    bool m_isPartAscii = false;
    std::optional<FoldScan> m_scan; ///< made when first needed
    std::string m_folded;           ///< only its first m_foldedSize bytes count
    std::size_t m_foldedSize = 0;
    /// Every byte of m_folded stands for that of the text (see IcuFoldTable).
    bool m_isPlain = false;
    std::unique_ptr<icu::BreakIterator> m_characters; ///< made when first needed
};

} // namespace trellisport::platform
