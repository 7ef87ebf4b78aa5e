#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

namespace trellisport::chaos {

/// What takes longer than this has gone wrong.
inline constexpr std::chrono::seconds patience{60};
/// Longer than every animation.
inline constexpr std::chrono::milliseconds calm{450};

/// Lets the main thread's event loop turn for so long.
inline void spin(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Turns until the condition holds; false when it does not for too long.
template <typename Condition>
bool await(Condition condition, std::chrono::milliseconds limit = patience)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (std::chrono::milliseconds(timer.elapsed()) > limit) {
            return false;
        }
        spin(std::chrono::milliseconds(10));
    }
    return true;
}

} // namespace trellisport::chaos
