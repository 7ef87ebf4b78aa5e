#pragma once

#include "Platform/Environment.h"
#include "ServiceAccess/ServiceAddress.h"

namespace trellisport {

/// The service that the program is for: the variable TRELLISPORT_BASE_URL when it is set and not
/// empty, else the address that was built in. Any thread.
/// Throws std::invalid_argument whose what() is one sentence that says what is wrong.
[[nodiscard]] ServiceAddress configuredServiceAddress(const platform::Environment &environment);

} // namespace trellisport
