#pragma once

#include "Platform/HttpSession.h"

#include <string_view>
#include <vector>

namespace trellisport::platform {

/// Whether two header names or other words of the protocol are the same; ASCII letters count alike
/// in either case.
[[nodiscard]] bool isSameWord(std::string_view a, std::string_view b);

/// The values of all fields of this name, in order. The views point into the headers.
[[nodiscard]] std::vector<std::string_view> headerValues(const std::vector<HttpHeader> &headers,
                                                         std::string_view name);

[[nodiscard]] bool hasHeader(const std::vector<HttpHeader> &headers, std::string_view name);

/// The text without blanks around it.
[[nodiscard]] std::string_view trimmed(std::string_view text);

} // namespace trellisport::platform
