#pragma once

#include "Platform/HttpSession.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace trellisport::test {

/// A session without a network: a queue of replies in, a list of requests out. Replies arrive
/// through a thread of its own, as from a real session. A request for which none is queued ends in
/// a transport failure. Any thread.
class FakeHttpSession : public platform::HttpSession {
public:
    FakeHttpSession();
    FakeHttpSession(const FakeHttpSession &) = delete;
    FakeHttpSession &operator=(const FakeHttpSession &) = delete;
    /// What is still under way is cancelled first.
    ~FakeHttpSession() override;

    [[nodiscard]] std::unique_ptr<platform::HttpExchange> send(platform::HttpRequest request,
                                                               Completion completion) override;

    /// Queues the reply to one request. urlEnd, when not empty, reserves it for a request whose URL
    /// ends so; each request takes the first that fits.
    void queueReply(int status, std::string body = {}, std::string urlEnd = {});
    void queueFailure(platform::TransportFailure failure, std::string description,
                      std::string urlEnd = {});
    /// Every request whose URL ends so and for which nothing is queued gets this reply.
    void alwaysReply(std::string urlEnd, int status, std::string body);
    [[nodiscard]] std::size_t queued() const;

    /// From now on what is queued is kept back. A request takes its reply when it is sent, held
    /// back or not.
    void hold();
    /// Gives out what was kept back, oldest first, and keeps nothing back any longer.
    void release();
    /// Gives out the oldest reply kept back to a request whose URL ends so; false when there is
    /// none. Others stay kept back.
    bool releaseOne(std::string_view urlEnd = {});
    /// The same for the newest of all.
    bool releaseNewest();
    /// How many requests wait for release.
    [[nodiscard]] std::size_t held() const;

    /// All that was sent, oldest first.
    [[nodiscard]] std::vector<platform::HttpRequest> requests() const;
    [[nodiscard]] std::size_t requestCount() const;
    /// How many exchanges were cancelled before their reply arrived.
    [[nodiscard]] std::size_t cancelled() const;

    /// Cancels what is under way and all that is sent from now on, and runs this thread's events
    /// until nothing is under way any more: for the end of a test whose calls were sent from here.
    void finish();

    /// Ends every session that a call under way still holds: for the end of a test program, while
    /// which no reply may be decoded any more.
    static void endAll();

private:
    struct Answer {
        std::string urlEnd;
        platform::HttpResult result;
    };
    struct Call;
    class Exchange;
    struct State;

    void queue(Answer answer);
    void end();

    std::shared_ptr<State> m_state;
    std::thread m_thread;
};

} // namespace trellisport::test
