#pragma once

#include "PracticeService/Push/PushPost.h"
#include "PracticeService/Workflow.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace trellisport::practice {

/// Pushes alerts to the consoles that registered, one after the other on a thread of its own, and
/// forgets those that are gone.
class PushSender {
public:
    struct Devices {
        std::function<std::vector<std::string>()> tokens; ///< may wait
        std::function<void(const std::string &token)> forget;
    };
    using Post = std::function<PushOutcome(const PushPost &)>;

    /// More than these that wait are dropped, oldest first.
    static constexpr std::size_t mostWaiting = 256;

    PushSender() = default;
    PushSender(const PushSender &) = delete;
    PushSender &operator=(const PushSender &) = delete;
    /// Stops.
    ~PushSender();

    /// Any thread; returns at once. What comes before start() waits for it.
    void push(const Alert &alert);
    /// Begins to send. devices and post are called on the sender's thread until stop(). A post that
    /// fails is tried again a few times, retryDelay apart and longer each time; others go first.
    void start(Devices devices, Post post,
               std::chrono::milliseconds retryDelay = std::chrono::seconds(2));
    /// Comes back when nothing is being sent any more; what waits is dropped.
    void stop();

private:
    using Clock = std::chrono::steady_clock;
    struct Delivery {
        PushPost message;
        std::string token;
        int attempt = 1;
        Clock::time_point due;
    };

    void work();
    void address(const Alert &alert);
    void schedule(Delivery delivery);
    void attempt(Delivery delivery);

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Alert> m_alerts;
    bool m_isStopping = false;
    Devices m_devices;
    Post m_post;
    std::chrono::milliseconds m_retryDelay{};
    std::vector<Delivery> m_deliveries; ///< the sender's thread's own; soonest last
    std::thread m_thread;
};

} // namespace trellisport::practice
