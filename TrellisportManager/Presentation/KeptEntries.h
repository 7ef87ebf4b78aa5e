#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace trellisport {

// What stays where it is when a list is exchanged for another. Any thread.

/// Entries that two lists have in common, one behind the other in both.
struct KeptRun {
    std::size_t was; ///< the place of the first in the former list
    std::size_t is;  ///< and in the new one
    std::size_t count;

    friend bool operator==(const KeptRun &, const KeptRun &) = default;
};

/// Two lists by their places.
struct ListsCompared {
    std::size_t wasCount;
    std::size_t isCount;
    std::function<bool(std::size_t was, std::size_t is)> same;
    /// What equal entries have alike and few others share, to find them by.
    std::function<std::size_t(std::size_t was)> wasKey;
    std::function<std::size_t(std::size_t is)> isKey;
};

/// The runs that may stay, in their order in both lists: what is alike at both ends, and of what
/// lies between as many entries as keep their order. Of lists that differ in more places than a
/// view should be told one by one, only the ends. Equal entries may go unnoticed among many with
/// one key. Takes n log n time.
[[nodiscard]] std::vector<KeptRun> keptRuns(const ListsCompared &lists);

} // namespace trellisport
