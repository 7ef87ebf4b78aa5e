#pragma once

#include <curl/curl.h>

#include <cstdint>

namespace trellisport::platform {

/// How many bytes have been read and written so far on the connection that a transfer is using,
/// down to the single byte, which libcurl itself does not tell. 0 when there is none yet.
[[nodiscard]] std::uint64_t connectionBytes(CURL *transfer);

} // namespace trellisport::platform
