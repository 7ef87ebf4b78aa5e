#pragma once

#include "Platform/Clock.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace trellisport::test {

/// A clock that stands still until a test moves it. One thread.
class ManualClock : public platform::Clock {
public:
    [[nodiscard]] std::unique_ptr<platform::Timer> every(std::chrono::milliseconds interval,
                                                         std::function<void()> tick) override;
    [[nodiscard]] std::unique_ptr<platform::Timer> after(std::chrono::milliseconds delay,
                                                         std::function<void()> done) override;

    /// Lets time pass; what falls due on the way is called in order, before this returns.
    void advance(std::chrono::milliseconds time);

    /// How long the timers that run were set for, oldest first.
    [[nodiscard]] std::vector<std::chrono::milliseconds> runningTimers() const;

private:
    struct Alarm {
        std::chrono::milliseconds due;
        std::chrono::milliseconds span;
        bool repeats;
        std::function<void()> callback;
    };
    class ManualTimer;

    std::unique_ptr<platform::Timer> set(std::chrono::milliseconds span, bool repeats,
                                         std::function<void()> callback);
    std::shared_ptr<Alarm> nextDue(std::chrono::milliseconds limit) const;

    std::chrono::milliseconds m_now{0};
    /// Owned by their timers; a timer that is destroyed, also by its own callback, drops out.
    std::vector<std::weak_ptr<Alarm>> m_alarms;
};

} // namespace trellisport::test
