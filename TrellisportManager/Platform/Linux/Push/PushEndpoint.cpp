#include "Platform/Linux/Push/PushEndpoint.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace trellisport::platform {

namespace {

constexpr qsizetype longestEndpoint = 1000;

QString base64url(const QByteArray &bytes)
{
    return QString::fromLatin1(
        bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

} // namespace

bool isPushEndpoint(const QString &endpoint)
{
    if (endpoint.toUtf8().size() > longestEndpoint) {
        return false;
    }
    const QUrl url(endpoint, QUrl::StrictMode);
    return url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty();
}

std::vector<std::uint8_t> deviceToken(const QString &endpoint, const PushKeys &keys)
{
    const QJsonObject token{{QStringLiteral("endpoint"), endpoint},
                            {QStringLiteral("p256dh"), base64url(keys.publicKey)},
                            {QStringLiteral("auth"), base64url(keys.authSecret)}};
    const QByteArray json = QJsonDocument(token).toJson(QJsonDocument::Compact);
    return {json.begin(), json.end()};
}

} // namespace trellisport::platform
