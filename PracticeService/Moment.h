#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace trellisport::practice {

/// A point of the agent's time, UTC, to the second.
using Moment = std::chrono::sys_seconds;
using std::chrono::seconds;

/// "2026-03-09T08:15:00Z".
[[nodiscard]] std::string isoText(Moment moment);
/// "2026-03-09".
[[nodiscard]] std::string dayText(Moment moment);
/// The moment that an isoText names; nothing for any other text.
[[nodiscard]] std::optional<Moment> momentOf(std::string_view iso);
/// Midnight before the moment.
[[nodiscard]] Moment dayOf(Moment moment);

} // namespace trellisport::practice
