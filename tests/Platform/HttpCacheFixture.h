#pragma once

#include "Platform/Linux/HttpCache.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace trellisport::platform {

using Headers = std::vector<HttpHeader>;

inline HttpRequest get(const std::string &path = "/a", Headers headers = {})
{
    return {"GET", "https://host" + path, std::move(headers), {}};
}

inline HttpRequest put(const std::string &path = "/a", const std::string &origin = "https://host")
{
    return {"PUT", origin + path, {}, "{}"};
}

inline HttpReply reply(Headers headers, std::string body = "body")
{
    return {200, std::move(headers), std::move(body)};
}

class HttpCacheTest : public testing::Test {
protected:
    CacheMoment m_now{std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) +
                          std::chrono::hours(12),
                      std::chrono::hours(5)};
    HttpCache m_cache{{.bytes = 10'000, .entries = 4}, [this] { return m_now; }};

    void pass(std::chrono::milliseconds time)
    {
        m_now.calendar += time;
        m_now.sinceStart += time;
    }
    /// The server answers a request with this.
    HttpReply answer(const HttpRequest &request, HttpReply given)
    {
        const HttpCache::Ticket ticket = m_cache.begin(request);
        return m_cache.finish(request, ticket, std::move(given));
    }
    bool isFresh(const HttpRequest &request) { return m_cache.begin(request).fresh.has_value(); }
};

} // namespace trellisport::platform
