#pragma once

#include <QTimer>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace trellisport::chaos {

/// What the process holds at one moment.
struct Holdings {
    std::size_t allocated = 0; ///< bytes that the program has from the allocator
    std::size_t resident = 0;  ///< bytes of memory in use, as the system counts
    int files = 0;             ///< open file descriptors
    int threads = 0;
};
[[nodiscard]] Holdings holdings();

/// How long the main thread's event loop takes for its turns, and whether it turns at all. Made,
/// used and destroyed on the main thread.
class Heartbeat {
public:
    /// Ends the process with a sentence on standard error when the loop has not turned for so long.
    explicit Heartbeat(std::chrono::seconds patience);
    Heartbeat(const Heartbeat &) = delete;
    Heartbeat &operator=(const Heartbeat &) = delete;
    ~Heartbeat();

    /// The longest time between two turns, and the longest of them less the time for which the
    /// thread was ready and had no core: what it worked and what it waited for, but not what other
    /// programs took.
    [[nodiscard]] std::chrono::milliseconds longestTurn() const { return m_longestTurn; }
    [[nodiscard]] std::chrono::milliseconds longestHeld() const { return m_longestHeld; }
    [[nodiscard]] long turns() const { return m_turns; }
    /// Forgets what came before, such as a start that is not to count.
    void beginAnew();

private:
    void beat();
    void guard(std::chrono::seconds patience);

    QTimer m_timer;
    long m_turns = 0;
    std::chrono::steady_clock::time_point m_lastTurn;
    std::chrono::nanoseconds m_lastWait{0};
    std::chrono::milliseconds m_longestTurn{0};
    std::chrono::milliseconds m_longestHeld{0};
    std::atomic<long> m_seenTurns = 0;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_ends = false;
    std::thread m_guard;
};

} // namespace trellisport::chaos
