#include "Support/Series.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <malloc.h>
#include <unistd.h>

namespace trellisport::bench {

double millisecondsSince(SteadyClock::time_point start)
{
    return std::chrono::duration<double, std::milli>(SteadyClock::now() - start).count();
}

double millisecondsKeptWaiting()
{
    // Time on a core, time waiting for one (both in nanoseconds), and how often.
    thread_local const int file = open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC);
    std::array<char, 96> text = {};
    if (file < 0 || pread(file, text.data(), text.size() - 1, 0) <= 0) {
        return 0;
    }
    const char *second = std::strchr(text.data(), ' ');
    return second == nullptr ? 0 : std::strtod(second, nullptr) / 1e6;
}

void report(const std::string &name, const std::string &unit, const std::vector<double> &values)
{
    std::cout << R"({"name":")" << name << R"(","unit":")" << unit << R"(","values":[)"
              << std::setprecision(12);
    const char *separator = "";
    for (const double value : values) {
        std::cout << separator << value;
        separator = ",";
    }
    std::cout << "]}" << std::endl;
}

double quantile(std::vector<double> values, double share)
{
    const auto place = static_cast<std::size_t>(share * static_cast<double>(values.size()));
    const auto found =
        values.begin() + static_cast<std::ptrdiff_t>(std::min(place, values.size() - 1));
    std::nth_element(values.begin(), found, values.end());
    return *found;
}

Memory memoryNow()
{
    std::ifstream file("/proc/self/statm");
    double whole = 0;
    double residentPages = 0;
    file >> whole >> residentPages;
    const struct mallinfo2 heap = mallinfo2();
    return {static_cast<double>(heap.uordblks + heap.hblkhd),
            residentPages * static_cast<double>(sysconf(_SC_PAGESIZE))};
}

} // namespace trellisport::bench
