#include "ServiceAccess/Text.h"

#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace trellisport {

Text Text::make(std::string_view utf8)
{
    if (utf8.empty()) {
        return {};
    }
    if (utf8.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("a text longer than 4 GiB");
    }
    return Text(
        place(makeChunk(sizeof(Chunk) + sizeof(Block) + utf8.size(), 1), sizeof(Chunk), utf8));
}

const Text::Block *Text::place(Chunk *chunk, std::size_t distance, std::string_view utf8) noexcept
{
    char *memory = reinterpret_cast<char *>(chunk) + distance;
    std::memcpy(memory + sizeof(Block), utf8.data(), utf8.size());
    return new (memory)
        Block{static_cast<std::uint32_t>(utf8.size()), static_cast<std::uint32_t>(distance)};
}

Text::Chunk *Text::makeChunk(std::size_t size, std::uint32_t holders)
{
    static_assert(alignof(Chunk) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
    static_assert(sizeof(Chunk) % alignof(Block) == 0);
    return new (::operator new(size)) Chunk{holders};
}

void Text::destroy(Chunk *chunk) noexcept
{
    chunk->~Chunk();
    ::operator delete(chunk);
}

Text OptionalText::emptyText() noexcept
{
    struct Empty {
        Text::Chunk chunk;
        Text::Block block;
    };
    // One holder never lets go, so it is never destroyed.
    static Empty empty = {{1}, {0, sizeof(Text::Chunk)}};
    empty.chunk.holders.fetch_add(1, std::memory_order_relaxed);
    return Text(&empty.block);
}

} // namespace trellisport
