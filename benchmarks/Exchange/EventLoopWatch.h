#pragma once

#include "Support/Series.h"

#include <QMetaObject>

#include <vector>

namespace trellisport::bench {

/// Times how long the calling thread's event loop is kept busy each time it wakes: as long as it
/// is, nothing that the user does is heard. It must have an event loop.
class EventLoopWatch {
public:
    EventLoopWatch();
    EventLoopWatch(const EventLoopWatch &) = delete;
    EventLoopWatch &operator=(const EventLoopWatch &) = delete;
    ~EventLoopWatch();

    /// One for each time it woke, in milliseconds.
    [[nodiscard]] const std::vector<double> &stalls() const { return m_stalls; }
    /// The same, less what the thread was kept waiting for a core.
    [[nodiscard]] const std::vector<double> &ownStalls() const { return m_ownStalls; }

private:
    std::vector<double> m_stalls;
    std::vector<double> m_ownStalls;
    SteadyClock::time_point m_wokeAt;
    double m_waitedBefore = 0;
    bool m_isAwake = false;
    QMetaObject::Connection m_awake;
    QMetaObject::Connection m_aboutToBlock;
};

} // namespace trellisport::bench
