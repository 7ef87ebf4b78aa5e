#pragma once

#include "Platform/Linux/FoldScan.h"
#include "Platform/Linux/FoldedText.h"
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

    /// The way for most texts when the part is ASCII.
    [[nodiscard]] Finding lookForAscii(std::string_view text);
    /// The way for the other texts and parts.
    [[nodiscard]] Finding look(std::string_view text);
    /// Whether FoldedText::fold() would give true; to be asked when the text has been scanned.
    [[nodiscard]] bool isInOrder(std::string_view text);
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
    FoldedText m_folded;
    std::unique_ptr<icu::BreakIterator> m_characters; ///< made when first needed
};

} // namespace trellisport::platform
