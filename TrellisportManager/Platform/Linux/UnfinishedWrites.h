#pragma once

#include "Platform/HttpSession.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace trellisport::platform {

/// Counts the calls under way that change something on the server: a program that ended now would
/// lose them. Any thread.
class UnfinishedWrites {
public:
    void begin();
    void end();
    /// Waits for the end of all, that long at most. False when some are still under way then.
    bool waitUntilNone(std::chrono::milliseconds patience);

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_count = 0;
};

/// Another session, with its writes counted: a write is finished when its completion has returned.
class CountingHttpSession final : public HttpSession {
public:
    CountingHttpSession(std::shared_ptr<HttpSession> session,
                        std::shared_ptr<UnfinishedWrites> writes);

    [[nodiscard]] std::unique_ptr<HttpExchange> send(HttpRequest request,
                                                     Completion completion) override;

private:
    std::shared_ptr<HttpSession> m_session;
    std::shared_ptr<UnfinishedWrites> m_writes;
};

} // namespace trellisport::platform
