#pragma once

#include "Platform/Toolkit/TransportSentences.h"

#include <curl/curl.h>

namespace trellisport::platform {

/// What libcurl's code means to a person.
[[nodiscard]] TransportError transportError(CURLcode code);

/// Whether libcurl gave up because what arrived can't be read as HTTP.
[[nodiscard]] bool isUnreadableReply(CURLcode code);

} // namespace trellisport::platform
