#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace trellisport::practice {

/// Chance that comes out the same on every machine for the same seed (SplitMix64; the standard
/// library's distributions differ from one implementation to the next).
class Random {
public:
    explicit Random(std::uint64_t seed) noexcept
        : m_state(seed)
    {
    }

    std::uint64_t next() noexcept
    {
        m_state += 0x9E3779B97F4A7C15ULL;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9ULL;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBULL;
        return mixed ^ (mixed >> 31U);
    }

    /// A whole number from low to high, both included; high >= low.
    std::int64_t between(std::int64_t low, std::int64_t high) noexcept
    {
        return low + static_cast<std::int64_t>(next() % static_cast<std::uint64_t>(high - low + 1));
    }

    /// True in the given percentage of cases.
    bool chance(int percent) noexcept { return between(1, 100) <= percent; }

    /// One of the items; there must be one.
    template <typename Item>
    const Item &pick(const std::vector<Item> &items) noexcept
    {
        return items[static_cast<std::size_t>(next() % items.size())];
    }

    /// Lower-case hexadecimal digits.
    std::string hex(std::size_t digits)
    {
        std::string text;
        text.reserve(digits);
        while (text.size() < digits)
            text += "0123456789abcdef"[next() % 16];
        return text;
    }

    /// A chain of its own, so that one part's draws do not shift another's.
    Random fork(std::uint64_t salt) noexcept
    {
        return Random(next() ^ (salt * 0xD1B54A32D192ED03ULL));
    }

private:
    std::uint64_t m_state;
};

} // namespace trellisport::practice
