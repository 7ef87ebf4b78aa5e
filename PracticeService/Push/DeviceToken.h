#pragma once

#include "PracticeService/Push/WebPushEncryption.h"

#include <optional>
#include <string>

namespace trellisport::practice {

/// Where a console can be reached, and for which keys a message is encrypted.
struct PushTarget {
    std::string endpoint; ///< https URL
    PushRecipient recipient;
};

/// Reads a device token as consoles register it: hexadecimal digits, two a byte, that give the
/// UTF-8 of {"endpoint", "p256dh", "auth"}. Absent when it is none of ours; other systems' tokens
/// are just bytes.
[[nodiscard]] std::optional<PushTarget> readDeviceToken(const std::string &token);

} // namespace trellisport::practice
