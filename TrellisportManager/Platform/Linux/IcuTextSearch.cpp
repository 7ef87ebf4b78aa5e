#include "Platform/Linux/IcuTextSearch.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

namespace trellisport::platform {

namespace {

/// In Turkish it makes another letter of the capital I before it.
constexpr UChar32 dotAbove = 0x307;
constexpr std::size_t wordSize = sizeof(std::uint64_t);

constexpr std::uint64_t everyByte(unsigned char byte)
{
    return ~std::uint64_t{0} / 0xff * byte;
}

bool isAscii(std::uint64_t word)
{
    return (word & everyByte(0x80)) == 0;
}

bool isAscii(char c)
{
    return (static_cast<unsigned char>(c) & 0x80) == 0;
}

/// CR LF is one character.
bool isWithinLineEnd(char before, char after)
{
    return before == '\r' && after == '\n';
}

std::size_t find(std::string_view text, std::string_view part, std::size_t from)
{
    // Several times as fast as std::string_view's where the first byte is a frequent one.
    const void *found = memmem(text.data() + from, text.size() - from, part.data(), part.size());
    return found ? static_cast<std::size_t>(static_cast<const char *>(found) - text.data())
                 : std::string_view::npos;
}

/// The first bytes of the code points beyond ASCII that fold to ASCII alone, and the second ones.
constexpr std::array<std::pair<unsigned char, unsigned char>, 9> disguises = {{
    {0xc3, 0x9f}, // sharp s
    {0xc4, 0xb0}, // Turkish dotted capital I
    {0xc5, 0xbf}, // long s
    {0xcc, 0x87}, // the dot, when on a Turkish I
    {0xcd, 0xbe}, // Greek question mark
    {0xe1, 0xba}, // capital sharp s
    {0xe1, 0xbf}, // Greek accent
    {0xe2, 0x84}, // Kelvin sign
    {0xef, 0xac}, // ligatures
}};

constexpr auto beginsDisguise = [] {
    std::array<bool, 256> begins = {};
    for (const auto &[first, second] : disguises) {
        begins[first] = true;
    }
    return begins;
}();

/// Whether the text may hold one of them. May be true of others too.
bool mayFoldToAscii(std::string_view text)
{
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(text[i]);
        if (beginsDisguise[first]) {
            const auto second = static_cast<unsigned char>(text[i + 1]);
            if (std::find(disguises.begin(), disguises.end(), std::pair(first, second)) !=
                disguises.end()) {
                return true;
            }
        }
    }
    return false;
}

/// Eight bytes at once; only ASCII letters change. The capital I stays when it is the capital of
/// something else.
std::uint64_t lowercased(std::uint64_t word, bool keepI)
{
    const std::uint64_t low = word & everyByte(0x7f);
    const std::uint64_t fromA = low + everyByte(0x80 - 'A');
    const std::uint64_t beyondZ = low + everyByte(0x80 - 'Z' - 1);
    std::uint64_t isUpper = fromA & ~beyondZ & ~word & everyByte(0x80);
    if (keepI) {
        isUpper &= (low ^ everyByte('I')) + everyByte(0x7f);
    }
    return word | (isUpper >> 2);
}

UChar32 nextOfAnyLength(std::string_view text, std::size_t &offset)
{
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(text.data());
    UChar32 codePoint = 0;
    U8_NEXT_OR_FFFD(bytes, offset, text.size(), codePoint);
    return codePoint;
}

/// The code point at the offset, which moves behind it.
inline UChar32 next(std::string_view text, std::size_t &offset)
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

std::string composed(std::string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    std::string composed;
    icu::StringByteSink<std::string> sink(&composed);
    icu::Normalizer2::getNFCInstance(status)->normalizeUTF8(
        0, {text.data(), static_cast<std::int32_t>(text.size())}, sink, nullptr, status);
    return composed;
}

} // namespace

/// Goes along a text and its folded form together.
class IcuTextSearch::Walk {
public:
    Walk(const IcuFoldTable &table, std::string_view text)
        : m_table(table)
        , m_text(text)
    {
    }

    /// Goes on until this many bytes of the folded form lie behind. False when that is within what
    /// one code point became.
    [[nodiscard]] bool reach(std::size_t foldedOffset)
    {
        while (m_foldedOffset < foldedOffset) {
            m_last = next(m_text, m_offset);
            m_foldedOffset += m_table.entry(m_last).size;
        }
        return m_foldedOffset == foldedOffset;
    }

    /// In the text.
    [[nodiscard]] std::size_t offset() const { return m_offset; }
    /// The code point before it.
    [[nodiscard]] UChar32 last() const { return m_last; }

private:
    const IcuFoldTable &m_table;
    std::string_view m_text;
    std::size_t m_offset = 0;
    std::size_t m_foldedOffset = 0;
    UChar32 m_last = 0;
};

IcuTextSearch::IcuTextSearch(std::shared_ptr<const IcuFoldTable> table, std::string_view part)
    : m_table(std::move(table))
{
    if (!fold(part)) {
        (void)fold(composed(part));
    }
    m_part = m_folded.substr(0, m_foldedSize);
    m_isPartAscii = std::all_of(m_part.begin(), m_part.end(), [](char c) { return isAscii(c); });
}

