#pragma once

#include "Platform/Clock.h"

namespace trellisport::platform {

/// A clock that ticks through the main thread's event loop.
class QtClock final : public Clock {
public:
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval,
                                               std::function<void()> tick) override;
    [[nodiscard]] std::unique_ptr<Timer> after(std::chrono::milliseconds delay,
                                               std::function<void()> done) override;
};

} // namespace trellisport::platform
