#include "Presentation/Money.h"

#include <array>
#include <charconv>

namespace trellisport {

QString decimalText(double number, int decimals)
{
    // The largest number has 309 digits before its point. QString's own formatting is no help: it
    // rounds halves away from zero and loses the sign of what rounds to it.
    std::array<char, 400> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), number,
                                       std::chars_format::fixed, decimals);
    return QString::fromLatin1(text.data(), written.ptr - text.data());
}

QString moneyText(double amount, int decimals)
{
    return QLatin1Char('$') + decimalText(amount, decimals);
}

} // namespace trellisport
