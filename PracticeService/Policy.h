#pragma once

#include "ServiceAccess/Records.h"

namespace trellisport::practice {

/// What the owner's settings allow. A setting that is missing or no number counts as the value that
/// the console shows as its hint.
struct Policy {
    bool preview = true; ///< one bid at a time
    std::int64_t maxDailyBids = 10;
    double dailyRevenueTarget = 10000; ///< no more bids on a day that has earned it
    std::int64_t maxConcurrentProjects = 5;

    [[nodiscard]] static Policy of(const TextMap &config);
};

} // namespace trellisport::practice
