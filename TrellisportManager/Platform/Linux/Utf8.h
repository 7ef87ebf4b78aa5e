#pragma once

#include <unicode/umachine.h>
#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace trellisport::platform {

// Damaged bytes read as U+FFFD.

/// For nextCodePoint().
[[nodiscard]] inline UChar32 nextOfAnyLength(std::string_view text, std::size_t &offset)
{
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(text.data());
    UChar32 codePoint = 0;
    U8_NEXT_OR_FFFD(bytes, offset, text.size(), codePoint);
    return codePoint;
}

/// The code point at the offset, which must be within the text and moves behind it.
[[nodiscard]] inline UChar32 nextCodePoint(std::string_view text, std::size_t &offset)
{
    // One byte and two are most of what there is.
    const auto first = static_cast<std::uint8_t>(text[offset]);
    if (first < 0x80) {
        ++offset;
        return first;
    }
    if (first >= 0xc2 && first < 0xe0 && text.size() - offset > 1 &&
        U8_IS_TRAIL(text[offset + 1])) {
        offset += 2;
        return ((first & 0x1f) << 6) | (text[offset - 1] & 0x3f);
    }
    return nextOfAnyLength(text, offset);
}

/// The code point that ends at the offset; none, 0, at the beginning.
[[nodiscard]] inline UChar32 codePointBefore(std::string_view text, std::size_t offset)
{
    if (offset == 0) {
        return 0;
    }
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(text.data());
    auto at = static_cast<std::int32_t>(offset);
    UChar32 codePoint = 0;
    U8_PREV_OR_FFFD(bytes, 0, at, codePoint);
    return codePoint;
}

} // namespace trellisport::platform
