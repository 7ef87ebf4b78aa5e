#pragma once

#include <functional>

namespace trellisport::platform {

/// The work that waits for the main thread.
class MainQueue {
public:
    MainQueue() = default;
    MainQueue(const MainQueue &) = delete;
    MainQueue &operator=(const MainQueue &) = delete;
    virtual ~MainQueue() = default;

    /// Runs the work on the main thread, in the order of the calls and never from within this one.
    /// Any thread; returns at once. What still waits when the program ends is dropped.
    virtual void async(std::function<void()> work) = 0;
};

} // namespace trellisport::platform
