#pragma once

#include "Platform/HttpSession.h"

#include <curl/curl.h>

namespace trellisport::platform {

/// What kind of failure it is, with its sentence for a person.
[[nodiscard]] TransportError transportError(TransportFailure failure);

/// What libcurl's code means to a person.
[[nodiscard]] TransportError transportError(CURLcode code);

/// Whether libcurl gave up because what arrived can't be read as HTTP.
[[nodiscard]] bool isUnreadableReply(CURLcode code);

} // namespace trellisport::platform
