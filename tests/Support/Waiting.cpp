#include "Support/Waiting.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

#include <thread>

namespace trellisport::test {

bool waitUntil(const std::function<bool()> &condition, std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        runPendingEvents();
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    return true;
}

void runPendingEvents()
{
    // A timer without an interval always has something to do, hence the end.
    QEventLoop loop;
    for (int round = 0; round < 100 && loop.processEvents(); ++round) {
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace trellisport::test
