#include "Platform/Linux/IcuTextSearch.h"

#include "Platform/Linux/AsciiFolding.h"
#include "Platform/Linux/FindPart.h"
#include "Platform/Linux/Utf8.h"

#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace trellisport::platform {

namespace {

/// What stands for damaged bytes, in UTF-8.
constexpr std::string_view replacement = "\ufffd";

/// CR LF is one character.
bool isWithinLineEnd(char before, char after)
{
    return before == '\r' && after == '\n';
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
            m_last = nextCodePoint(m_text, m_offset);
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
    , m_folded(m_table)
{
    if (!m_folded.fold(part)) {
        (void)m_folded.fold(composed(part));
    }
    m_part = m_folded.bytes();
    m_isPartAscii = std::all_of(m_part.begin(), m_part.end(), [](char c) { return isAscii(c); });
}

bool IcuTextSearch::isIn(std::string_view text)
{
    if (m_part.empty() || text.empty()) {
        return false;
    }
    Finding finding = m_isPartAscii ? lookForAscii(text) : Finding::Unclear;
    if (finding == Finding::Unclear) {
        finding = look(text);
    }
    if (finding != Finding::Unclear) {
        return finding == Finding::Held;
    }
    if (m_folded.fold(text)) {
        return isFoldedPartIn(text);
    }
    const std::string canonical = composed(text);
    (void)m_folded.fold(canonical);
    return isFoldedPartIn(canonical);
}

IcuTextSearch::Finding IcuTextSearch::lookForAscii(std::string_view text)
{
    const bool isTextAscii = m_folded.foldAscii(text);
    const std::string_view folded = m_folded.bytes();
    for (std::size_t from = 0; from < folded.size();) {
        const std::size_t start = findPart(folded, m_part, from);
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

IcuTextSearch::Finding IcuTextSearch::look(std::string_view text)
{
    // In Turkish the capital I is that of a letter beyond ASCII.
    if (!m_isPartAscii && !m_table->isTurkic() && isAsciiAlone(text)) {
        return Finding::NotHeld;
    }
    if (m_part.starts_with(replacement)) {
        return Finding::Unclear;
    }
    if (!m_scan) {
        m_scan.emplace(m_table, m_part);
    }
    if (!m_scan->begin(text)) {
        return Finding::NotHeld;
    }
    for (std::size_t at = m_scan->nextBeginning(0); at != FoldScan::none;
         at = m_scan->nextBeginning(at + 1)) {
        if (isPartAt(text, at)) {
            return Finding::Held;
        }
    }
    return isInOrder(text) ? Finding::NotHeld : Finding::Unclear;
}

bool IcuTextSearch::isInOrder(std::string_view text)
{
    for (std::size_t at = m_scan->nextMark(0); at != FoldScan::none;
         at = m_scan->nextMark(at + 1)) {
        std::size_t end = at;
        const UChar32 codePoint = nextCodePoint(text, end);
        const std::uint8_t markClass = m_table->entry(codePoint).firstClass;
        if (markClass != 0 && (m_table->entry(codePointBefore(text, at)).lastClass > markClass ||
                               (m_table->isTurkic() && codePoint == IcuFoldTable::dotAbove))) {
            return false;
        }
    }
    return true;
}

bool IcuTextSearch::isPartAt(std::string_view text, std::size_t offset)
{
    std::size_t end = offset;
    UChar32 last = 0;
    for (std::size_t done = 0; done < m_part.size();) {
        if (end == text.size()) {
            return false;
        }
        last = nextCodePoint(text, end);
        const IcuFoldTable::Entry &entry = m_table->entry(last);
        if (entry.size > m_part.size() - done) {
            return false;
        }
        // A few bytes: calling for their comparison would take longer than comparing them.
        for (std::size_t i = 0; i < entry.size; ++i, ++done) {
            if (entry.bytes[i] != m_part[done]) {
                return false;
            }
        }
    }
    return isBoundary(text, offset, codePointBefore(text, offset)) && isBoundary(text, end, last);
}

bool IcuTextSearch::isFoldedPartIn(std::string_view text)
{
    const std::string_view folded = m_folded.bytes();
    if (m_folded.isPlain()) {
        return findPart(folded, m_part, 0) != std::string_view::npos;
    }
    Walk toStart(*m_table, text);
    Walk toEnd(*m_table, text);
    for (std::size_t from = 0; from < folded.size();) {
        const std::size_t start = findPart(folded, m_part, from);
        if (start == std::string_view::npos) {
            return false;
        }
        if (toStart.reach(start) && toEnd.reach(start + m_part.size()) &&
            isBoundary(text, toStart.offset(), toStart.last()) &&
            isBoundary(text, toEnd.offset(), toEnd.last())) {
            return true;
        }
        from = start + 1;
    }
    return false;
}

bool IcuTextSearch::isBoundary(std::string_view text, std::size_t offset, UChar32 before)
{
    if (offset == 0 || offset == text.size()) {
        return true;
    }
    std::size_t after = offset;
    if (m_table->entry(before).standsAlone &&
        m_table->entry(nextCodePoint(text, after)).standsAlone) {
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
