#pragma once

#include <simdjson.h>

#include <string>

namespace trellisport {

/// A parsed JSON document. Only for the decoder's sources: it brings the parser's header along.
class JsonDocument {
public:
    /// Checks the whole of the body and frees it. Throws DecodingError when it is not JSON.
    explicit JsonDocument(std::string body);
    JsonDocument(JsonDocument &&) = delete;
    JsonDocument(const JsonDocument &) = delete;
    JsonDocument &operator=(JsonDocument &&) = delete;
    JsonDocument &operator=(const JsonDocument &) = delete;
    ~JsonDocument() = default;

    /// Valid while the document lives.
    [[nodiscard]] simdjson::dom::element root() const noexcept { return m_root; }

private:
    simdjson::dom::parser m_parser;
    simdjson::dom::element m_root;
};

} // namespace trellisport
