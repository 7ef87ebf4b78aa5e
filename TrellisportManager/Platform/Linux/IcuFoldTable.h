#pragma once

#include <unicode/umachine.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace trellisport::platform {

/// What each code point becomes when letter case and the choice between composed and decomposed
/// spelling are taken out of a text. Filled in pages as they are asked for. Any thread.
class IcuFoldTable {
public:
    /// In Turkish this mark makes another letter of the capital I before it.
    static constexpr UChar32 dotAbove = 0x307;

    /// One code point folded: decomposed, case-folded and decomposed again, in UTF-8.
    struct alignas(16) Entry {
        static constexpr std::size_t capacity = 12; // enough for all
        std::array<char, capacity> bytes = {};      ///< zero beyond size
        std::uint8_t size = 0;
        /// The combining classes of the first and the last code point of the bytes.
        std::uint8_t firstClass = 0;
        std::uint8_t lastClass = 0;
        /// Between two code points of which this is true a character always ends.
        bool standsAlone : 1 = false;
        /// standsAlone, and the bytes are one code point of the same length.
        bool isPlain : 1 = false;
    };
    static_assert(sizeof(Entry) == 16);

    /// turkic: whether I and i are the upper and lower case of different letters.
    explicit IcuFoldTable(bool turkic);
    IcuFoldTable(IcuFoldTable &&) = delete;
    IcuFoldTable(const IcuFoldTable &) = delete;
    IcuFoldTable &operator=(IcuFoldTable &&) = delete;
    IcuFoldTable &operator=(const IcuFoldTable &) = delete;
    ~IcuFoldTable();

    [[nodiscard]] bool isTurkic() const noexcept { return m_turkic; }

    /// codePoint: 0...0x10ffff. Valid while the table lives.
    [[nodiscard]] const Entry &entry(UChar32 codePoint) const
    {
        const auto index = static_cast<std::size_t>(codePoint);
        const Page *page = m_pages[index / pageSize].load(std::memory_order_acquire);
        return (page ? *page : makePage(index / pageSize))[index % pageSize];
    }

private:
    static constexpr std::size_t pageSize = 256;
    using Page = std::array<Entry, pageSize>;

    [[nodiscard]] const Page &makePage(std::size_t index) const;
    [[nodiscard]] Entry fold(UChar32 codePoint) const;

    bool m_turkic;
    mutable std::array<std::atomic<const Page *>, 0x110000 / pageSize> m_pages = {};
};

} // namespace trellisport::platform
