#pragma once

#include "Platform/Linux/Push/PushKeys.h"

#include <QByteArray>

#include <optional>

namespace trellisport::practice {

/// A receiver's public half.
struct PushRecipient {
    QByteArray publicKey;  ///< 65 bytes, the uncompressed point
    QByteArray authSecret; ///< 16 bytes
};

/// Encrypts a message for one receiver (RFC 8291, one record of aes128gcm, no padding), with a key
/// pair and a salt that are used once. Absent when the receiver's key is none.
[[nodiscard]] std::optional<QByteArray> encryptPushMessage(const PushRecipient &recipient,
                                                           const QByteArray &plaintext);

/// The same with a given key pair and salt of 16 bytes.
[[nodiscard]] std::optional<QByteArray> encryptPushMessage(const PushRecipient &recipient,
                                                           const QByteArray &plaintext,
                                                           const platform::PushKeys &sender,
                                                           const QByteArray &salt);

} // namespace trellisport::practice
