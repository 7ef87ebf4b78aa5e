#pragma once

#include <atomic>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

namespace trellisport {

class Text;
class OptionalText;

/// A std::string, a std::string_view, a literal: what a Text is made from.
template <typename T>
concept TextSource = std::convertible_to<const T &, std::string_view> && !std::same_as<T, Text> &&
                     !std::same_as<T, OptionalText>;

/// An immutable text. It holds the bytes it was made from (UTF-8 when it comes from decoding; NUL
/// is a byte like any other) and is one pointer wide, because lists hold several hundred thousand
/// of them. Copies share the bytes and cost one counter step; different copies may be used on
/// different threads.
class Text {
public:
    constexpr Text() noexcept = default;
    /// Throws std::length_error beyond 4 GiB.
    template <TextSource T>
    Text(const T &utf8) // NOLINT(google-explicit-constructor): a literal is a text
        : Text(make(std::string_view(utf8)))
    {
    }
    Text(std::nullptr_t) = delete;
    Text(const Text &other) noexcept
        : m_block(other.m_block)
    {
        retain();
    }
    Text(Text &&other) noexcept
        : m_block(std::exchange(other.m_block, nullptr))
    {
    }
    Text &operator=(const Text &other) noexcept
    {
        Text copy(other);
        std::swap(m_block, copy.m_block);
        return *this;
    }
    Text &operator=(Text &&other) noexcept
    {
        std::swap(m_block, other.m_block);
        return *this;
    }
    ~Text() { release(); }

    /// Not closed by a NUL. Valid while this Text or a copy of it lives.
    [[nodiscard]] const char *data() const noexcept { return m_block ? m_block->bytes() : ""; }
    /// In bytes.
    [[nodiscard]] std::size_t size() const noexcept { return m_block ? m_block->size : 0; }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }
    [[nodiscard]] const char *begin() const noexcept { return data(); }
    [[nodiscard]] const char *end() const noexcept { return data() + size(); }
    [[nodiscard]] std::string_view view() const noexcept { return {data(), size()}; }
    operator std::string_view() const noexcept // NOLINT(google-explicit-constructor)
    {
        return view();
    }

    friend bool operator==(const Text &a, const Text &b) noexcept
    {
        return a.m_block == b.m_block || a.view() == b.view();
    }
    template <TextSource T>
    friend bool operator==(const Text &a, const T &b) noexcept
    {
        return a.view() == std::string_view(b);
    }
    /// By bytes, which for UTF-8 is the order of the code points.
    friend std::strong_ordering operator<=>(const Text &a, const Text &b) noexcept
    {
        return a.view() <=> b.view();
    }
    template <TextSource T>
    friend std::strong_ordering operator<=>(const Text &a, const T &b) noexcept
    {
        return a.view() <=> std::string_view(b);
    }

private:
    friend class OptionalText;
    friend class TextArena;

    /// A piece of the heap with one text or, from a TextArena, several.
    struct Chunk {
        /// How many hold on to it. The last one frees it.
        std::atomic<std::uint32_t> holders;
    };

    /// Lies in a chunk; its bytes follow it.
    struct Block {
        std::uint32_t size;
        std::uint32_t distance; ///< from the start of the chunk
        [[nodiscard]] const char *bytes() const noexcept
        {
            return reinterpret_cast<const char *>(this + 1);
        }
    };

    explicit Text(const Block *block) noexcept
        : m_block(block)
    {
    }
    [[nodiscard]] static Text make(std::string_view utf8);
    /// Puts a block with these bytes at this distance into the chunk, where there must be room.
    [[nodiscard]] static const Block *place(Chunk *chunk, std::size_t distance,
                                            std::string_view utf8) noexcept;
    [[nodiscard]] static Chunk *makeChunk(std::size_t size, std::uint32_t holders);
    static void letGo(Chunk *chunk, std::uint32_t holders) noexcept
    {
        if (chunk->holders.fetch_sub(holders, std::memory_order_acq_rel) == holders) {
            destroy(chunk);
        }
    }
    static void destroy(Chunk *chunk) noexcept;
    [[nodiscard]] Chunk *chunk() const noexcept
    {
        const char *start = reinterpret_cast<const char *>(m_block) - m_block->distance;
        return reinterpret_cast<Chunk *>(const_cast<char *>(start));
    }
    void retain() const noexcept
    {
        if (m_block) {
            chunk()->holders.fetch_add(1, std::memory_order_relaxed);
        }
    }
    void release() const noexcept
    {
        if (m_block) {
            letGo(chunk(), 1);
        }
    }

    const Block *m_block = nullptr; ///< null for the empty text
};

/// A text or nothing; an empty text is something. Used like std::optional<Text>, at the size of a
/// pointer.
class OptionalText {
public:
    constexpr OptionalText() noexcept = default;
    constexpr OptionalText(std::nullopt_t) noexcept {} // NOLINT(google-explicit-constructor)
    OptionalText(std::nullptr_t) = delete;
    OptionalText(Text text) noexcept // NOLINT(google-explicit-constructor)
        : m_text(text.m_block ? std::move(text) : emptyText())
    {
    }
    template <TextSource T>
    OptionalText(const T &utf8) // NOLINT(google-explicit-constructor)
        : OptionalText(Text(utf8))
    {
    }

    [[nodiscard]] bool has_value() const noexcept { return m_text.m_block != nullptr; }
    explicit operator bool() const noexcept { return has_value(); }
    /// Only when there is a text.
    [[nodiscard]] const Text &operator*() const noexcept { return m_text; }
    [[nodiscard]] const Text *operator->() const noexcept { return &m_text; }
    /// Throws std::bad_optional_access when there is none.
    [[nodiscard]] const Text &value() const
    {
        return has_value() ? m_text : throw std::bad_optional_access();
    }
    [[nodiscard]] Text value_or(const Text &other) const noexcept
    {
        return has_value() ? m_text : other;
    }

    friend bool operator==(const OptionalText &a, const OptionalText &b) noexcept
    {
        return a.has_value() == b.has_value() && a.m_text == b.m_text;
    }
    friend bool operator==(const OptionalText &a, const Text &b) noexcept
    {
        return a.has_value() && a.m_text == b;
    }
    template <TextSource T>
    friend bool operator==(const OptionalText &a, const T &b) noexcept
    {
        return a.has_value() && a.m_text == b;
    }
    friend bool operator==(const OptionalText &a, std::nullopt_t) noexcept
    {
        return !a.has_value();
    }

private:
    /// An empty text that has a block, so that the null pointer is free to mean absence.
    [[nodiscard]] static Text emptyText() noexcept;

    Text m_text;
};

} // namespace trellisport

template <>
struct std::hash<trellisport::Text> {
    [[nodiscard]] std::size_t operator()(const trellisport::Text &text) const noexcept
    {
        return std::hash<std::string_view>{}(text.view());
    }
};
