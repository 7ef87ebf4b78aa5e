#pragma once

#include "PracticeService/Material.h"
#include "PracticeService/Store.h"
#include "PracticeService/Workflow.h"

#include <cstdint>

namespace trellisport::practice {

/// Fills an empty store with a portfolio whose past ends at now: every story scale times, taken as
/// far as its file says. The same for the same seed but for the moment. All or nothing.
void populate(Store &store, Ledger &ledger, Workflow &workflow, const Material &material,
              std::uint64_t seed, int scale, Moment now);

} // namespace trellisport::practice
