#include "Platform/Linux/FindPart.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace trellisport::platform {

namespace {

constexpr std::size_t blockSize = sizeof(std::uint64_t);
constexpr std::size_t stretchSize = 64;

constexpr std::uint64_t everyByte(char byte)
{
    return ~std::uint64_t{0} / 0xff * static_cast<unsigned char>(byte);
}

std::uint64_t blockAt(const char *bytes)
{
    std::uint64_t block = 0;
    std::memcpy(&block, bytes, blockSize);
    return block;
}

/// Whether the part's first byte and, that far behind it, its last stand anywhere in the block that
/// begins here.
bool mayBeginWithin(const char *block, std::string_view part)
{
    const std::uint64_t differs = (blockAt(block) ^ everyByte(part.front())) |
                                  (blockAt(block + part.size() - 1) ^ everyByte(part.back()));
    return ((differs - everyByte(1)) & ~differs & everyByte('\x80')) != 0; // a byte of it is zero
}

/// The same for a stretch. Without branches and of a fixed length, so that compilers use the
/// processor's widest registers.
bool mayBeginWithinStretch(const char *stretch, std::string_view part)
{
    const char *ends = stretch + part.size() - 1;
    unsigned char found = 0;
    for (std::size_t i = 0; i < stretchSize; ++i) {
        const auto begins = static_cast<unsigned char>(stretch[i] == part.front());
        const auto ended = static_cast<unsigned char>(ends[i] == part.back());
        found |= static_cast<unsigned char>(begins & ended);
    }
    return found != 0;
}

/// As findPart(), for occurrences that begin before the end.
std::size_t findBefore(std::size_t end, std::string_view text, std::string_view part,
                       std::size_t from)
{
    for (std::size_t place = from; place < end; place += blockSize) {
        std::size_t blockEnd = end;
        if (end - from >= blockSize) {
            place = std::min(place, end - blockSize); // the last one may overlap the one before
            blockEnd = place + blockSize;
            if (!mayBeginWithin(text.data() + place, part)) {
                continue;
            }
        }
        for (std::size_t at = place; at < blockEnd; ++at) {
            if (text[at] == part.front() && text[at + part.size() - 1] == part.back() &&
                (part.size() <= 2 ||
                 std::memcmp(text.data() + at, part.data(), part.size()) == 0)) {
                return at;
            }
        }
    }
    return std::string_view::npos;
}

} // namespace

std::size_t findPart(std::string_view text, std::string_view part, std::size_t from)
{
    if (text.size() - from < part.size()) {
        return std::string_view::npos;
    }
    const std::size_t end = text.size() - part.size() + 1; // of the places where it may begin
    std::size_t place = from;
    for (; end - place >= stretchSize; place += stretchSize) {
        if (mayBeginWithinStretch(text.data() + place, part)) {
            const std::size_t found = findBefore(place + stretchSize, text, part, place);
            if (found != std::string_view::npos) {
                return found;
            }
        }
    }
    return findBefore(end, text, part, place);
}

} // namespace trellisport::platform
