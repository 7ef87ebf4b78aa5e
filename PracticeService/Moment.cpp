#include "PracticeService/Moment.h"

#include <array>
#include <charconv>
#include <span>

namespace trellisport::practice {

namespace {

void appendPadded(std::string &text, int value, int width)
{
    const std::string digits = std::to_string(value);
    text.append(static_cast<std::size_t>(width) - std::min(digits.size(), std::size_t(width)), '0');
    text += digits;
}

bool readNumber(std::string_view digits, int &value)
{
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return error == std::errc() && end == digits.data() + digits.size();
}

} // namespace

std::string dayText(Moment moment)
{
    const std::chrono::year_month_day date(std::chrono::floor<std::chrono::days>(moment));
    std::string text;
    appendPadded(text, static_cast<int>(date.year()), 4);
    text += '-';
    appendPadded(text, static_cast<int>(static_cast<unsigned>(date.month())), 2);
    text += '-';
    appendPadded(text, static_cast<int>(static_cast<unsigned>(date.day())), 2);
    return text;
}

std::string isoText(Moment moment)
{
    const std::chrono::hh_mm_ss clock(moment - dayOf(moment));
    std::string text = dayText(moment);
    text += 'T';
    appendPadded(text, static_cast<int>(clock.hours().count()), 2);
    text += ':';
    appendPadded(text, static_cast<int>(clock.minutes().count()), 2);
    text += ':';
    appendPadded(text, static_cast<int>(clock.seconds().count()), 2);
    text += 'Z';
    return text;
}

std::optional<Moment> momentOf(std::string_view iso)
{
    constexpr std::string_view shape = "0000-00-00T00:00:00Z";
    if (iso.size() != shape.size())
        return std::nullopt;
    for (std::size_t i = 0; i < shape.size(); ++i) {
        if (shape[i] != '0' && shape[i] != iso[i])
            return std::nullopt;
    }
    std::array<int, 6> parts{};
    constexpr std::array<std::size_t, 6> starts{0, 5, 8, 11, 14, 17};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (!readNumber(iso.substr(starts[i], i == 0 ? 4 : 2), parts[i]))
            return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year(parts[0]),
                                           std::chrono::month(static_cast<unsigned>(parts[1])),
                                           std::chrono::day(static_cast<unsigned>(parts[2]))};
    if (!date.ok() || parts[3] > 23 || parts[4] > 59 || parts[5] > 59)
        return std::nullopt;
    return std::chrono::sys_days(date) + std::chrono::hours(parts[3]) +
           std::chrono::minutes(parts[4]) + std::chrono::seconds(parts[5]);
}

Moment dayOf(Moment moment)
{
    return std::chrono::floor<std::chrono::days>(moment);
}

} // namespace trellisport::practice
