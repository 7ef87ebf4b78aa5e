#pragma once

#include "Platform/Linux/IcuFoldTable.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace trellisport::platform {

/// A first look over a text in which a part is searched: whether it has the part's letters at all,
/// in any case or spelling, and where the part can begin. Much quicker than folding the text. One
/// thread at a time.
class FoldScan {
public:
    static constexpr std::size_t none = std::string_view::npos;

    /// part: folded, not empty, and not beginning with U+FFFD, which stands for any damage.
    FoldScan(std::shared_ptr<const IcuFoldTable> table, std::string_view part);

    /// Takes up a text, which must not be empty, for the calls below. False when it does not hold
    /// the part.
    [[nodiscard]] bool begin(std::string_view text);

    /// The next offset from here on at which an occurrence of the part can begin, or none.
    [[nodiscard]] std::size_t nextBeginning(std::size_t from) { return next(from, beginning); }
    /// The next offset from here on at which a mark may stand as a code point of its own, or none.
    [[nodiscard]] std::size_t nextMark(std::size_t from) { return next(from, mark); }

private:
    /// A bit for each of some letters of the part, and those below.
    using Traits = std::uint8_t;
    static constexpr Traits unknown = 0x80; ///< not looked at yet
    static constexpr Traits mark = 0x40;
    static constexpr Traits beginning = 0x20; ///< may be the part's beginning
    static constexpr Traits several = 0x10;   ///< of several code points, not all with these traits
    static constexpr std::size_t maximumLetters = 4;
    static constexpr std::size_t blockSize = 16;

    void addLetters(bool ascii);
    [[nodiscard]] std::size_t next(std::size_t from, Traits wanted);
    [[nodiscard]] Traits traitsAt(std::size_t offset) const;
    [[nodiscard]] Traits exactTraitsAt(std::size_t offset);
    [[nodiscard]] Traits traitsOf(UChar32 first, UChar32 last) const;
    void scan();
    void learn();

    std::shared_ptr<const IcuFoldTable> m_table;
    std::string m_part;
    std::vector<std::string> m_letters; ///< those looked for, in UTF-8
    Traits m_needed = 0;
    /// By the first two bytes of a code point: the traits of all code points that begin so.
    std::vector<Traits> m_traits;
    /// By the code point, of those that take three bytes; for the pairs that say `several`.
    std::vector<Traits> m_exactTraits;

    std::string_view m_text;
    std::vector<Traits> m_blocks; ///< of each piece of the text
    Traits m_found = 0;           ///< of the whole text
};

} // namespace trellisport::platform
