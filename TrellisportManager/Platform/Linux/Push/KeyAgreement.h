#pragma once

#include "Platform/Linux/Push/OpenSsl.h"

#include <QByteArray>

#include <optional>

namespace trellisport::platform {

/// A key pair on P-256 from its bytes; null when they are none.
[[nodiscard]] openssl::Key keyPair(const QByteArray &privateKey, const QByteArray &publicKey);
/// A public key on P-256 from its 65 bytes; null when they are no point of the curve.
[[nodiscard]] openssl::Key publicKey(const QByteArray &point);

/// What two parties share by ECDH: 32 bytes, or absent.
[[nodiscard]] std::optional<QByteArray> sharedSecret(const openssl::Key &mine,
                                                     const openssl::Key &theirs);

/// HKDF with SHA-256: size bytes of key material, or absent.
[[nodiscard]] std::optional<QByteArray> hkdf(const QByteArray &salt, const QByteArray &secret,
                                             const QByteArray &info, int size);

} // namespace trellisport::platform
