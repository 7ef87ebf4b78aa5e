#pragma once

#include "Platform/HttpSession.h"
#include "Support/Series.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace trellisport::bench {

/// A session that has every reply ready. One of them, the one that is measured, it hands over when
/// it is told to, and notes when that was: the moment of a real reply's last byte.
class PreparedSession : public platform::HttpSession {
public:
    PreparedSession();
    PreparedSession(const PreparedSession &) = delete;
    PreparedSession &operator=(const PreparedSession &) = delete;
    ~PreparedSession() override;

    /// Answers requests whose URL ends so with what body() makes, in a thread of the session.
    void answer(const std::string &urlEnd, std::function<std::string()> body);
    /// The same for the one that waits for handOver().
    void holdBack(const std::string &urlEnd, std::function<std::string()> body);

    /// Whether a held back reply is asked for and ready.
    [[nodiscard]] bool isReady() const;
    /// Gives the held back reply to whoever asked for it.
    void handOver();
    [[nodiscard]] SteadyClock::time_point handedOverAt() const;
    [[nodiscard]] std::size_t replySize() const;

    [[nodiscard]] std::unique_ptr<platform::HttpExchange> send(platform::HttpRequest request,
                                                               Completion completion) override;

private:
    struct Job {
        std::string url;
        Completion completion;
    };

    void work();
    void reply(const Job &job);
    void waitForHandOver(std::size_t size);

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::map<std::string, std::function<std::string()>> m_bodies;
    std::string m_heldBack;
    std::deque<Job> m_jobs;
    bool m_isReady = false;
    bool m_isReleased = false;
    bool m_ends = false;
    std::size_t m_replySize = 0;
    SteadyClock::time_point m_handedOverAt;
    std::thread m_thread;
};

} // namespace trellisport::bench
