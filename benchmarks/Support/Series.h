#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace trellisport::bench {

using SteadyClock = std::chrono::steady_clock;

/// What has passed since then, in milliseconds.
[[nodiscard]] double millisecondsSince(SteadyClock::time_point start);
/// How long the calling thread has so far wanted to run while other work of the machine had its
/// core, in milliseconds; 0 where the system does not tell.
[[nodiscard]] double millisecondsKeptWaiting();

/// Calls work and gives how long it took, in milliseconds, less what this thread was kept waiting
/// for a core: on a shared machine that says nothing about the work.
template <typename Work>
[[nodiscard]] double millisecondsOf(const Work &work)
{
    const double waited = millisecondsKeptWaiting();
    const auto start = SteadyClock::now();
    work();
    const double milliseconds = millisecondsSince(start);
    return milliseconds - (millisecondsKeptWaiting() - waited);
}

/// Writes readings of one thing to standard output, as a line of JSON.
void report(const std::string &name, const std::string &unit, const std::vector<double> &values);
/// The value below which that share (0 to 1) of the readings lies. There must be one.
[[nodiscard]] double quantile(std::vector<double> values, double share);

/// What the process holds, in bytes.
struct Memory {
    double allocated; ///< handed out by the heap and not given back
    double resident;  ///< in physical memory
};
[[nodiscard]] Memory memoryNow();

} // namespace trellisport::bench
