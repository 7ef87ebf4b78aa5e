#include "Platform/Linux/FoldScan.h"

#include "Platform/Linux/Utf8.h"

#include <algorithm>
#include <utility>

namespace trellisport::platform {

namespace {

constexpr UChar32 replacement = 0xfffd;
constexpr UChar32 lastCodePoint = 0x10ffff;

unsigned byteAt(std::string_view text, std::size_t index)
{
    return static_cast<unsigned char>(text[index]);
}

std::size_t place(unsigned firstByte, unsigned secondByte)
{
    return std::size_t{firstByte} << 8 | secondByte;
}

} // namespace

FoldScan::FoldScan(std::shared_ptr<const IcuFoldTable> table, std::string_view part)
    : m_table(std::move(table))
    , m_part(part)
    , m_traits(place(0xff, 0xff) + 1)
{
    // Those beyond ASCII say more. In Turkish a mark can make an i of what is none.
    addLetters(false);
    if (!m_table->isTurkic()) {
        addLetters(true);
    }
    for (unsigned first = 0; first < 0x80; ++first) {
        const auto row = m_traits.begin() + static_cast<std::ptrdiff_t>(place(first, 0));
        std::fill_n(row, 256, traitsOf(static_cast<UChar32>(first), static_cast<UChar32>(first)));
    }
    for (unsigned first = 0xc2; first < 0xe0; ++first) {
        for (unsigned second = 0x80; second < 0xc0; ++second) {
            const auto codePoint = static_cast<UChar32>((first & 0x1f) << 6 | (second & 0x3f));
            m_traits[place(first, second)] = traitsOf(codePoint, codePoint);
        }
    }
    std::fill(m_traits.begin() + static_cast<std::ptrdiff_t>(place(0xe0, 0)),
              m_traits.begin() + static_cast<std::ptrdiff_t>(place(0xf5, 0)), unknown);
}

void FoldScan::addLetters(bool ascii)
{
    for (std::size_t offset = 0; offset < m_part.size() && m_letters.size() < maximumLetters;) {
        const std::size_t start = offset;
        const UChar32 letter = nextCodePoint(m_part, offset);
        const std::string utf8 = m_part.substr(start, offset - start);
        // Damage of any kind becomes the replacement, so there is no telling where it comes from.
        if ((letter < 0x80) == ascii && letter != replacement &&
            std::find(m_letters.begin(), m_letters.end(), utf8) == m_letters.end()) {
            m_needed = static_cast<Traits>(m_needed | 1U << m_letters.size());
            m_letters.push_back(utf8);
        }
    }
}

bool FoldScan::begin(std::string_view text)
{
    m_text = text;
    scan();
    if ((m_found & unknown) != 0) {
        learn();
        scan();
    }
    // Marks out of their order can hide a beginning.
    return (m_found & m_needed) == m_needed && (m_found & (beginning | mark)) != 0;
}

std::size_t FoldScan::next(std::size_t from, Traits wanted)
{
    for (std::size_t offset = from; offset < m_text.size();) {
        const std::size_t block = offset / blockSize;
        const std::size_t end = std::min((block + 1) * blockSize, m_text.size());
        if ((m_blocks[block] & wanted) == 0) {
            offset = end;
        }
        for (; offset < end; ++offset) {
            const Traits traits = traitsAt(offset);
            if ((traits & wanted) != 0 &&
                ((traits & several) == 0 || (exactTraitsAt(offset) & wanted) != 0)) {
                return offset;
            }
        }
    }
    return none;
}

FoldScan::Traits FoldScan::traitsAt(std::size_t offset) const
{
    const bool isLast = offset + 1 == m_text.size();
    return m_traits[place(byteAt(m_text, offset), isLast ? 0 : byteAt(m_text, offset + 1))];
}

FoldScan::Traits FoldScan::exactTraitsAt(std::size_t offset)
{
    if (offset + 2 >= m_text.size() || !U8_IS_TRAIL(byteAt(m_text, offset + 2))) {
        return 0;
    }
    const unsigned codePoint = (byteAt(m_text, offset) & 0x0f) << 12 |
                               (byteAt(m_text, offset + 1) & 0x3f) << 6 |
                               (byteAt(m_text, offset + 2) & 0x3f);
    if (m_exactTraits.empty()) {
        m_exactTraits.assign(0x10000, unknown);
    }
    Traits &traits = m_exactTraits[codePoint];
    if (traits == unknown) {
        traits = traitsOf(static_cast<UChar32>(codePoint), static_cast<UChar32>(codePoint));
    }
    return traits;
}

void FoldScan::scan()
{
    // Every byte is taken for the first of a code point; what does not begin one has no traits.
    // Thus nothing here depends on what was read before, which is what makes it quick.
    const std::size_t blocks = (m_text.size() + blockSize - 1) / blockSize;
    if (m_blocks.size() < blocks) {
        m_blocks.resize(blocks);
    }
    const Traits *traits = m_traits.data();
    unsigned all = 0;
    std::size_t block = 0;
    for (; (block + 1) * blockSize < m_text.size(); ++block) {
        unsigned found = 0;
        const std::size_t start = block * blockSize;
        for (std::size_t i = start; i < start + blockSize; ++i) {
            found |= traits[place(byteAt(m_text, i), byteAt(m_text, i + 1))];
        }
        m_blocks[block] = static_cast<Traits>(found);
        all |= found;
    }
    unsigned found = 0;
    for (std::size_t i = block * blockSize; i < m_text.size(); ++i) {
        found |= traitsAt(i);
    }
    m_blocks[block] = static_cast<Traits>(found);
    m_found = static_cast<Traits>(all | found);
}

void FoldScan::learn()
{
    for (std::size_t i = 0; i < m_text.size(); ++i) {
        const unsigned first = byteAt(m_text, i);
        const unsigned second = i + 1 < m_text.size() ? byteAt(m_text, i + 1) : 0;
        if (m_traits[place(first, second)] != unknown) {
            continue;
        }
        Traits traits = 0;
        if (U8_IS_TRAIL(second)) {
            const unsigned lead = first < 0xf0 ? first & 0x0f : first & 0x07;
            const unsigned shift = first < 0xf0 ? 6 : 12;
            const auto codePoint = static_cast<UChar32>((lead << 6 | (second & 0x3f)) << shift);
            traits = traitsOf(codePoint, std::min(codePoint + (1 << shift) - 1, lastCodePoint));
        }
        const bool isThree = first < 0xf0 && traits != 0;
        m_traits[place(first, second)] = isThree ? static_cast<Traits>(traits | several) : traits;
    }
}

FoldScan::Traits FoldScan::traitsOf(UChar32 first, UChar32 last) const
{
    unsigned traits = 0;
    for (UChar32 codePoint = first; codePoint <= last; ++codePoint) {
        const IcuFoldTable::Entry &entry = m_table->entry(codePoint);
        const std::string_view folded(entry.bytes.data(), entry.size);
        traits |= m_part.starts_with(folded) ? beginning : 0U;
        traits |= entry.firstClass != 0 ? mark : 0U;
        for (std::size_t index = 0; index < m_letters.size(); ++index) {
            traits |= folded.find(m_letters[index]) != std::string_view::npos ? 1U << index : 0U;
        }
    }
    return static_cast<Traits>(traits);
}

} // namespace trellisport::platform
