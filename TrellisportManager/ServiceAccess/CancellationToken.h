#pragma once

#include "Platform/CancellationToken.h"

namespace trellisport {

// How a call of the service is given up is part of the client's own words.
using platform::CancellationSource;
using platform::CancellationToken;

} // namespace trellisport
