#include "Chaos/Gauges.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
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

/// What the processor has worked for the calling thread.
std::chrono::nanoseconds workOfThread()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
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
    m_lastWork = workOfThread();
    m_longestTurn = {};
    m_longestWork = {};
}

void Heartbeat::beat()
{
    const auto now = std::chrono::steady_clock::now();
    const auto work = workOfThread();
    m_longestTurn = std::max(m_longestTurn, duration_cast<milliseconds>(now - m_lastTurn));
    m_longestWork = std::max(m_longestWork, duration_cast<milliseconds>(work - m_lastWork));
    m_lastTurn = now;
    m_lastWork = work;
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
