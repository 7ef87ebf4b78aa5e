#include "ServiceAccess/JsonDocument.h"

#include "ServiceAccess/CodingErrors.h"
#include "ServiceAccess/JsonNormalizer.h"

#include <new>
#include <utility>

namespace trellisport {

namespace {

simdjson::error_code parse(simdjson::dom::parser &parser, std::string &json,
                           simdjson::dom::element &root)
{
    const std::size_t size = json.size();
    const bool roomy = json.capacity() - size >= simdjson::SIMDJSON_PADDING;
    if (roomy) {
        json.resize(size + simdjson::SIMDJSON_PADDING);
    }
    const auto error = parser.parse(json.data(), size, !roomy).get(root);
    json.resize(size);
    return error;
}

[[noreturn]] void fail(simdjson::error_code error)
{
    if (error == simdjson::MEMALLOC) {
        throw std::bad_alloc();
    }
    throw DecodingError(DecodingError::Kind::DamagedData, {},
                        "The service's reply is not valid JSON.");
}

} // namespace

JsonDocument::JsonDocument(std::string body)
{
    std::string json = std::move(body);
    auto error = parse(m_parser, json, m_root);
    if (!error) {
        return;
    }
    // The parser refuses some documents that are JSON. Those can be put in a form that it takes;
    // whether a document is JSON at all stays its judgement alone.
    JsonNormalizer normalizer;
    if (!normalizer.normalize(json)) {
        fail(error);
    }
    error = m_parser.allocate(json.size(), normalizer.depth() + 1);
    if (!error) {
        error = parse(m_parser, json, m_root);
    }
    if (error) {
        fail(error);
    }
}

} // namespace trellisport
