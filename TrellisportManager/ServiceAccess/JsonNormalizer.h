#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace trellisport {

/// Rewrites those parts of a JSON document that are valid but beyond what the parser takes:
///
/// - an integer beyond 64 bits gets a fraction of zero, so that it counts as a number;
/// - a number beyond double's range becomes a list that no field takes;
/// - half of a surrogate pair, escaped alone, becomes U+FFFD.
///
/// Everything else is copied as it stands, so what was not JSON is still none afterwards.
class JsonNormalizer {
public:
    JsonNormalizer();
    ~JsonNormalizer();
    JsonNormalizer(JsonNormalizer &&) = delete;
    JsonNormalizer(const JsonNormalizer &) = delete;
    JsonNormalizer &operator=(JsonNormalizer &&) = delete;
    JsonNormalizer &operator=(const JsonNormalizer &) = delete;

    /// Rewrites json. False when another attempt of the parser is pointless: nothing was rewritten
    /// and nothing lies deeper than the parser follows anyway.
    [[nodiscard]] bool normalize(std::string &json);

    /// The levels of lists and objects in the document last normalized.
    [[nodiscard]] std::size_t depth() const noexcept { return m_depth; }

private:
    struct Probe;

    std::size_t copyString(std::string_view json, std::size_t start);
    std::size_t copyScalar(std::string_view json, std::size_t start);
    void rewrite(std::string_view replacement);
    [[nodiscard]] bool isTaken(std::string_view number);

    std::unique_ptr<Probe> m_probe;
    std::string m_output;
    std::size_t m_depth = 0;
    bool m_rewritten = false;
};

} // namespace trellisport
