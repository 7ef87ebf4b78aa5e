#include "Platform/Toolkit/QtClock.h"

#include <QTimer>

#include <utility>

namespace trellisport::platform {

namespace {

class QtTimer final : public Timer {
public:
    QtTimer(std::chrono::milliseconds span, bool isSingleShot, std::function<void()> callback)
    {
        // A coarse timer may be five per cent late or early.
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setSingleShot(isSingleShot);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(callback));
        m_timer.start(span);
    }

private:
    QTimer m_timer;
};

} // namespace

std::unique_ptr<Timer> QtClock::every(std::chrono::milliseconds interval,
                                      std::function<void()> tick)
{
    return std::make_unique<QtTimer>(interval, false, std::move(tick));
}

std::unique_ptr<Timer> QtClock::after(std::chrono::milliseconds delay, std::function<void()> done)
{
    return std::make_unique<QtTimer>(delay, true, std::move(done));
}

} // namespace trellisport::platform
