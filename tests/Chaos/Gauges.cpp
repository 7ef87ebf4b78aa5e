#include "Chaos/Gauges.h"

#include <malloc.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <unistd.h>

namespace trellisport::chaos {

namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;

int entries(const char *folder)
{
    const std::filesystem::directory_iterator all(folder);
    return static_cast<int>(std::distance(begin(all), end(all)));
}

/// How long the main thread has been ready without having a core. Nought where the system does not
/// say: then what other programs take counts as ours.
std::chrono::nanoseconds waitForACore()
{
    // Of the process's first thread: time on a core, time waiting for one, in nanoseconds.
    std::ifstream file("/proc/self/schedstat");
    std::int64_t worked = 0;
    std::int64_t waited = 0;
    file >> worked >> waited;
    return std::chrono::nanoseconds(waited);
}

} // namespace

Holdings holdings()
{
    // What was freed goes back to the system first, or the figure would be of the past.
    malloc_trim(0);
    const struct mallinfo2 allocator = mallinfo2();
    std::ifstream statm("/proc/self/statm");
    std::size_t pages = 0;
    std::size_t resident = 0;
    statm >> pages >> resident;
    return {allocator.uordblks + allocator.hblkhd,
            resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)), entries("/proc/self/fd"),
            entries("/proc/self/task")};
}

Heartbeat::Heartbeat(std::chrono::seconds patience)
    : m_guard([this, patience] { guard(patience); })
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
    beginAnew();
    m_timer.start(5);
}

Heartbeat::~Heartbeat()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    m_guard.join();
}

void Heartbeat::beginAnew()
{
    m_lastTurn = std::chrono::steady_clock::now();
    m_lastWait = waitForACore();
    m_longestTurn = {};
    m_longestHeld = {};
}

void Heartbeat::beat()
{
    const auto now = std::chrono::steady_clock::now();
    const auto wait = waitForACore();
    const auto turn = now - m_lastTurn;
    m_longestTurn = std::max(m_longestTurn, duration_cast<milliseconds>(turn));
    m_longestHeld =
        std::max(m_longestHeld, duration_cast<milliseconds>(turn - (wait - m_lastWait)));
    m_lastTurn = now;
    m_lastWait = wait;
    m_seenTurns = ++m_turns;
}

void Heartbeat::guard(std::chrono::seconds patience)
{
    long last = 0;
    std::unique_lock lock(m_mutex);
    while (!m_changed.wait_for(lock, patience, [this] { return m_ends; })) {
        if (m_seenTurns == last) {
            std::cerr << "the user interface has stood still for " << patience.count() << " s\n";
            std::abort();
        }
        last = m_seenTurns;
    }
}

} // namespace trellisport::chaos
