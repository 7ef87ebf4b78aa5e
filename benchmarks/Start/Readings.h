#pragma once

#include <QQuickWindow>

#include <functional>
#include <string>

namespace trellisport::bench {

/// What a program that was just started reads of itself. The time of the start stands in the
/// environment, TRELLISPORT_BENCH_START, in nanoseconds of the monotonic clock.
///
/// Reports "first-frame" when the window's first frame is out, "loaded" with the first frame in
/// which isLoaded() holds, and "resident" then; after that, when TRELLISPORT_BENCH_IDLE says for
/// how many seconds, "wake-ups" of the event loop and "frames" in that time. Then it ends the
/// program. All names begin with the program's.
class Readings {
public:
    Readings(std::string program, std::function<bool()> isLoaded);

    /// Once, as soon as the window is made; it must outlive this.
    void watch(QQuickWindow &window);

private:
    void frameIsOut();
    void finishLoading();
    void idle(int seconds);
    void report(const std::string &what, const std::string &unit, double value) const;

    std::string m_program;
    std::function<bool()> m_isLoaded;
    bool m_hasStarted = false;
    bool m_hasLoaded = false;
    int m_frames = 0;
    int m_wakeUps = 0;
};

} // namespace trellisport::bench
