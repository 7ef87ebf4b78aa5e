#include "Platform/Linux/HttpHeaders.h"

#include <algorithm>

namespace trellisport::platform {

namespace {

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

} // namespace

bool isSameWord(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

std::vector<std::string_view> headerValues(const std::vector<HttpHeader> &headers,
                                           std::string_view name)
{
    std::vector<std::string_view> values;
    for (const HttpHeader &header : headers) {
        if (isSameWord(header.name, name)) {
            values.emplace_back(header.value);
        }
    }
    return values;
}

bool hasHeader(const std::vector<HttpHeader> &headers, std::string_view name)
{
    return std::any_of(headers.begin(), headers.end(),
                       [&](const HttpHeader &header) { return isSameWord(header.name, name); });
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace trellisport::platform
