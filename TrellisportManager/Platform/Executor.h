#pragma once

#include <functional>

namespace trellisport::platform {

/// Where work runs that must not hold up the user interface. A platform with one thread runs it
/// at once, in place.
class Executor {
public:
    Executor() = default;
    Executor(const Executor &) = delete;
    Executor &operator=(const Executor &) = delete;
    virtual ~Executor() = default;

    /// Runs the work once, on a thread of the executor's choosing. Any thread. The work must not
    /// throw.
    virtual void run(std::function<void()> work) = 0;
};

} // namespace trellisport::platform
