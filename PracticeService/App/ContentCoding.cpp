#include "PracticeService/App/ContentCoding.h"

#include <algorithm>
#include <optional>

namespace trellisport::practice {

namespace {

constexpr std::string_view blanks = " \t";

std::string_view trimmed(std::string_view text)
{
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

/// Takes the text up to the next separator off the front of rest.
std::string_view nextOf(std::string_view &rest, char separator)
{
    const auto end = std::min(rest.find(separator), rest.size());
    const std::string_view piece = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return trimmed(piece);
}

char lower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isSame(std::string_view one, std::string_view other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return lower(a) == lower(b); });
}

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// A weight is 0 or 1 with at most three decimals.
bool isAboveZero(std::string_view weight)
{
    if (weight.empty() || weight.size() > 5 || (weight[0] != '0' && weight[0] != '1'))
        return false;
    if (weight.size() > 1 && weight[1] != '.')
        return false;
    const std::string_view decimals = weight.substr(std::min<std::size_t>(2, weight.size()));
    if (!std::all_of(decimals.begin(), decimals.end(), isDigit))
        return false;
    const bool hasDecimals = decimals.find_first_not_of('0') != std::string_view::npos;
    return weight[0] == '1' ? !hasDecimals : hasDecimals;
}

/// Whether an entry's parameters leave it a weight above 0.
bool isWanted(std::string_view parameters)
{
    while (!parameters.empty()) {
        const std::string_view parameter = nextOf(parameters, ';');
        if (parameter.size() >= 2 && lower(parameter[0]) == 'q' && parameter[1] == '=')
            return isAboveZero(parameter.substr(2));
    }
    return true;
}

} // namespace

bool accepts(std::string_view acceptEncoding, std::string_view coding)
{
    std::optional<bool> named;
    std::optional<bool> any;
    while (!acceptEncoding.empty()) {
        std::string_view entry = nextOf(acceptEncoding, ',');
        const std::string_view name = nextOf(entry, ';');
        if (isSame(name, coding))
            named = isWanted(entry);
        else if (name == "*")
            any = isWanted(entry);
    }
    return named.value_or(any.value_or(false));
}

} // namespace trellisport::practice
