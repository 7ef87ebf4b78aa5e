#pragma once

#include <string>
#include <string_view>

namespace trellisport {

/// Where the service is, checked.
struct ServiceAddress {
    std::string baseURL; ///< https://host[:port]/api/v1, as it was given
    std::string host;    ///< the host alone, without a port; an IPv6 address with its brackets
    std::string webURL;  ///< https://host[:port], the service's web dashboard
};

/// Checks a base URL: an absolute https URL whose path is /api/v1, with no trailing slash, no user
/// information, no query and no fragment.
/// Throws std::invalid_argument whose what() is one sentence that says what is wrong.
[[nodiscard]] ServiceAddress parseServiceAddress(std::string_view baseURL);

} // namespace trellisport