bool IcuTextSearch::isIn(std::string_view text)
{
    if (m_part.empty()) {
        return false;
    }
    switch (lookForAscii(text)) {
    case Finding::Held:
        return true;
    case Finding::NotHeld:
        return false;
    case Finding::Unclear:
        break;
    }
    if (fold(text)) {
        return isFoldedPartIn(text);
    }
    const std::string canonical = composed(text);
    (void)fold(canonical);
    return isFoldedPartIn(canonical);
}

void IcuTextSearch::reserve(std::size_t textSize)
{
    // No code point grows more than threefold; each is copied with room to spare.
    const std::size_t needed = 3 * textSize + sizeof(IcuFoldTable::Entry::bytes);
    if (m_folded.size() < needed) {
        m_folded.resize(needed);
    }
}

bool IcuTextSearch::foldAscii(std::string_view text)
{
    reserve(text.size());
    const bool keepI = m_table->isTurkic();
    std::uint64_t all = 0;
    const auto take = [&, out = m_folded.data()](std::size_t offset, std::size_t size) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + offset, size);
        all |= word;
        word = lowercased(word, keepI);
        std::memcpy(out + offset, &word, wordSize);
    };
    if (text.size() < wordSize) {
        take(0, text.size());
    } else {
        const std::size_t last = text.size() - wordSize;
        for (std::size_t offset = 0; offset < last; offset += wordSize) {
            take(offset, wordSize);
        }
        take(last, wordSize); // may overlap the one before, to the same result
    }
    m_foldedSize = text.size();
    return isAscii(all);
}

IcuTextSearch::Finding IcuTextSearch::lookForAscii(std::string_view text)
{
    const bool isTextAscii = foldAscii(text);
    if (!m_isPartAscii) {
        const bool canHold =
            !isTextAscii || (m_table->isTurkic() && text.find('I') != std::string_view::npos);
        return canHold ? Finding::Unclear : Finding::NotHeld;
    }
    const std::string_view folded(m_folded.data(), m_foldedSize);
    for (std::size_t from = 0; from < folded.size();) {
        const std::size_t start = find(folded, m_part, from);
        if (start == std::string_view::npos) {
            break;
        }
        const std::size_t end = start + m_part.size();
        const char before = start > 0 ? folded[start - 1] : '\0';
        const char after = end < folded.size() ? folded[end] : '\0';
        if (!isAscii(before) || !isAscii(after)) {
            return Finding::Unclear; // a mark may follow
        }
        if (!isWithinLineEnd(before, m_part.front()) && !isWithinLineEnd(m_part.back(), after)) {
            return Finding::Held;
        }
        from = start + 1;
    }
    return isTextAscii || !mayFoldToAscii(text) ? Finding::NotHeld : Finding::Unclear;
}

bool IcuTextSearch::fold(std::string_view text)
{
    reserve(text.size());
    char *out = m_folded.data();
    std::uint8_t lastClass = 0;
    bool inOrder = true;
    bool isPlain = true;
    for (std::size_t offset = 0; offset < text.size();) {
        const UChar32 codePoint = next(text, offset);
        const IcuFoldTable::Entry &entry = m_table->entry(codePoint);
        std::memcpy(out, entry.bytes.data(), sizeof(entry.bytes));
        out += entry.size;
        isPlain = isPlain && entry.isPlain;
        if (entry.firstClass != 0) {
            inOrder = inOrder && entry.firstClass >= lastClass &&
                      !(m_table->isTurkic() && codePoint == dotAbove);
        }
        lastClass = entry.lastClass;
    }
    m_foldedSize = static_cast<std::size_t>(out - m_folded.data());
    m_isPlain = isPlain;
    return inOrder;
}

bool IcuTextSearch::isFoldedPartIn(std::string_view text)
{
    const std::string_view folded(m_folded.data(), m_foldedSize);
    if (m_isPlain) {
        return find(folded, m_part, 0) != std::string_view::npos;
    }
    Walk toStart(*m_table, text);
    Walk toEnd(*m_table, text);
    for (std::size_t from = 0; from < folded.size();) {
        const std::size_t start = find(folded, m_part, from);
        if (start == std::string_view::npos) {
            return false;
        }
        if (toStart.reach(start) && toEnd.reach(start + m_part.size()) &&
            isBoundary(text, toStart) && isBoundary(text, toEnd)) {
            return true;
        }
        from = start + 1;
    }
    return false;
}

bool IcuTextSearch::isBoundary(std::string_view text, const Walk &walk)
{
    const std::size_t offset = walk.offset();
    if (offset == 0 || offset == text.size()) {
        return true;
    }
    std::size_t after = offset;
    if (m_table->entry(walk.last()).standsAlone && m_table->entry(next(text, after)).standsAlone) {
        return true;
    }
    UErrorCode status = U_ZERO_ERROR;
    if (!m_characters) {
        m_characters.reset(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    }
    UText opened = UTEXT_INITIALIZER;
    utext_openUTF8(&opened, text.data(), static_cast<std::int64_t>(text.size()), &status);
    if (U_FAILURE(status)) {
        return false;
    }
    m_characters->setText(&opened, status);
    const bool boundary = m_characters->isBoundary(static_cast<std::int32_t>(offset)) != 0;
    utext_close(&opened);
    return boundary;
}

} // namespace trellisport::platform
