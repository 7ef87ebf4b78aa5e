#include "Presentation/KeptEntries.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <unordered_map>

namespace trellisport {

namespace {

/// More runs than this are not worth telling.
constexpr std::size_t maximumRuns = 100;
/// How many entries of one key are compared with another before it counts as new.
constexpr std::size_t maximumTries = 8;
constexpr std::size_t nowhere = std::numeric_limits<std::size_t>::max();

struct Pair {
    std::size_t was;
    std::size_t is;
};

/// What lies between the ends of both lists that are alike.
struct Middle {
    std::size_t begin; ///< in both lists
    std::size_t wasEnd;
    std::size_t isEnd;
};

Middle middleOf(const ListsCompared &lists)
{
    const std::size_t common = std::min(lists.wasCount, lists.isCount);
    std::size_t first = 0;
    while (first < common && lists.same(first, first)) {
        ++first;
    }
    std::size_t last = 0;
    while (last < common - first &&
           lists.same(lists.wasCount - last - 1, lists.isCount - last - 1)) {
        ++last;
    }
    return {first, lists.wasCount - last, lists.isCount - last};
}

/// The former places of one key's entries that are still to be found.
struct Places {
    std::vector<std::size_t> places;
    std::size_t next = 0;
};

std::size_t take(Places &candidates, const ListsCompared &lists, std::size_t is)
{
    std::vector<std::size_t> &places = candidates.places;
    const std::size_t end = std::min(places.size(), candidates.next + maximumTries);
    for (std::size_t at = candidates.next; at < end; ++at) {
        if (places[at] != nowhere && lists.same(places[at], is)) {
            const std::size_t was = places[at];
            places[at] = nowhere;
            while (candidates.next < places.size() && places[candidates.next] == nowhere) {
                ++candidates.next;
            }
            return was;
        }
    }
    return nowhere;
}

/// Every entry of the new middle that the former one has, in the new order.
std::vector<Pair> pairsOf(const ListsCompared &lists, const Middle &middle)
{
    std::unordered_map<std::size_t, Places> byKey;
    for (std::size_t was = middle.begin; was < middle.wasEnd; ++was) {
        byKey[lists.wasKey(was)].places.push_back(was);
    }
    std::vector<Pair> pairs;
    for (std::size_t is = middle.begin; is < middle.isEnd; ++is) {
        const auto candidates = byKey.find(lists.isKey(is));
        if (candidates == byKey.end()) {
            continue;
        }
        if (const std::size_t was = take(candidates->second, lists, is); was != nowhere) {
            pairs.push_back({was, is});
        }
    }
    return pairs;
}

/// As many of the pairs as are in one order in both lists.
std::vector<Pair> longestInOrder(const std::vector<Pair> &pairs)
{
    // For every length the pair that ends the chain with the least former place.
    std::vector<std::size_t> ends;
    std::vector<std::size_t> before(pairs.size(), nowhere);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const auto end =
            std::lower_bound(ends.begin(), ends.end(), i, [&](std::size_t a, std::size_t b) {
                return pairs[a].was < pairs[b].was;
            });
        before[i] = end == ends.begin() ? nowhere : *(end - 1);
        if (end == ends.end()) {
            ends.push_back(i);
        } else {
            *end = i;
        }
    }
    std::vector<Pair> chain;
    for (std::size_t at = ends.empty() ? nowhere : ends.back(); at != nowhere; at = before[at]) {
        chain.push_back(pairs[at]);
    }
    std::reverse(chain.begin(), chain.end());
    return chain;
}

void append(std::vector<KeptRun> &runs, const KeptRun &run)
{
    if (run.count == 0) {
        return;
    }
    if (!runs.empty() && runs.back().was + runs.back().count == run.was &&
        runs.back().is + runs.back().count == run.is) {
        runs.back().count += run.count;
    } else {
        runs.push_back(run);
    }
}

} // namespace

std::vector<KeptRun> keptRuns(const ListsCompared &lists)
{
    const Middle middle = middleOf(lists);
    const KeptRun head{0, 0, middle.begin};
    const KeptRun tail{middle.wasEnd, middle.isEnd, lists.wasCount - middle.wasEnd};
    std::vector<KeptRun> runs;
    append(runs, head);
    for (const Pair &pair : longestInOrder(pairsOf(lists, middle))) {
        append(runs, {pair.was, pair.is, 1});
    }
    append(runs, tail);
    if (runs.size() > maximumRuns) {
        runs.clear();
        append(runs, head);
        append(runs, tail);
    }
    return runs;
}

} // namespace trellisport
