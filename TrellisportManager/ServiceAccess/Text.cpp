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
    static_assert(alignof(Block) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
    void *memory = ::operator new(sizeof(Block) + utf8.size());
    const Block *block = new (memory) Block{1, static_cast<std::uint32_t>(utf8.size())};
    std::memcpy(static_cast<char *>(memory) + sizeof(Block), utf8.data(), utf8.size());
    return Text(block);
}

void Text::destroy(const Block *block) noexcept
{
    block->~Block();
    ::operator delete(const_cast<Block *>(block));
}

Text OptionalText::emptyText() noexcept
{
    // Its count starts at one that nobody gives back, so it is never destroyed.
    static const Text::Block block{1, 0};
    block.references.fetch_add(1, std::memory_order_relaxed);
    return Text(&block);
}

} // namespace trellisport
