#pragma once

#include <cmath>
#include <cstdint>
#include <string>

namespace trellisport::practice {

/// The agent on the marketplace.
inline constexpr std::int64_t ourBidderId = 9'000'001;
inline constexpr const char *ourUsername = "trellis_agent";

/// "1850.00".
[[nodiscard]] inline std::string moneyText(double amount)
{
    const auto cents = static_cast<std::int64_t>(std::llround(amount * 100.0));
    const std::string fraction = std::to_string(cents % 100);
    return std::to_string(cents / 100) + (fraction.size() == 1 ? ".0" : ".") + fraction;
}

} // namespace trellisport::practice
