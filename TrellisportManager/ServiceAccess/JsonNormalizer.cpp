#include "ServiceAccess/JsonNormalizer.h"

#include <simdjson.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace trellisport {

namespace {

constexpr std::string_view outsideScalars = " \t\r\n,:[]{}\"";
/// Shorter ones without an exponent fit 64 bits and double's range.
constexpr std::size_t doubtfulNumberLength = 19;
constexpr std::size_t escapeLength = 6; // \uXXXX
constexpr std::string_view replacementEscape = R"(\ufffd)";
/// Numbers and texts are not lists, and a list's elements are never boolean.
constexpr std::string_view valueNobodyTakes = "[false]";

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::size_t skipDigits(std::string_view text, std::size_t from)
{
    while (from < text.size() && isDigit(text[from])) {
        ++from;
    }
    return from;
}

enum class NumberForm : std::uint8_t { None, Integer, Other };

/// What the token is by JSON's grammar for numbers.
NumberForm numberForm(std::string_view token)
{
    std::size_t at = token.starts_with('-') ? 1 : 0;
    const std::size_t integer = at;
    at = skipDigits(token, at);
    if (at == integer || (token[integer] == '0' && at - integer > 1)) {
        return NumberForm::None;
    }
    NumberForm form = NumberForm::Integer;
    if (at < token.size() && token[at] == '.') {
        const std::size_t fraction = at + 1;
        at = skipDigits(token, fraction);
        if (at == fraction) {
            return NumberForm::None;
        }
        form = NumberForm::Other;
    }
    if (at < token.size() && (token[at] == 'e' || token[at] == 'E')) {
        ++at;
        if (at < token.size() && (token[at] == '+' || token[at] == '-')) {
            ++at;
        }
        const std::size_t exponent = at;
        at = skipDigits(token, exponent);
        if (at == exponent) {
            return NumberForm::None;
        }
        form = NumberForm::Other;
    }
    return at == token.size() ? form : NumberForm::None;
}

/// The unit that an escape of the form \uXXXX at this place stands for.
std::optional<unsigned> escapedUnit(std::string_view json, std::size_t at)
{
    if (json.size() - at < escapeLength || json[at] != '\\' || json[at + 1] != 'u') {
        return {};
    }
    unsigned unit = 0;
    for (const char c : json.substr(at + 2, 4)) {
        const char lower = static_cast<char>(c | 0x20);
        if (isDigit(c)) {
            unit = unit * 16 + static_cast<unsigned>(c - '0');
        } else if (lower >= 'a' && lower <= 'f') {
            unit = unit * 16 + static_cast<unsigned>(lower - 'a' + 10);
        } else {
            return {};
        }
    }
    return unit;
}

bool isHighSurrogate(unsigned unit)
{
    return unit >= 0xd800 && unit <= 0xdbff;
}

bool isLowSurrogate(unsigned unit)
{
    return unit >= 0xdc00 && unit <= 0xdfff;
}

} // namespace

struct JsonNormalizer::Probe {
    simdjson::dom::parser parser;
};

JsonNormalizer::JsonNormalizer()
    : m_probe(std::make_unique<Probe>())
{
}

JsonNormalizer::~JsonNormalizer() = default;

bool JsonNormalizer::normalize(std::string &json)
{
    m_output.clear();
    m_output.reserve(json.size() + simdjson::SIMDJSON_PADDING);
    m_depth = 0;
    m_rewritten = false;
    std::size_t depth = 0;
    for (std::size_t at = 0; at < json.size();) {
        const char c = json[at];
        if (c == '"') {
            at = copyString(json, at);
        } else if (outsideScalars.find(c) == std::string_view::npos) {
            at = copyScalar(json, at);
        } else {
            if (c == '[' || c == '{') {
                m_depth = std::max(m_depth, ++depth);
            } else if ((c == ']' || c == '}') && depth > 0) {
                --depth;
            }
            m_output += c;
            ++at;
        }
    }
    json = std::exchange(m_output, {});
    if (m_rewritten) {
        ++m_depth; // the rewriting may have put a list at the deepest level
    }
    return m_rewritten || m_depth >= simdjson::DEFAULT_MAX_DEPTH;
}

/// Copies the string that starts at a quote, to its end or the document's; gives where it ends.
std::size_t JsonNormalizer::copyString(std::string_view json, std::size_t start)
{
    std::size_t at = start + 1;
    std::size_t copied = start;
    while (true) {
        at = json.find_first_of("\"\\", at);
        if (at == std::string_view::npos || json.size() - at < 2) {
            at = json.size();
            break;
        }
        if (json[at] == '"') {
            ++at;
            break;
        }
        const auto unit = escapedUnit(json, at);
        if (!unit) {
            at += 2;
            continue;
        }
        if (isHighSurrogate(*unit)) {
            const auto next = escapedUnit(json, at + escapeLength);
            if (next && isLowSurrogate(*next)) {
                at += 2 * escapeLength;
                continue;
            }
        }
        if (isHighSurrogate(*unit) || isLowSurrogate(*unit)) {
            m_output += json.substr(copied, at - copied);
            rewrite(replacementEscape);
            copied = at + escapeLength;
        }
        at += escapeLength;
    }
    m_output += json.substr(copied, at - copied);
    return at;
}

/// Copies the number or word that starts here; gives where it ends.
std::size_t JsonNormalizer::copyScalar(std::string_view json, std::size_t start)
{
    const std::size_t end = std::min(json.find_first_of(outsideScalars, start), json.size());
    const std::string_view token = json.substr(start, end - start);
    const bool isDoubtful =
        token.size() >= doubtfulNumberLength || token.find_first_of("eE") != std::string_view::npos;
    const NumberForm form = isDoubtful ? numberForm(token) : NumberForm::None;
    if (form == NumberForm::None || isTaken(token)) {
        m_output += token;
        return end;
    }
    if (form == NumberForm::Integer) {
        std::string number(token);
        number += ".0";
        if (isTaken(number)) {
            rewrite(number);
            return end;
        }
    }
    rewrite(valueNobodyTakes);
    return end;
}

void JsonNormalizer::rewrite(std::string_view replacement)
{
    m_output += replacement;
    m_rewritten = true;
}

bool JsonNormalizer::isTaken(std::string_view number)
{
    return m_probe->parser.parse(number.data(), number.size()).error() == simdjson::SUCCESS;
}

} // namespace trellisport
