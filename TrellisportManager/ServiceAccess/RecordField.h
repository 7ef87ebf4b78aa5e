#pragma once

#include <string_view>

namespace trellisport {

/// A record's field and its JSON key.
template <typename Record, typename Value>
struct RecordField {
    Value Record::*member;
    std::string_view key;
};

template <typename Record, typename Value>
[[nodiscard]] constexpr RecordField<Record, Value> field(Value Record::*member,
                                                         std::string_view key) noexcept
{
    return {member, key};
}

/// A type with a list of fields named `fields`.
template <typename T>
concept Record = requires
{
    T::fields;
};

} // namespace trellisport
