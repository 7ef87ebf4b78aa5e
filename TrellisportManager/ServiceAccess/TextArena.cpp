#include "ServiceAccess/TextArena.h"

#include <algorithm>
#include <limits>

namespace trellisport {

namespace {

constexpr std::size_t smallestChunk = 512;
constexpr std::size_t largestChunk = 65536 - 64; // what the heap adds included
/// Longer texts lie alone, so that little is lost where the next one does not fit.
constexpr std::size_t longestShared = largestChunk / 16;
/// While a chunk is being filled, it counts as held this many times, and each text takes one of
/// them: that costs no atomic step.
constexpr std::uint32_t held = std::numeric_limits<std::uint32_t>::max() / 2;

} // namespace

TextArena::TextArena(std::size_t expectedSize)
    : m_chunkSize(std::clamp(expectedSize / 8, smallestChunk, largestChunk))
{
}

TextArena::~TextArena()
{
    closeChunk();
}

Text TextArena::make(std::string_view utf8)
{
    if (utf8.empty() || utf8.size() > std::min(longestShared, m_chunkSize / 2)) {
        return utf8;
    }
    constexpr std::size_t alignment = alignof(Text::Block);
    const std::size_t needed =
        (sizeof(Text::Block) + utf8.size() + alignment - 1) / alignment * alignment;
    if (!m_chunk || m_chunkSize - m_used < needed) {
        Text::Chunk *chunk = Text::makeChunk(m_chunkSize, held);
        closeChunk();
        m_chunk = chunk;
        m_used = sizeof(Text::Chunk);
        m_made = 0;
    }
    Text text(Text::place(m_chunk, m_used, utf8));
    m_used += needed;
    ++m_made;
    return text;
}

void TextArena::closeChunk() noexcept
{
    if (m_chunk) {
        Text::letGo(m_chunk, held - m_made);
    }
}

} // namespace trellisport
