#pragma once

#include "Platform/HttpSession.h"

#include <chrono>
#include <string>
#include <vector>

namespace trellisport::platform {

/// A moment on two clocks: the calendar's, which can be set, and one that only runs, also while the
/// machine sleeps.
struct CacheMoment {
    std::chrono::sys_time<std::chrono::milliseconds> calendar;
    std::chrono::milliseconds sinceStart{};

    /// The time from an earlier moment; where the clocks differ, the longer one.
    [[nodiscard]] std::chrono::milliseconds since(const CacheMoment &earlier) const;
};

// What a reply's headers say about keeping it (RFC 9111, a private cache). Headers that contradict
// each other or can't be read count as the stricter reading.

/// Whether a request may be answered from what is kept, and its reply be kept: a GET that says
/// nothing about caching itself.
[[nodiscard]] bool isCacheable(const HttpRequest &request);

/// Whether a reply may be kept at all: a 200 that nobody forbids to store and that answers every
/// request alike that has the same varied headers.
[[nodiscard]] bool mayStore(const HttpReply &reply);

/// For how long it may be used without asking again; zero when it must be asked about each time.
/// Nothing is guessed: a reply that names no time has none.
[[nodiscard]] std::chrono::milliseconds freshnessLifetime(const std::vector<HttpHeader> &headers,
                                                          std::chrono::sys_seconds received);

/// How old it already was when it arrived.
[[nodiscard]] std::chrono::milliseconds ageOnArrival(const std::vector<HttpHeader> &headers,
                                                     const CacheMoment &requested,
                                                     const CacheMoment &received);

/// The headers that ask the server whether it still holds; none when the reply gives no means to.
[[nodiscard]] std::vector<HttpHeader> conditions(const std::vector<HttpHeader> &headers);

/// The headers of a kept reply brought up to date by those of a 304.
[[nodiscard]] std::vector<HttpHeader> updatedHeaders(std::vector<HttpHeader> kept,
                                                     const std::vector<HttpHeader> &news);

/// The names in the reply's Vary.
[[nodiscard]] std::vector<std::string> variedHeaders(const std::vector<HttpHeader> &headers);

} // namespace trellisport::platform
