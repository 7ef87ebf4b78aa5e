#pragma once

#include "Platform/MainQueue.h"

#include <QObject>

#include <deque>
#include <memory>
#include <mutex>

namespace trellisport::platform {

/// The main thread's queue, run by the toolkit's event loop. Nothing is lost while the program has
/// no event loop or changes from one toolkit application to another, which drops the toolkit's own
/// queue.
class MainThreadQueue : public MainQueue {
public:
    void async(std::function<void()> work) override;

    /// Takes up what was queued while there was no event loop. Main thread, each time a toolkit
    /// application has been made.
    void wake();

private:
    void post();
    void drain();

    std::mutex m_mutex;
    std::deque<std::function<void()>> m_work;
    std::unique_ptr<QObject> m_receiver; ///< absent before the first toolkit application
};

} // namespace trellisport::platform
