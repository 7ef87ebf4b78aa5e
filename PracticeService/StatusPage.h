#pragma once

#include "PracticeService/Store.h"

#include <string>
#include <vector>

namespace trellisport::practice {

struct StatusFacts {
    DashboardData dashboard;
    std::vector<Happening> happenings;
    std::vector<OpenQuestion> questions;
    std::size_t devices = 0;
    std::string now;
};

/// A whole HTML page. Every text from the facts is escaped.
[[nodiscard]] std::string statusPageOf(const StatusFacts &facts);

} // namespace trellisport::practice
