#include "Support/ManualClock.h"

#include <algorithm>
#include <utility>

namespace trellisport::test {

class ManualClock::ManualTimer : public platform::Timer {
public:
    explicit ManualTimer(std::shared_ptr<Alarm> alarm)
        : m_alarm(std::move(alarm))
    {
    }

private:
    std::shared_ptr<Alarm> m_alarm;
};

std::unique_ptr<platform::Timer> ManualClock::every(std::chrono::milliseconds interval,
                                                    std::function<void()> tick)
{
    return set(std::max(interval, std::chrono::milliseconds(1)), true, std::move(tick));
}

std::unique_ptr<platform::Timer> ManualClock::after(std::chrono::milliseconds delay,
                                                    std::function<void()> done)
{
    return set(delay, false, std::move(done));
}

std::unique_ptr<platform::Timer> ManualClock::set(std::chrono::milliseconds span, bool repeats,
                                                  std::function<void()> callback)
{
    auto alarm = std::make_shared<Alarm>(Alarm{m_now + span, span, repeats, std::move(callback)});
    std::erase_if(m_alarms, [](const auto &known) { return known.expired(); });
    m_alarms.push_back(alarm);
    return std::make_unique<ManualTimer>(std::move(alarm));
}

void ManualClock::advance(std::chrono::milliseconds time)
{
    const std::chrono::milliseconds end = m_now + time;
    while (const std::shared_ptr<Alarm> alarm = nextDue(end)) {
        m_now = alarm->due;
        const std::function<void()> callback = alarm->callback;
        if (alarm->repeats) {
            alarm->due += alarm->span;
        } else {
            alarm->callback = nullptr;
        }
        callback();
    }
    m_now = end;
}

std::shared_ptr<ManualClock::Alarm> ManualClock::nextDue(std::chrono::milliseconds limit) const
{
    std::shared_ptr<Alarm> next;
    for (const std::weak_ptr<Alarm> &known : m_alarms) {
        std::shared_ptr<Alarm> alarm = known.lock();
        if (alarm && alarm->callback && alarm->due <= limit && (!next || alarm->due < next->due)) {
            next = std::move(alarm);
        }
    }
    return next;
}

std::vector<std::chrono::milliseconds> ManualClock::runningTimers() const
{
    std::vector<std::chrono::milliseconds> spans;
    for (const std::weak_ptr<Alarm> &known : m_alarms) {
        if (const std::shared_ptr<Alarm> alarm = known.lock(); alarm && alarm->callback) {
            spans.push_back(alarm->span);
        }
    }
    return spans;
}

} // namespace trellisport::test
