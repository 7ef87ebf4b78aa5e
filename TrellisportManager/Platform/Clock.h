#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace trellisport::platform {

/// A running timer; destroying it stops it.
class Timer {
public:
    Timer() = default;
    Timer(const Timer &) = delete;
    Timer &operator=(const Timer &) = delete;
    virtual ~Timer() = default;
};

/// Time as the program waits for it. Main thread only; the callbacks come on the main thread.
class Clock {
public:
    Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    virtual ~Clock() = default;

    /// Calls tick each time the interval has passed, until the timer is destroyed.
    [[nodiscard]] virtual std::unique_ptr<Timer> every(std::chrono::milliseconds interval,
                                                       std::function<void()> tick) = 0;
    /// Calls done once when the delay has passed, unless the timer is destroyed first.
    [[nodiscard]] virtual std::unique_ptr<Timer> after(std::chrono::milliseconds delay,
                                                       std::function<void()> done) = 0;
};

} // namespace trellisport::platform
