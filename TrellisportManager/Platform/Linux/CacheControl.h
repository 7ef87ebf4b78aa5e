#pragma once

#include "Platform/HttpSession.h"

#include <chrono>
#include <optional>
#include <string_view>
#include <vector>

namespace trellisport::platform {

/// What the Cache-Control headers of a request or reply say, as far as it matters here.
struct CacheControl {
    bool noStore = false; ///< also when the headers can't be made out
    bool noCache = false; ///< ask before each use; also when ages contradict each other
    std::optional<std::chrono::seconds> maxAge;
};

[[nodiscard]] CacheControl parseCacheControl(const std::vector<HttpHeader> &headers);

/// Reads a number of seconds, digits only; what is beyond any use becomes 2^31.
[[nodiscard]] std::optional<std::chrono::seconds> parseSeconds(std::string_view text);

} // namespace trellisport::platform
