#include "Fuzz/Targets/Must.h"
#include "Platform/Linux/CacheControl.h"
#include "Platform/Linux/CacheRules.h"
#include "Platform/Linux/HttpCache.h"
#include "Platform/Linux/HttpDate.h"
#include "Platform/Linux/HttpHeaders.h"
#include "Platform/Linux/ReplyReader.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Lines of a reply's headers, as a server may send them.

namespace {

using namespace trellisport::platform;
using namespace std::chrono_literals;

/// As a transfer hands them over, line by line.
std::vector<HttpHeader> readHeaders(std::string_view text)
{
    ReplyReader reader(1024);
    char start[] = "HTTP/1.1 200 OK\r\n";
    must(ReplyReader::takeHeader(start, 1, sizeof start - 1, &reader) != 0, "a start is taken");
    while (!text.empty()) {
        std::string line(text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1));
        text.remove_prefix(line.size());
        const bool isLast = trimmed(line).empty();
        const std::size_t taken = ReplyReader::takeHeader(line.data(), 1, line.size(), &reader);
        if (isLast) {
            break; // no transfer stands behind it that would go on
        }
        must(taken == line.size(), "a line is taken whole");
    }
    return reader.take().headers;
}

void checkRules(const std::vector<HttpHeader> &headers)
{
    const CacheMoment now{std::chrono::sys_days{std::chrono::year{2026} / 5 / 1}, 1000ms};
    must(freshnessLifetime(headers, std::chrono::floor<std::chrono::seconds>(now.calendar)) >= 0ms,
         "freshness is no negative time");
    must(ageOnArrival(headers, now, now) >= 0ms, "an age is no negative time");
    if (const auto maxAge = parseCacheControl(headers).maxAge) {
        must(*maxAge >= 0s && *maxAge <= std::chrono::seconds(std::int64_t{1} << 31),
             "max-age is bounded");
    }
    (void)conditions(headers);
    (void)variedHeaders(headers);
    for (const HttpHeader &header : headers) {
        (void)parseHttpDate(header.value);
    }
}

void checkCache(const std::vector<HttpHeader> &headers)
{
    CacheMoment now{std::chrono::sys_days{std::chrono::year{2026} / 5 / 1}, 1000ms};
    HttpCache cache({4096, 4}, [&now] { return now; });
    const HttpRequest request{"GET", "https://service.example/api/v1/dashboard", {}, {}};
    const HttpReply reply{200, headers, "{}"};
    (void)cache.finish(request, cache.begin(request), reply);
    must(cache.byteCount() <= 4096, "the cache keeps within its bounds");
    now.calendar += 1s;
    now.sinceStart += 1s;
    const auto ticket = cache.begin(request);
    if (ticket.fresh) {
        must(ticket.fresh->body == "{}", "what is kept comes back whole");
        return;
    }
    const HttpReply again = cache.finish(request, ticket, {304, headers, ""});
    must(again.status == 304 || again.body == "{}", "what still holds comes back whole");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto headers = readHeaders({reinterpret_cast<const char *>(data), size});
    checkRules(headers);
    checkCache(headers);
    return 0;
}
