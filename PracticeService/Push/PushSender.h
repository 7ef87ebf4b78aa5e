#pragma once

#include "PracticeService/Push/PushPost.h"
#include "PracticeService/Workflow.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace trellisport::practice {

/// Pushes alerts to the consoles that registered, on threads of its own, and forgets those that are
/// gone. One endpoint gets one message at a time, so that one that hangs holds up no other.
class PushSender {
public:
    struct Devices {
        std::function<std::vector<std::string>()> tokens; ///< may wait
        std::function<void(const std::string &token)> forget;
    };
    using Post = std::function<PushOutcome(const PushPost &)>;
    struct Patience {
        /// A post that fails is tried again a few times, that long apart and longer each time;
        /// others go first.
        std::chrono::milliseconds retryDelay = std::chrono::seconds(2);
        /// A device to which nothing came through for that long is forgotten.
        std::chrono::milliseconds silence = std::chrono::hours(72);
    };

    /// More than these that wait are dropped, oldest first.
    static constexpr std::size_t mostWaiting = 256;

    PushSender() = default;
    PushSender(const PushSender &) = delete;
    PushSender &operator=(const PushSender &) = delete;
    /// Stops.
    ~PushSender();

    /// Any thread; returns at once. What comes before start() waits for it.
    void push(const Alert &alert);
    /// Begins to send. devices and post are called on the sender's threads until stop(), post on
    /// several at once.
    void start(Devices devices, Post post, Patience patience);
    void start(Devices devices, Post post) { start(std::move(devices), std::move(post), {}); }
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
    using Lock = std::unique_lock<std::mutex>;

    void work();
    void address(Lock &lock);
    void schedule(Delivery delivery);
    [[nodiscard]] std::vector<Delivery>::iterator nextDelivery();
    void attempt(Lock &lock, Delivery delivery);
    [[nodiscard]] bool isSilentForLong(const std::string &endpoint);

    std::mutex m_mutex; ///< for all below
    std::condition_variable m_changed;
    std::deque<Alert> m_alerts;
    bool m_isStopping = false;
    bool m_isAddressing = false;
    std::vector<Delivery> m_deliveries;                     ///< soonest first
    std::set<std::string> m_busy;                           ///< endpoints that are being posted to
    std::map<std::string, Clock::time_point> m_silentSince; ///< endpoints of which the last failed
    Devices m_devices;
    Post m_post;
    Patience m_patience;
    std::vector<std::thread> m_threads;
};

} // namespace trellisport::practice
