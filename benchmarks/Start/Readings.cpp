#include "Start/Readings.h"

#include "Support/Series.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QTimer>

#include <ctime>
#include <utility>

namespace trellisport::bench {

namespace {

double millisecondsSinceStart()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const qint64 start = qgetenv("TRELLISPORT_BENCH_START").toLongLong();
    return static_cast<double>(qint64{now.tv_sec} * 1000000000 + now.tv_nsec - start) / 1e6;
}

} // namespace

Readings::Readings(std::string program, std::function<bool()> isLoaded)
    : m_program(std::move(program))
    , m_isLoaded(std::move(isLoaded))
{
}

void Readings::watch(QQuickWindow &window)
{
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [this] { frameIsOut(); });
}

void Readings::frameIsOut()
{
    ++m_frames;
    if (!m_hasStarted) {
        m_hasStarted = true;
        report("first-frame", "ms", millisecondsSinceStart());
    }
    if (!m_hasLoaded && m_isLoaded()) {
        m_hasLoaded = true;
        report("loaded", "ms", millisecondsSinceStart());
        // Once the frame is behind us and every animation has come to rest.
        QTimer::singleShot(1000, [this] { finishLoading(); });
    }
}

void Readings::finishLoading()
{
    report("resident", "B", memoryNow().resident);
    if (const int seconds = qEnvironmentVariableIntValue("TRELLISPORT_BENCH_IDLE")) {
        idle(seconds);
    } else {
        QCoreApplication::quit();
    }
}

void Readings::idle(int seconds)
{
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake,
                     [this] { ++m_wakeUps; });
    m_frames = 0;
    m_wakeUps = 0;
    QTimer::singleShot(seconds * 1000, [this] {
        // The last one was this timer's.
        report("wake-ups", "", m_wakeUps - 1);
        report("frames", "", m_frames);
        QCoreApplication::quit();
    });
}

void Readings::report(const std::string &what, const std::string &unit, double value) const
{
    bench::report(m_program + "-" + what, unit, {value});
}

} // namespace trellisport::bench
