#pragma once

#include "Platform/Linux/Push/PushKeys.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace trellisport::platform {

/// Whether a push service may name this address as ours: an absolute https URL of at most 1000
/// bytes.
[[nodiscard]] bool isPushEndpoint(const QString &endpoint);

/// The device token: the UTF-8 of a JSON object that tells the service where to push
/// ("endpoint") and for which keys to encrypt ("p256dh" and "auth", base64url without padding).
[[nodiscard]] std::vector<std::uint8_t> deviceToken(const QString &endpoint, const PushKeys &keys);

} // namespace trellisport::platform
