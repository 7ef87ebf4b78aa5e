#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace trellisport {

/// Where in a document the decoder is: a chain of keys and indices that lives on the stack and is
/// spelt out only for an error.
class JsonPlace {
public:
    /// The document itself.
    JsonPlace() = default;
    /// A member of the object at parent. parent and key must outlive this.
    JsonPlace(const JsonPlace &parent, std::string_view key)
        : m_parent(&parent)
        , m_key(key)
    {
    }
    /// An element of the list at parent.
    JsonPlace(const JsonPlace &parent, std::size_t index)
        : m_parent(&parent)
        , m_index(index)
        , m_isElement(true)
    {
    }

    /// These throw the DecodingError. expected completes "is not ...".
    [[noreturn]] void failKeyMissing() const;
    [[noreturn]] void failValueMissing() const;
    [[noreturn]] void failMismatch(std::string_view expected) const;

private:
    [[nodiscard]] std::string path() const;
    /// How a sentence names it.
    [[nodiscard]] std::string description() const;

    const JsonPlace *m_parent = nullptr;
    std::string_view m_key;
    std::size_t m_index = 0;
    bool m_isElement = false;
};

} // namespace trellisport
