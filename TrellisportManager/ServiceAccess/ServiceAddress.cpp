#include "ServiceAccess/ServiceAddress.h"

#include "ServiceAccess/UrlSyntax.h"

#include <charconv>
#include <cstdint>
#include <stdexcept>

namespace trellisport {

namespace {

constexpr std::string_view servicePath = "/api/v1";

[[noreturn]] void fail(std::string_view baseURL, std::string_view reason)
{
    std::string sentence = "The service's address \"";
    sentence += baseURL;
    sentence += "\" ";
    sentence += reason;
    sentence += '.';
    throw std::invalid_argument(sentence);
}

bool isHttps(std::string_view scheme)
{
    constexpr std::string_view https = "https";
    if (scheme.size() != https.size()) {
        return false;
    }
    for (std::size_t i = 0; i < https.size(); ++i) {
        if ((scheme[i] | 0x20) != https[i]) {
            return false;
        }
    }
    return true;
}

bool isPort(std::string_view digits)
{
    std::uint16_t port = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), port);
    return result.ec == std::errc() && result.ptr == digits.data() + digits.size() && port != 0;
}

} // namespace

ServiceAddress parseServiceAddress(std::string_view baseURL)
{
    if (baseURL.empty()) {
        throw std::invalid_argument("No address of the service was given.");
    }
    const auto parts = splitURL(baseURL);
    if (!parts) {
        fail(baseURL, "is not a complete URL, such as https://agent.example/api/v1");
    }
    if (!isHttps(parts->scheme)) {
        fail(baseURL, "does not begin with https://");
    }
    if (parts->userInfo) {
        fail(baseURL, "holds a user name, which is not supported");
    }
    if (parts->port && !isPort(*parts->port)) {
        fail(baseURL, "has a port that is not a number from 1 to 65535");
    }
    if (parts->query) {
        fail(baseURL, "has a query (from the \"?\" on), which it must not have");
    }
    if (parts->fragment) {
        fail(baseURL, "has a fragment (from the \"#\" on), which it must not have");
    }
    if (parts->path == std::string(servicePath) + '/') {
        fail(baseURL, "ends in a slash, which it must not do");
    }
    if (parts->path != servicePath) {
        fail(baseURL, "does not have the path /api/v1");
    }
    return {std::string(baseURL), std::string(parts->host),
            std::string(baseURL.substr(0, baseURL.size() - servicePath.size()))};
}

} // namespace trellisport
