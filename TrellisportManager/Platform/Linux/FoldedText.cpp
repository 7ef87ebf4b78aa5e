#include "Platform/Linux/FoldedText.h"

#include "Platform/Linux/AsciiFolding.h"
#include "Platform/Linux/Utf8.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>

#include <cstdint>
#include <cstring>
#include <utility>

namespace trellisport::platform {

FoldedText::FoldedText(std::shared_ptr<const IcuFoldTable> table)
    : m_table(std::move(table))
{
}

void FoldedText::reserve(std::size_t textSize)
{
    // No code point grows more than threefold; each is copied with room to spare.
    const std::size_t needed = 3 * textSize + IcuFoldTable::Entry::capacity;
    if (m_bytes.size() < needed) {
        m_bytes.resize(needed);
    }
}

bool FoldedText::foldAscii(std::string_view text)
{
    reserve(text.size());
    m_size = text.size();
    return copyAsciiLowercased(text, m_bytes.data(), m_table->isTurkic());
}

bool FoldedText::fold(std::string_view text)
{
    reserve(text.size());
    char *out = m_bytes.data();
    std::uint8_t lastClass = 0;
    bool inOrder = true;
    bool isPlain = true;
    for (std::size_t offset = 0; offset < text.size();) {
        const UChar32 codePoint = nextCodePoint(text, offset);
        const IcuFoldTable::Entry &entry = m_table->entry(codePoint);
        std::memcpy(out, entry.bytes.data(), sizeof(entry.bytes));
        out += entry.size;
        isPlain = isPlain && entry.isPlain;
        if (entry.firstClass != 0) {
            inOrder = inOrder && entry.firstClass >= lastClass &&
                      !(m_table->isTurkic() && codePoint == IcuFoldTable::dotAbove);
        }
        lastClass = entry.lastClass;
    }
    m_size = static_cast<std::size_t>(out - m_bytes.data());
    m_isPlain = isPlain;
    return inOrder;
}

std::string composed(std::string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    std::string composed;
    icu::StringByteSink<std::string> sink(&composed);
    icu::Normalizer2::getNFCInstance(status)->normalizeUTF8(
        0, {text.data(), static_cast<std::int32_t>(text.size())}, sink, nullptr, status);
    return composed;
}

} // namespace trellisport::platform
