#include "Platform/Linux/IcuSearchableTexts.h"

#include "Platform/Linux/FindPart.h"
#include "Platform/Linux/FoldedText.h"
#include "Platform/Linux/Utf8.h"

#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <utility>

namespace trellisport::platform {

namespace {

/// A byte that no folded text has, as it is UTF-8.
constexpr char separator = '\xff';

} // namespace

class IcuSearchableTexts::Maker {
public:
    explicit Maker(IcuSearchableTexts &made)
        : m_made(made)
        , m_folded(made.m_table)
    {
    }

    void add(std::string_view text)
    {
        const bool isPlainAscii = !m_made.m_table->isTurkic() && m_folded.foldAscii(text) &&
                                  text.find('\r') == std::string_view::npos;
        if (isPlainAscii) {
            append(true);
        } else if (m_folded.fold(text)) {
            append(m_folded.isPlain());
            if (!m_folded.isPlain()) {
                markBoundaries(text);
            }
        } else {
            const std::string canonical = composed(text);
            (void)m_folded.fold(canonical);
            append(false);
            markBoundaries(canonical);
        }
        m_made.m_ends.push_back(m_made.m_folded.size());
        m_made.m_folded += separator;
        m_made.m_boundaries.push_back(true);
    }

private:
    void append(bool isBoundary)
    {
        m_made.m_folded += m_folded.bytes();
        m_made.m_boundaries.resize(m_made.m_folded.size(), isBoundary);
    }
    /// Marks them in what was appended last, which is what this text became.
    void markBoundaries(std::string_view text)
    {
        const bool isApart = standsApart(text);
        UErrorCode status = U_ZERO_ERROR;
        UText opened = UTEXT_INITIALIZER;
        if (!isApart) {
            if (!m_characters) {
                m_characters.reset(
                    icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
            }
            utext_openUTF8(&opened, text.data(), static_cast<std::int64_t>(text.size()), &status);
            if (U_FAILURE(status)) {
                return;
            }
            m_characters->setText(&opened, status);
        }
        std::size_t folded = m_made.m_folded.size() - m_folded.bytes().size();
        std::int32_t next = 0;
        for (std::size_t offset = 0; offset < text.size();) {
            while (!isApart && next != icu::BreakIterator::DONE &&
                   static_cast<std::size_t>(next) < offset) {
                next = m_characters->next();
            }
            m_made.m_boundaries[folded] = isApart || static_cast<std::size_t>(next) == offset;
            folded += m_made.m_table->entry(nextCodePoint(text, offset)).size;
        }
        utext_close(&opened);
    }
    /// Whether a character ends behind each code point.
    [[nodiscard]] bool standsApart(std::string_view text) const
    {
        bool isApart = true;
        for (std::size_t offset = 0; offset < text.size() && isApart;) {
            isApart = m_made.m_table->entry(nextCodePoint(text, offset)).standsAlone;
        }
        return isApart;
    }

    IcuSearchableTexts &m_made;
    FoldedText m_folded;
    std::unique_ptr<icu::BreakIterator> m_characters; ///< made when first needed
};

IcuSearchableTexts::IcuSearchableTexts(std::shared_ptr<const IcuFoldTable> table,
                                       const std::vector<std::string_view> &texts)
    : m_table(std::move(table))
{
    std::size_t size = texts.size();
    for (const std::string_view text : texts) {
        size += text.size();
    }
    size += size / 16; // letters with marks grow
    m_folded.reserve(size);
    m_boundaries.reserve(size);
    m_ends.reserve(texts.size());
    Maker maker(*this);
    for (const std::string_view text : texts) {
        maker.add(text);
    }
    m_folded.shrink_to_fit();
}

std::vector<std::uint32_t> IcuSearchableTexts::holding(std::string_view part) const
{
    std::vector<std::uint32_t> places;
    FoldedText folded(m_table);
    if (!folded.fold(part)) {
        (void)folded.fold(composed(part));
    }
    const std::string_view sought = folded.bytes();
    if (sought.empty()) {
        return places;
    }
    std::size_t place = 0;
    for (std::size_t at = findPart(m_folded, sought, 0); at != std::string::npos;) {
        const bool isWhole = m_boundaries[at] && m_boundaries[at + sought.size()];
        if (isWhole) {
            while (m_ends[place] < at) {
                ++place;
            }
            places.push_back(static_cast<std::uint32_t>(place));
        }
        at = findPart(m_folded, sought, isWhole ? m_ends[place] : at + 1);
    }
    return places;
}

} // namespace trellisport::platform
