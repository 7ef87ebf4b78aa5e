#pragma once

#include "ServiceAccess/Records.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>
#include <vector>

/// The decoder's work done with other libraries, for comparison: the same bytes to the same
/// records.
namespace trellisport::bench {

/// Checks and parses, and makes nothing of it.
void parseBarely(std::string &body);
[[nodiscard]] std::vector<DevLog> logsThroughQt(const std::string &body);
[[nodiscard]] std::vector<DevLog> logsThroughNlohmann(const std::string &body);

/// The document from which the peer writes the same bytes as encode().
[[nodiscard]] nlohmann::ordered_json documentOf(const std::vector<DevLog> &logs);

} // namespace trellisport::bench
