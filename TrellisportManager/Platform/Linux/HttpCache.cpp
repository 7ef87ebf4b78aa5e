#include "Platform/Linux/HttpCache.h"

#include "Platform/Linux/HttpHeaders.h"

#include <algorithm>
#include <ctime>
#include <string_view>
#include <utility>

namespace trellisport::platform {

namespace {

constexpr int notModified = 304;

CacheMoment systemNow()
{
    using namespace std::chrono;
    timespec running{};
    clock_gettime(CLOCK_BOOTTIME, &running);
    return {time_point_cast<milliseconds>(system_clock::now()),
            duration_cast<milliseconds>(seconds(running.tv_sec) + nanoseconds(running.tv_nsec))};
}

bool isRead(const HttpRequest &request)
{
    return request.method == "GET";
}

std::string key(const HttpRequest &request)
{
    return request.url.substr(0, request.url.find('#'));
}

/// Scheme, host and port.
std::string_view origin(std::string_view url)
{
    const std::size_t authority = url.find("://");
    return url.substr(0, authority == std::string_view::npos
                             ? authority
                             : url.find_first_of("/?#", authority + 3));
}

std::size_t bytesOf(const std::vector<HttpHeader> &headers)
{
    std::size_t bytes = headers.size() * sizeof(HttpHeader);
    for (const HttpHeader &header : headers) {
        bytes += header.name.size() + header.value.size();
    }
    return bytes;
}

/// The request's values of the headers that the reply depends on, each as one text.
std::vector<HttpHeader> chosenBy(const HttpRequest &request, const std::vector<HttpHeader> &reply)
{
    std::vector<HttpHeader> chosen;
    for (std::string &name : variedHeaders(reply)) {
        std::string value;
        for (const std::string_view part : headerValues(request.headers, name)) {
            value.append(part).append(", ");
        }
        chosen.push_back({std::move(name), std::move(value)});
    }
    return chosen;
}

bool isSame(const std::vector<HttpHeader> &a, const std::vector<HttpHeader> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto &x, const auto &y) {
        return isSameWord(x.name, y.name) && x.value == y.value;
    });
}

} // namespace

/// A reply as it is kept; replaced by another, never changed.
struct HttpCache::Kept {
    std::vector<HttpHeader> headers;
    std::shared_ptr<const std::string> body;
    std::vector<HttpHeader> requestHeaders; ///< those that the reply depends on
    CacheMoment received;
    std::chrono::milliseconds ageOnArrival{};
    std::chrono::milliseconds lifetime{};
};

HttpCache::HttpCache()
    : HttpCache(Limits(), systemNow)
{
}

HttpCache::HttpCache(Limits limits, Now now)
    : m_limits(limits)
    , m_now(std::move(now))
{
}

HttpCache::Ticket HttpCache::begin(const HttpRequest &request)
{
    Ticket ticket;
    ticket.m_requested = m_now();
    const std::lock_guard lock(m_mutex);
    ticket.m_order = ++m_order;
    const auto found = m_index.find(key(request));
    if (found == m_index.end() || !isCacheable(request)) {
        return ticket;
    }
    const Entry &entry = *found->second;
    const Kept &kept = *entry.kept;
    if (!isSame(kept.requestHeaders, chosenBy(request, kept.headers))) {
        return ticket;
    }
    m_entries.splice(m_entries.begin(), m_entries, found->second);
    const auto age = kept.ageOnArrival + ticket.m_requested.since(kept.received);
    if (!entry.mustAsk && age < kept.lifetime) {
        ticket.fresh = HttpReply{200, kept.headers, *kept.body};
        auto &headers = ticket.fresh->headers;
        std::erase_if(headers, [](const auto &header) { return isSameWord(header.name, "Age"); });
        const auto seconds = std::chrono::ceil<std::chrono::seconds>(age).count();
        headers.push_back({"Age", std::to_string(seconds)});
    } else {
        ticket.conditions = conditions(kept.headers);
        ticket.m_kept = ticket.conditions.empty() ? nullptr : entry.kept;
    }
    return ticket;
}

HttpReply HttpCache::finish(const HttpRequest &request, const Ticket &ticket, HttpReply reply)
{
    if (!isRead(request)) {
        endWrite(request);
        return reply;
    }
    if (reply.status == notModified && ticket.m_kept) {
        reply.status = 200;
        reply.headers = updatedHeaders(ticket.m_kept->headers, reply.headers);
        reply.body = *ticket.m_kept->body;
    }
    replace(key(request), ticket.m_order, makeKept(request, ticket, reply));
    return reply;
}

/// What is to be kept of a reply; null when that is nothing.
std::shared_ptr<const HttpCache::Kept>
HttpCache::makeKept(const HttpRequest &request, const Ticket &ticket, const HttpReply &reply) const
{
    const CacheMoment received = m_now();
    if (!isCacheable(request) || !mayStore(reply) || reply.body.size() > m_limits.bytes / 4) {
        return nullptr;
    }
    const auto second = std::chrono::floor<std::chrono::seconds>(received.calendar);
    auto kept = std::make_shared<Kept>();
    kept->lifetime = freshnessLifetime(reply.headers, second);
    kept->ageOnArrival = ageOnArrival(reply.headers, ticket.m_requested, received);
    if (kept->ageOnArrival >= kept->lifetime && conditions(reply.headers).empty()) {
        return nullptr;
    }
    kept->headers = reply.headers;
    kept->body = std::make_shared<const std::string>(reply.body);
    kept->requestHeaders = chosenBy(request, reply.headers);
    kept->received = received;
    return kept;
}

/// Puts the reply to a request in the place of an older one; null only takes the older one out.
void HttpCache::replace(std::string url, std::uint64_t order, std::shared_ptr<const Kept> kept)
{
    const std::lock_guard lock(m_mutex);
    if (const auto found = m_index.find(url); found != m_index.end()) {
        if (found->second->order > order) {
            return;
        }
        erase(found->second);
    }
    if (!kept || order <= m_lastWrite) {
        return;
    }
    const std::size_t bytes = 2 * url.size() + bytesOf(kept->headers) +
                              bytesOf(kept->requestHeaders) + kept->body->size();
    m_entries.push_front({std::move(url), std::move(kept), bytes, order, false});
    m_index.emplace(m_entries.front().url, m_entries.begin());
    m_bytes += bytes;
    while (m_entries.size() > m_limits.entries || m_bytes > m_limits.bytes) {
        erase(std::prev(m_entries.end()));
    }
}

void HttpCache::fail(const HttpRequest &request)
{
    // A write whose reply was lost may have reached the server all the same.
    if (!isRead(request)) {
        endWrite(request);
    }
}

void HttpCache::endWrite(const HttpRequest &request)
{
    const std::lock_guard lock(m_mutex);
    m_lastWrite = m_order;
    for (Entry &entry : m_entries) {
        entry.mustAsk |= isSameWord(origin(entry.url), origin(request.url));
    }
}

void HttpCache::erase(Entries::iterator entry)
{
    m_bytes -= entry->bytes;
    m_index.erase(entry->url);
    m_entries.erase(entry);
}

std::size_t HttpCache::entryCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_entries.size();
}

std::size_t HttpCache::byteCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_bytes;
}

} // namespace trellisport::platform
