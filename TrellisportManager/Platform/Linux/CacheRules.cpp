#include "Platform/Linux/CacheRules.h"

#include "Platform/Linux/CacheControl.h"
#include "Platform/Linux/HttpDate.h"
#include "Platform/Linux/HttpHeaders.h"

#include <algorithm>
#include <array>
#include <string>

namespace trellisport::platform {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::sys_seconds;

/// With these in a request, its sender does the caching.
constexpr std::array<std::string_view, 9> ownConditions{
    "If-None-Match", "If-Modified-Since", "If-Match", "If-Unmodified-Since", "If-Range",
    "Range",         "Cache-Control",     "Pragma",   "Authorization"};

/// A 304 does not speak about these (RFC 9111, 3.2).
constexpr std::array<std::string_view, 10> keptAsTheyAre{
    "Connection",    "Keep-Alive",      "Proxy-Connection",  "TE",
    "Trailer",       "Upgrade",         "Transfer-Encoding", "Content-Length",
    "Content-Range", "Content-Encoding"};

/// Longer than anything is kept.
constexpr std::chrono::years unknownAge{100};

/// A resource that changes twice within a second keeps its Last-Modified; only when this long has
/// passed since, the date tells versions apart for certain.
constexpr seconds settled{60};

/// The date in a header; nothing when it is missing, can't be read or is there twice, differently.
std::optional<sys_seconds> date(const std::vector<HttpHeader> &headers, std::string_view name)
{
    const std::vector<std::string_view> values = headerValues(headers, name);
    const bool agree = std::all_of(values.begin(), values.end(),
                                   [&](std::string_view value) { return value == values.front(); });
    return values.empty() || !agree ? std::nullopt : parseHttpDate(values.front());
}

bool isEntityTag(std::string_view text)
{
    if (text.starts_with("W/")) {
        text.remove_prefix(2);
    }
    return text.size() >= 2 && text.front() == '"' && text.back() == '"' &&
           std::all_of(text.begin() + 1, text.end() - 1, [](char c) {
               const auto byte = static_cast<unsigned char>(c);
               return byte > 0x20 && byte != 0x7f && c != '"';
           });
}

} // namespace

milliseconds CacheMoment::since(const CacheMoment &earlier) const
{
    return std::max(sinceStart - earlier.sinceStart, calendar - earlier.calendar);
}

bool isCacheable(const HttpRequest &request)
{
    return request.method == "GET" && !request.body &&
           std::none_of(ownConditions.begin(), ownConditions.end(),
                        [&](std::string_view name) { return hasHeader(request.headers, name); });
}

bool mayStore(const HttpReply &reply)
{
    if (reply.status != 200 || hasHeader(reply.headers, "Content-Range") ||
        parseCacheControl(reply.headers).noStore) {
        return false;
    }
    const std::vector<std::string> varied = variedHeaders(reply.headers);
    return std::find(varied.begin(), varied.end(), "*") == varied.end();
}

milliseconds freshnessLifetime(const std::vector<HttpHeader> &headers, sys_seconds received)
{
    const CacheControl control = parseCacheControl(headers);
    const bool hasControl = hasHeader(headers, "Cache-Control");
    if (control.noCache || (!hasControl && hasHeader(headers, "Pragma"))) {
        return {};
    }
    if (control.maxAge) {
        return *control.maxAge;
    }
    const std::optional<sys_seconds> expires = date(headers, "Expires");
    if (!expires) {
        return {};
    }
    if (!hasHeader(headers, "Date")) {
        return std::max(*expires - received, seconds(0));
    }
    const std::optional<sys_seconds> sent = date(headers, "Date");
    return sent ? std::max(*expires - *sent, seconds(0)) : seconds(0);
}

milliseconds ageOnArrival(const std::vector<HttpHeader> &headers, const CacheMoment &requested,
                          const CacheMoment &received)
{
    const milliseconds underWay = received.since(requested);
    milliseconds age = underWay;
    if (const std::optional<sys_seconds> sent = date(headers, "Date")) {
        age = std::max<milliseconds>(age, received.calendar - *sent);
    } else if (hasHeader(headers, "Date")) {
        age = unknownAge;
    }
    for (const std::string_view value : headerValues(headers, "Age")) {
        age = std::max<milliseconds>(age,
                                     underWay + parseSeconds(trimmed(value)).value_or(unknownAge));
    }
    return age;
}

std::vector<HttpHeader> conditions(const std::vector<HttpHeader> &headers)
{
    const std::vector<std::string_view> tags = headerValues(headers, "ETag");
    if (tags.size() == 1 && isEntityTag(tags.front())) {
        return {{"If-None-Match", std::string(tags.front())}};
    }
    const std::optional<sys_seconds> sent = date(headers, "Date");
    const std::optional<sys_seconds> modified = date(headers, "Last-Modified");
    if (tags.empty() && sent && modified && *modified + settled <= *sent) {
        return {{"If-Modified-Since", std::string(headerValues(headers, "Last-Modified").front())}};
    }
    return {};
}

std::vector<HttpHeader> updatedHeaders(std::vector<HttpHeader> kept,
                                       const std::vector<HttpHeader> &news)
{
    const auto isNews = [](const HttpHeader &header) {
        return std::none_of(keptAsTheyAre.begin(), keptAsTheyAre.end(),
                            [&](std::string_view name) { return isSameWord(header.name, name); });
    };
    // An age or a warning belongs to the exchange that it came with.
    std::erase_if(kept, [&](const HttpHeader &header) {
        return isSameWord(header.name, "Age") || isSameWord(header.name, "Warning") ||
               (isNews(header) && hasHeader(news, header.name));
    });
    std::copy_if(news.begin(), news.end(), std::back_inserter(kept), isNews);
    return kept;
}

std::vector<std::string> variedHeaders(const std::vector<HttpHeader> &headers)
{
    std::vector<std::string> names;
    for (std::string_view list : headerValues(headers, "Vary")) {
        while (!list.empty()) {
            const std::size_t end = std::min(list.find(','), list.size());
            if (const std::string_view name = trimmed(list.substr(0, end)); !name.empty()) {
                names.emplace_back(name);
            }
            list.remove_prefix(std::min(end + 1, list.size()));
        }
    }
    return names;
}

} // namespace trellisport::platform
