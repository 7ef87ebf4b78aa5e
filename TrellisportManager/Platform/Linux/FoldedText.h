#pragma once

#include "Platform/Linux/IcuFoldTable.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace trellisport::platform {

/// A text folded: letter case and the choice between composed and decomposed spelling taken out of
/// it. Made for one text after another, so that their memory is had once. One thread at a time.
class FoldedText {
public:
    explicit FoldedText(std::shared_ptr<const IcuFoldTable> table);

    /// Folds the text. False when the result counts only for the composed text: marks stand in an
    /// order other than the canonical one, or one must be seen with its letter.
    [[nodiscard]] bool fold(std::string_view text);
    /// Folds no more than the text's ASCII letters. Whether it has no others; isPlain() then tells
    /// nothing.
    [[nodiscard]] bool foldAscii(std::string_view text);

    /// Until the next text is folded.
    [[nodiscard]] std::string_view bytes() const { return {m_bytes.data(), m_size}; }
    /// Every byte stands for that of the text, and every code point for a character (see
    /// IcuFoldTable).
    [[nodiscard]] bool isPlain() const { return m_isPlain; }

private:
    void reserve(std::size_t textSize);

    std::shared_ptr<const IcuFoldTable> m_table;
    std::string m_bytes; ///< only its first m_size bytes count
    std::size_t m_size = 0;
    bool m_isPlain = false;
};

/// The text with its characters composed where they can be. Damage becomes U+FFFD.
[[nodiscard]] std::string composed(std::string_view text);

} // namespace trellisport::platform
