#pragma once

#include <QObject>
#include <QThread>

#include <functional>

namespace trellisport::platform {

/// The thread on which everything happens that comes over the session bus, so that no message, and
/// no flood of them, holds up the window. Used from the main thread.
class BusThread {
public:
    /// Starts it. Needs a toolkit application.
    BusThread();
    BusThread(const BusThread &) = delete;
    BusThread &operator=(const BusThread &) = delete;
    /// Waits for its end.
    ~BusThread();

    /// Runs the work there, after what was given before. Any thread.
    void run(std::function<void()> work);
    /// Waits until it has run. Not from the bus thread itself.
    void runAndWait(std::function<void()> work);
    /// Does the work here while the bus thread stands still, between two events. What arrives
    /// meanwhile waits: for the change of the toolkit application, without which its threads drop
    /// their events.
    void whileStill(const std::function<void()> &work);

private:
    QThread m_thread;
    QObject m_home;
};

} // namespace trellisport::platform
