#include "PracticeService/App/FileKind.h"

#include <algorithm>
#include <array>
#include <utility>

namespace trellisport::practice {

namespace {

constexpr std::array types{
    std::pair(".css", "text/css; charset=utf-8"),
    std::pair(".gif", "image/gif"),
    std::pair(".html", "text/html; charset=utf-8"),
    std::pair(".ico", "image/vnd.microsoft.icon"),
    std::pair(".jpg", "image/jpeg"),
    std::pair(".js", "text/javascript; charset=utf-8"),
    std::pair(".json", "application/json"),
    std::pair(".map", "application/json"),
    std::pair(".mjs", "text/javascript; charset=utf-8"),
    std::pair(".otf", "font/otf"),
    std::pair(".png", "image/png"),
    std::pair(".svg", "image/svg+xml"),
    std::pair(".ttf", "font/ttf"),
    std::pair(".txt", "text/plain; charset=utf-8"),
    std::pair(".wasm", "application/wasm"),
    std::pair(".webmanifest", "application/manifest+json"),
    std::pair(".webp", "image/webp"),
    std::pair(".woff2", "font/woff2"),
};

constexpr std::size_t hashDigits = 16;

bool isHashDigit(char letter)
{
    return (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'f');
}

} // namespace

std::string mediaTypeOf(std::string_view name)
{
    const auto *const found = std::find_if(
        types.begin(), types.end(), [&](const auto &type) { return name.ends_with(type.first); });
    return found == types.end() ? "application/octet-stream" : found->second;
}

bool isNamedByContent(std::string_view name)
{
    name.remove_prefix(name.rfind('/') + 1); // npos + 1 is 0
    const auto extension = name.rfind('.');
    if (extension == std::string_view::npos || extension + 1 == name.size())
        return false;
    const std::string_view stem = name.substr(0, extension);
    const auto dot = stem.rfind('.');
    if (dot == std::string_view::npos || dot == 0)
        return false;
    const std::string_view hash = stem.substr(dot + 1);
    return hash.size() == hashDigits && std::all_of(hash.begin(), hash.end(), isHashDigit);
}

} // namespace trellisport::practice
