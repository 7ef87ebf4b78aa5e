#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace trellisport::platform {

/// Reads a date as HTTP headers write it, in any of the three layouts that the protocol knows.
/// Nothing for any other text; the name of the weekday is not compared with the date.
[[nodiscard]] std::optional<std::chrono::sys_seconds> parseHttpDate(std::string_view text);

} // namespace trellisport::platform
