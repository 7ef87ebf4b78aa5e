#pragma once

#include <chrono>
#include <functional>

namespace trellisport::test {

/// Longer than anything that goes right ever takes, so that only what goes wrong waits for it.
inline constexpr std::chrono::seconds patience{20};

/// Runs the calling thread's event loop until the condition holds; false when it still does not
/// after the given time.
[[nodiscard]] bool waitUntil(const std::function<bool()> &condition,
                             std::chrono::milliseconds limit = patience);

/// Runs the calling thread's event loop until nothing is left that it could do at once.
void runPendingEvents();

} // namespace trellisport::test
