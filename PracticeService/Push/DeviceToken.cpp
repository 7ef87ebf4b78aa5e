#include "PracticeService/Push/DeviceToken.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace trellisport::practice {

namespace {

constexpr int publicKeySize = 65;
constexpr int authSecretSize = 16;

QByteArray base64url(const QJsonValue &value)
{
    const auto decoded = QByteArray::fromBase64Encoding(
        value.toString().toLatin1(),
        QByteArray::Base64UrlEncoding | QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? *decoded : QByteArray();
}

} // namespace

std::optional<PushTarget> readDeviceToken(const std::string &token)
{
    const QByteArray bytes = QByteArray::fromHex(QByteArray::fromStdString(token));
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    const QString endpoint = object[QLatin1String("endpoint")].toString();
    const QUrl url(endpoint, QUrl::StrictMode);
    PushTarget target{
        endpoint.toStdString(),
        {base64url(object[QLatin1String("p256dh")]), base64url(object[QLatin1String("auth")])}};
    if (!url.isValid() || url.scheme() != QLatin1String("https") || url.host().isEmpty() ||
        target.recipient.publicKey.size() != publicKeySize ||
        target.recipient.authSecret.size() != authSecretSize) {
        return std::nullopt;
    }
    return target;
}

} // namespace trellisport::practice
