#pragma once

#include <QByteArray>

#include <optional>

namespace trellisport::platform {

/// What a message to this device is encrypted for (RFC 8291): a key pair on P-256 and a secret that
/// only the sender shares.
struct PushKeys {
    static constexpr int privateKeySize = 32;
    static constexpr int publicKeySize = 65;
    static constexpr int authSecretSize = 16;

    QByteArray privateKey; ///< the number, big-endian
    QByteArray publicKey;  ///< the point, uncompressed
    QByteArray authSecret;

    friend bool operator==(const PushKeys &, const PushKeys &) = default;

    /// New ones, from the system's source of randomness. Absent when that fails.
    [[nodiscard]] static std::optional<PushKeys> generate();
    /// Whether the sizes are right and the public key belongs to the private one.
    [[nodiscard]] bool isValid() const;
};

} // namespace trellisport::platform
