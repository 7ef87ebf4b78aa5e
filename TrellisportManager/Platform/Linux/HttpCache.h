#pragma once

#include "Platform/HttpSession.h"
#include "Platform/Linux/CacheRules.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace trellisport::platform {

/// The protocol's caching of GET replies (RFC 9111), private to this process and in memory.
///
/// It would rather ask the server once too often: a reply that does not say how long it holds is
/// asked about each time, where the standard would allow to guess; and after a write, whether it
/// succeeded or not, everything from that server is asked about again. Any thread.
class HttpCache {
public:
    struct Limits {
        std::size_t bytes = std::size_t{16} << 20; ///< one reply takes a quarter of it at most
        std::size_t entries = 256;
    };
    using Now = std::function<CacheMoment()>;

    HttpCache();
    /// now: called on any thread.
    HttpCache(Limits limits, Now now);

private:
    struct Kept;

public:
    /// Goes along with an exchange from begin() to finish().
    class Ticket {
    public:
        /// The reply without asking the server, when there is one; it is given away.
        std::optional<HttpReply> fresh;
        /// What is to be sent besides the request's own headers.
        std::vector<HttpHeader> conditions;

    private:
        friend class HttpCache;
        std::shared_ptr<const Kept> m_kept; ///< what the conditions ask about
        CacheMoment m_requested;
        std::uint64_t m_order = 0;
    };

    /// Before a request is sent.
    [[nodiscard]] Ticket begin(const HttpRequest &request);
    /// After its reply has come: gives what the caller is to have. request is as it was given to
    /// begin().
    [[nodiscard]] HttpReply finish(const HttpRequest &request, const Ticket &ticket,
                                   HttpReply reply);
    /// After it ended without one.
    void fail(const HttpRequest &request);

    /// How much is held: entries, and bytes of keys, headers and bodies.
    [[nodiscard]] std::size_t entryCount() const;
    [[nodiscard]] std::size_t byteCount() const;

private:
    struct Entry {
        std::string url;
        std::shared_ptr<const Kept> kept;
        std::size_t bytes = 0;
        std::uint64_t order = 0; ///< of the request that it answered
        bool mustAsk = false;    ///< a write came after it
    };
    using Entries = std::list<Entry>; // most recently used first

    [[nodiscard]] std::shared_ptr<const Kept>
    makeKept(const HttpRequest &request, const Ticket &ticket, const HttpReply &reply) const;
    void replace(std::string url, std::uint64_t order, std::shared_ptr<const Kept> kept);
    void endWrite(const HttpRequest &request);
    void erase(Entries::iterator entry);

    const Limits m_limits;
    const Now m_now;
    mutable std::mutex m_mutex;
    Entries m_entries;
    std::unordered_map<std::string, Entries::iterator> m_index;
    std::size_t m_bytes = 0;
    std::uint64_t m_order = 0;     ///< of the request last begun
    std::uint64_t m_lastWrite = 0; ///< what was requested up to this may be out of date
};

} // namespace trellisport::platform
