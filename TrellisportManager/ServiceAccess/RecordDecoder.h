#pragma once

#include "ServiceAccess/CodingErrors.h"
#include "ServiceAccess/JsonPlace.h"
#include "ServiceAccess/Records.h"

#include <simdjson.h>

#include <array>
#include <concepts>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

/// How the values of a parsed document become fields, records and lists of them. Only for the
/// decoder's sources.
namespace trellisport::decoding {

using simdjson::dom::element;
using simdjson::dom::element_type;

template <typename T>
T read(element value, const JsonPlace &place);

/// A field's type when it is optional: what it holds when it is not absent.
template <typename T>
struct Optional : std::false_type {
    using Value = T;
};
template <>
struct Optional<OptionalText> : std::true_type {
    using Value = Text;
};
template <typename T>
struct Optional<std::optional<T>> : std::true_type {
    using Value = T;
};

template <typename T>
concept List = std::same_as<T, std::vector<typename T::value_type>>;

template <typename T>
concept Map = requires
{
    typename T::mapped_type;
};

/// Turns into a value where one is constructed: a record cannot be moved into its place.
template <typename T>
struct InPlace {
    element value;
    const JsonPlace &place;
    operator T() const { return read<T>(value, place); } // NOLINT(google-explicit-constructor)
};

template <typename T>
T readList(element value, const JsonPlace &place)
{
    if (value.type() != element_type::ARRAY) {
        place.failMismatch("a list");
    }
    const simdjson::dom::array array = value.get_array().value_unsafe();
    T list;
    list.reserve(array.size());
    for (const element item : array) {
        const JsonPlace itemPlace(place, list.size());
        list.emplace_back(InPlace<typename T::value_type>{item, itemPlace});
    }
    return list;
}

inline simdjson::dom::object objectIn(element value, const JsonPlace &place)
{
    if (value.type() != element_type::OBJECT) {
        place.failMismatch("an object");
    }
    return value.get_object().value_unsafe();
}

template <typename T>
T readMap(element value, const JsonPlace &place)
{
    // Collected first, since a repeated key's earlier values do not count.
    std::map<std::string_view, element> entries;
    for (const auto &[key, entry] : objectIn(value, place)) {
        entries.insert_or_assign(key, entry);
    }
    T map;
    for (const auto &[key, entry] : entries) {
        map.emplace_hint(map.end(), key,
                         read<typename T::mapped_type>(entry, JsonPlace(place, key)));
    }
    return map;
}

template <typename T>
inline constexpr std::size_t fieldCount =
    std::tuple_size_v<std::remove_cvref_t<decltype(T::fields)>>;

template <typename T>
inline constexpr auto
    keys = std::apply([](const auto &...field) { return std::array{field.key...}; }, T::fields);

/// A record's values, each where the table has its field.
template <typename T>
class Members {
public:
    explicit Members(simdjson::dom::object object)
    {
        // Services write the keys in one order, so the next key is most often the next field's.
        std::size_t expected = 0;
        for (const auto &[key, value] : object) {
            const std::size_t index = find(key, expected);
            if (index < fieldCount<T>) {
                m_values[index] = value;
                m_present[index] = true;
                expected = index + 1;
            }
        }
    }

    template <std::size_t index>
    [[nodiscard]] auto get(const JsonPlace &parent) const
    {
        using Field =
            std::remove_cvref_t<decltype(std::declval<T>().*std::get<index>(T::fields).member)>;
        const JsonPlace place(parent, keys<T>[index]);
        if constexpr (Optional<Field>::value) {
            if (!m_present[index] || m_values[index].is_null()) {
                return Field();
            }
            return Field(read<typename Optional<Field>::Value>(m_values[index], place));
        } else {
            if (!m_present[index]) {
                place.failKeyMissing();
            }
            return read<Field>(m_values[index], place);
        }
    }

private:
    [[nodiscard]] static std::size_t find(std::string_view key, std::size_t expected)
    {
        for (std::size_t index = expected; index < fieldCount<T>; ++index) {
            if (keys<T>[index] == key) {
                return index;
            }
        }
        for (std::size_t index = 0; index < expected; ++index) {
            if (keys<T>[index] == key) {
                return index;
            }
        }
        return fieldCount<T>;
    }

    std::array<element, fieldCount<T>> m_values;
    std::array<bool, fieldCount<T>> m_present = {};
};

template <typename T>
T readRecord(element value, const JsonPlace &place)
{
    const Members<T> members(objectIn(value, place));
    return [&]<std::size_t... index>(std::index_sequence<index...>)
    {
        // Braces keep the order: the first failure in the table is the one thrown.
        return T{members.template get<index>(place)...};
    }
    (std::make_index_sequence<fieldCount<T>>());
}

inline Text readText(element value, const JsonPlace &place)
{
    if (value.type() != element_type::STRING) {
        place.failMismatch("a text");
    }
    return value.get_string().value_unsafe();
}

inline std::int64_t readInteger(element value, const JsonPlace &place)
{
    // A positive integer beyond the signed range has a type of its own.
    if (value.type() != element_type::INT64) {
        place.failMismatch("an integer of 64 bits");
    }
    return value.get_int64().value_unsafe();
}

inline double readNumber(element value, const JsonPlace &place)
{
    double number = 0;
    if (value.get_double().get(number)) {
        place.failMismatch("a number that can be held");
    }
    return number;
}

inline bool readBoolean(element value, const JsonPlace &place)
{
    if (value.type() != element_type::BOOL) {
        place.failMismatch("true or false");
    }
    return value.get_bool().value_unsafe();
}

template <typename T>
T read(element value, const JsonPlace &place)
{
    if (value.is_null()) {
        place.failValueMissing();
    }
    if constexpr (std::is_same_v<T, Text>) {
        return readText(value, place);
    } else if constexpr (std::is_same_v<T, std::string>) {
        return std::string(readText(value, place).view());
    } else if constexpr (std::is_same_v<T, std::int64_t>) {
        return readInteger(value, place);
    } else if constexpr (std::is_same_v<T, double>) {
        return readNumber(value, place);
    } else if constexpr (std::is_same_v<T, bool>) {
        return readBoolean(value, place);
    } else if constexpr (List<T>) {
        return readList<T>(value, place);
    } else if constexpr (Map<T>) {
        return readMap<T>(value, place);
    } else if constexpr (std::is_same_v<T, AppConfig>) {
        return AppConfig(readMap<TextMap>(value, place));
    } else {
        static_assert(Record<T>);
        return readRecord<T>(value, place);
    }
}

} // namespace trellisport::decoding
