#include "Fuzz/Targets/Must.h"
#include "ServiceAccess/RecordCoding.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <cstdint>
#include <optional>
#include <string>

// Whether a document is JSON is decided alike by another parser, wherever in the document the fault
// lies: the input stands under a key that the record ignores.

namespace {

/// Absent: the other parser does not know either.
std::optional<bool> isValid(const std::string &document)
{
    rapidjson::BaseReaderHandler<> ignoring;
    rapidjson::MemoryStream stream(document.data(), document.size());
    rapidjson::Reader reader;
    constexpr unsigned flags = rapidjson::kParseIterativeFlag |
                               rapidjson::kParseValidateEncodingFlag |
                               rapidjson::kParseNumbersAsStringsFlag;
    const rapidjson::ParseResult result = reader.Parse<flags>(stream, ignoring);
    if (result.Code() == rapidjson::kParseErrorNumberTooBig) {
        return std::nullopt;
    }
    return !result.IsError() && stream.Tell() == document.size();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string input(reinterpret_cast<const char *>(data), size);
    // The other parser stops at a zero byte and takes half of an escaped surrogate pair for an
    // error.
    if (input.find('\0') != std::string::npos || input.find("\\u") != std::string::npos) {
        return 0;
    }
    const std::string document = R"({"id":"1","title":"t","ignored":)" + input + "}";
    const std::optional<bool> valid = isValid(document);
    if (!valid) {
        return 0;
    }
    try {
        (void)trellisport::decode<trellisport::ProjectDetail>(document);
        must(*valid, "what is no JSON is refused");
    } catch (const trellisport::DecodingError &error) {
        // A valid document may still say something else under the record's own keys.
        must(!*valid || error.kind() != trellisport::DecodingError::Kind::DamagedData,
             "what is JSON is not called damaged");
    }
    return 0;
}
