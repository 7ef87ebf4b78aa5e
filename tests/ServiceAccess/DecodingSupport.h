#pragma once

#include "ServiceAccess/RecordCoding.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace trellisport {

/// The error with which a document does not decode; nothing when it does.
template <typename T>
std::optional<DecodingError> decodingFailure(std::string_view json)
{
    try {
        (void)decode<T>(std::string(json));
    } catch (const DecodingError &error) {
        return error;
    }
    return {};
}

/// Expects that the document fails in this way at this place.
template <typename T>
void expectFailure(std::string_view json, DecodingError::Kind kind, std::string_view path)
{
    const auto error = decodingFailure<T>(json);
    ASSERT_TRUE(error) << json;
    EXPECT_EQ(error->kind(), kind) << json << '\n' << error->what();
    EXPECT_EQ(error->path(), path) << json;
    EXPECT_FALSE(std::string_view(error->what()).empty());
}

/// "key":value
inline std::string member(std::string_view key, std::string_view value)
{
    std::string json = "\"";
    json += key;
    json += "\":";
    json += value;
    return json;
}

/// Whether the document is taken for JSON, whatever it holds.
inline bool isJson(std::string_view document)
{
    const auto error = decodingFailure<TextMap>(document);
    return !error || error->kind() != DecodingError::Kind::DamagedData;
}

} // namespace trellisport
