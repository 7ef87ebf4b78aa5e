#pragma once

#include "ServiceAccess/CodingErrors.h"
#include "ServiceAccess/JsonPlace.h"
#include "ServiceAccess/Records.h"
#include "ServiceAccess/TextArena.h"

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

inline simdjson::dom::object objectIn(element value, const JsonPlace &place)
{
    if (value.type() != element_type::OBJECT) {
        place.failMismatch("an object");
    }
    return value.get_object().value_unsafe();
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

    [[nodiscard]] bool has(std::size_t index) const { return m_present[index]; }
    [[nodiscard]] element operator[](std::size_t index) const { return m_values[index]; }

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

inline std::string_view textIn(element value, const JsonPlace &place)
{
    if (value.type() != element_type::STRING) {
        place.failMismatch("a text");
    }
    return value.get_string().value_unsafe();
}

inline std::int64_t integerIn(element value, const JsonPlace &place)
{
    // A positive integer beyond the signed range has a type of its own.
    if (value.type() != element_type::INT64) {
        place.failMismatch("an integer of 64 bits");
    }
    return value.get_int64().value_unsafe();
}

inline double numberIn(element value, const JsonPlace &place)
{
    double number = 0;
    if (value.get_double().get(number)) {
        place.failMismatch("a number that can be held");
    }
    return number;
}

inline bool booleanIn(element value, const JsonPlace &place)
{
    if (value.type() != element_type::BOOL) {
        place.failMismatch("true or false");
    }
    return value.get_bool().value_unsafe();
}

/// Makes values of a document's elements. Throws DecodingError.
class RecordDecoder {
public:
    explicit RecordDecoder(TextArena &texts)
        : m_texts(texts)
    {
    }

    template <typename T>
    [[nodiscard]] T read(element value, const JsonPlace &place) const
    {
        if (value.is_null()) {
            place.failValueMissing();
        }
        if constexpr (std::is_same_v<T, Text>) {
            return m_texts.make(textIn(value, place));
        } else if constexpr (std::is_same_v<T, std::string>) {
            return std::string(textIn(value, place));
        } else if constexpr (std::is_same_v<T, std::int64_t>) {
            return integerIn(value, place);
        } else if constexpr (std::is_same_v<T, double>) {
            return numberIn(value, place);
        } else if constexpr (std::is_same_v<T, bool>) {
            return booleanIn(value, place);
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

private:
    /// Turns into a value where one is constructed: a record cannot be moved into its place.
    template <typename T>
    struct InPlace {
        const RecordDecoder &decoder;
        element value;
        const JsonPlace &place;
        operator T() const // NOLINT(google-explicit-constructor)
        {
            return decoder.read<T>(value, place);
        }
    };

    template <typename T>
    [[nodiscard]] T readList(element value, const JsonPlace &place) const
    {
        if (value.type() != element_type::ARRAY) {
            place.failMismatch("a list");
        }
        const simdjson::dom::array array = value.get_array().value_unsafe();
        T list;
        list.reserve(array.size());
        for (const element item : array) {
            const JsonPlace itemPlace(place, list.size());
            list.emplace_back(InPlace<typename T::value_type>{*this, item, itemPlace});
        }
        return list;
    }

    template <typename T>
    [[nodiscard]] T readMap(element value, const JsonPlace &place) const
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
    [[nodiscard]] T readRecord(element value, const JsonPlace &place) const
    {
        const Members<T> members(objectIn(value, place));
        return [&]<std::size_t... index>(std::index_sequence<index...>)
        {
            // Braces keep the order: the first failure in the table is the one thrown.
            return T{readField<T, index>(members, place)...};
        }
        (std::make_index_sequence<fieldCount<T>>());
    }

    template <typename T, std::size_t index>
    [[nodiscard]] auto readField(const Members<T> &members, const JsonPlace &record) const
    {
        using Field =
            std::remove_cvref_t<decltype(std::declval<T>().*std::get<index>(T::fields).member)>;
        const JsonPlace place(record, keys<T>[index]);
        if constexpr (Optional<Field>::value) {
            if (!members.has(index) || members[index].is_null()) {
                return Field();
            }
            return Field(read<typename Optional<Field>::Value>(members[index], place));
        } else {
            if (!members.has(index)) {
                place.failKeyMissing();
            }
            return read<Field>(members[index], place);
        }
    }

    TextArena &m_texts;
};

} // namespace trellisport::decoding
