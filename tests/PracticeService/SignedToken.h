#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>
#include <string>

namespace trellisport::practice {

/// What an Authorization header of the scheme "vapid" says, read as a push service reads it.
struct SignedToken {
    QJsonObject header;
    QJsonObject claims;
    std::string key;  ///< as it came, in base64url
    QByteArray point; ///< the key's bytes
    bool isGenuine;   ///< whether the key's owner signed it, by ES256
};

/// Absent when the header's value is none.
[[nodiscard]] std::optional<SignedToken> readAuthorization(const std::string &value);

} // namespace trellisport::practice
