#include "Platform/Linux/CacheControl.h"

#include "Platform/Linux/HttpHeaders.h"

#include <algorithm>
#include <string>

namespace trellisport::platform {

namespace {

struct Directive {
    std::string_view name;
    std::optional<std::string> value; ///< without its quotes
};

/// Takes the next directive off a list; name and value may be empty. Nothing when a quote is left
/// open or stands where none may.
std::optional<Directive> takeDirective(std::string_view &list)
{
    Directive directive;
    const std::size_t end = std::min(list.find_first_of(",="), list.size());
    directive.name = trimmed(list.substr(0, end));
    list.remove_prefix(end);
    if (list.starts_with('=')) {
        list.remove_prefix(1);
        list.remove_prefix(std::min(list.find_first_not_of(" \t"), list.size()));
        if (list.starts_with('"')) {
            directive.value.emplace();
            std::size_t at = 1;
            for (; at < list.size() && list[at] != '"'; ++at) {
                at += list[at] == '\\' ? 1 : 0;
                if (at < list.size()) {
                    *directive.value += list[at];
                }
            }
            if (at >= list.size()) {
                return {};
            }
            list.remove_prefix(at + 1);
        } else {
            const std::size_t valueEnd = std::min(list.find(','), list.size());
            directive.value = std::string(trimmed(list.substr(0, valueEnd)));
            list.remove_prefix(valueEnd);
        }
    }
    const std::size_t next = std::min(list.find(','), list.size());
    if (!trimmed(list.substr(0, next)).empty()) {
        return {};
    }
    list.remove_prefix(std::min(next + 1, list.size()));
    return directive;
}

void apply(const Directive &directive, CacheControl &control)
{
    if (isSameWord(directive.name, "no-store")) {
        control.noStore = true;
    } else if (isSameWord(directive.name, "no-cache")) {
        control.noCache = true;
    } else if (isSameWord(directive.name, "max-age")) {
        const auto age = parseSeconds(directive.value.value_or(""));
        if (!age || control.maxAge.value_or(*age) != *age) {
            control.noCache = true;
        }
        control.maxAge = age;
    }
}

} // namespace

CacheControl parseCacheControl(const std::vector<HttpHeader> &headers)
{
    CacheControl control;
    for (std::string_view list : headerValues(headers, "Cache-Control")) {
        while (!list.empty()) {
            const std::optional<Directive> directive = takeDirective(list);
            if (!directive) {
                control.noStore = true; // what can't be read may say just that
                break;
            }
            apply(*directive, control);
        }
    }
    return control;
}

std::optional<std::chrono::seconds> parseSeconds(std::string_view text)
{
    constexpr std::int64_t most = std::int64_t{1} << 31;
    std::int64_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            return {};
        }
        value = std::min(value * 10 + (c - '0'), most);
    }
    return text.empty() ? std::nullopt : std::optional(std::chrono::seconds(value));
}

} // namespace trellisport::platform
