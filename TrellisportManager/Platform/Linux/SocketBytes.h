#pragma once

#include <cstdint>

namespace trellisport::platform {

/// How many bytes have arrived on a TCP socket and how many of those sent have been confirmed by
/// the peer, together; 0 when the system does not tell.
[[nodiscard]] std::uint64_t socketBytes(int socket);

} // namespace trellisport::platform
