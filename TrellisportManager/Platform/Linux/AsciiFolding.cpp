#include "Platform/Linux/AsciiFolding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

namespace trellisport::platform {

namespace {

constexpr std::size_t wordSize = sizeof(std::uint64_t);

constexpr std::uint64_t everyByte(unsigned char byte)
{
    return ~std::uint64_t{0} / 0xff * byte;
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

bool isAscii(std::uint64_t word)
{
    return (word & everyByte(0x80)) == 0;
}

std::uint64_t wordAt(const char *bytes, std::size_t size = wordSize)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, size);
    return word;
}

/// Calls take(offset, word) with all of the text, eight bytes at once. The last word may overlap
/// the one before; that of a shorter text is filled up with zeros.
template <typename Take>
void eachWord(std::string_view text, const Take &take)
{
    if (text.size() < wordSize) {
        if (!text.empty()) {
            take(0, wordAt(text.data(), text.size()));
        }
        return;
    }
    const std::size_t last = text.size() - wordSize;
    for (std::size_t offset = 0; offset < last; offset += wordSize) {
        take(offset, wordAt(text.data() + offset));
    }
    take(last, wordAt(text.data() + last));
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

} // namespace

bool copyAsciiLowercased(std::string_view text, char *out, bool keepI)
{
    std::uint64_t all = 0;
    eachWord(text, [&](std::size_t offset, std::uint64_t word) {
        all |= word;
        word = lowercased(word, keepI);
        std::memcpy(out + offset, &word, wordSize);
    });
    return isAscii(all);
}

bool isAsciiAlone(std::string_view text)
{
    std::uint64_t all = 0;
    eachWord(text, [&all](std::size_t /*offset*/, std::uint64_t word) { all |= word; });
    return isAscii(all);
}

bool mayFoldToAscii(std::string_view text)
{
    // Most texts have none of the first bytes; to look for these alone needs no branches.
    unsigned begins = 0;
    for (const char byte : text) {
        begins |= static_cast<unsigned>(beginsDisguise[static_cast<unsigned char>(byte)]);
    }
    if (begins == 0) {
        return false;
    }
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        // Most bytes are ASCII even here.
        while (text.size() - i > wordSize && isAscii(wordAt(text.data() + i))) {
            i += wordSize;
        }
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

} // namespace trellisport::platform
