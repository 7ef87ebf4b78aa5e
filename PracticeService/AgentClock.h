#pragma once

#include "PracticeService/Moment.h"

namespace trellisport::practice {

/// The agent's time: runs from a start at a given speed, and can be moved ahead.
class AgentClock {
public:
    AgentClock(Moment start, double speed) noexcept
        : m_start(start)
        , m_speed(speed)
    {
    }

    [[nodiscard]] Moment now() const noexcept
    {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - m_began;
        return m_start + std::chrono::floor<seconds>(passed * m_speed);
    }
    [[nodiscard]] double speed() const noexcept { return m_speed; }
    void advance(seconds by) noexcept { m_start += by; }

private:
    Moment m_start;
    std::chrono::steady_clock::time_point m_began = std::chrono::steady_clock::now();
    double m_speed;
};

} // namespace trellisport::practice
