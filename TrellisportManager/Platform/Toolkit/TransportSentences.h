#pragma once

#include "Platform/HttpSession.h"

namespace trellisport::platform {

/// What kind of failure it is, with its sentence for a person.
[[nodiscard]] TransportError transportError(TransportFailure failure);

} // namespace trellisport::platform
