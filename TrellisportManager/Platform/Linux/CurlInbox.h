#pragma once

#include "Platform/HttpSession.h"

#include <curl/curl.h>

#include <cstdint>
#include <mutex>
#include <vector>

namespace trellisport::platform {

struct CurlJob {
    using Id = std::uint64_t;

    Id id = 0;
    HttpRequest request;
    HttpSession::Completion completion;
};

/// How every thread talks to the worker. It may outlive the worker; what comes in then is lost,
/// which only cancellations can be.
class CurlInbox {
public:
    struct Contents {
        std::vector<CurlJob> started;
        std::vector<CurlJob::Id> cancelled;
        bool stops = false;
    };

    // Any thread.
    CurlJob::Id start(HttpRequest request, HttpSession::Completion completion);
    void cancel(CurlJob::Id id);
    void stop();

    // The worker's side. The multi handle is the one that a new message wakes; null for none.
    void setWaiter(CURLM *multi);
    [[nodiscard]] Contents take();

private:
    void wake() const;

    std::mutex m_mutex;
    Contents m_contents;
    CurlJob::Id m_lastId = 0;
    CURLM *m_waiter = nullptr;
};

} // namespace trellisport::platform
