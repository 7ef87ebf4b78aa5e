#pragma once

#include "Platform/Linux/Authorities.h"
#include "Platform/Linux/CurlHttpSession.h"
#include "Platform/Linux/CurlInbox.h"
#include "Platform/Linux/CurlTransfer.h"
#include "Platform/Linux/HttpCache.h"

#include <curl/curl.h>

#include <chrono>
#include <map>
#include <memory>

namespace trellisport::platform {

/// What the session's thread does: starts jobs, moves their bytes, ends them.
class CurlWorker {
public:
    /// Both must outlive the worker. Reads the authorities.
    CurlWorker(CurlInbox &inbox, const CurlHttpOptions &options);
    CurlWorker(const CurlWorker &) = delete;
    CurlWorker &operator=(const CurlWorker &) = delete;
    ~CurlWorker();

    /// Works until the inbox is stopped; then cancels what is left.
    void run();

private:
    struct Running {
        std::unique_ptr<CurlTransfer> transfer;
        HttpCache::Ticket ticket;
        HttpSession::Completion completion;
    };
    using RunningJobs = std::map<CurlJob::Id, Running>;

    /// False when it is time to stop.
    bool readInbox();
    void start(CurlJob job);
    void endFinished();
    /// Ends those whose result is certain. One that libcurl is not done with loses its connection,
    /// or its stream of one; so let libcurl first take what has arrived.
    void endSettled();
    void finish(RunningJobs::iterator job, CURLcode code);
    void endStalled();
    void end(RunningJobs::iterator job, HttpResult result);
    void endAll(TransportFailure failure);
    [[nodiscard]] std::chrono::milliseconds longestWait() const;

    CurlInbox &m_inbox;
    const CurlHttpOptions &m_options;
    const Authorities m_authorities;
    CURLM *m_multi;
    HttpCache m_cache;
    RunningJobs m_running;
    /// Since a reply came over HTTP/2, reads may share a connection.
    bool m_readsShareConnections = false;
};

} // namespace trellisport::platform
