#pragma once

#include "Platform/Linux/Push/PushKeys.h"

#include <QByteArray>

#include <optional>

namespace trellisport::platform {

/// The plain bytes of a push message that was encrypted for these keys (RFC 8291: one record of the
/// content coding aes128gcm, RFC 8188). The record size that the message names is not held against
/// it, since senders differ there. Absent when it is no such message or was changed on its way.
[[nodiscard]] std::optional<QByteArray> decryptPushMessage(const PushKeys &keys,
                                                           const QByteArray &message);

} // namespace trellisport::platform
