#include "Platform/Linux/Push/PushRegistration.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace trellisport::platform {

namespace {

QString text(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

QByteArray bytes(const QJsonValue &value)
{
    return QByteArray::fromBase64(value.toString().toLatin1());
}

} // namespace

PushRegistrationStore::PushRegistrationStore(const QString &path)
    : m_file(path)
{
}

std::optional<PushRegistration> PushRegistrationStore::load() const
{
    const auto content = m_file.read();
    if (!content) {
        return std::nullopt;
    }
    const QJsonObject object = QJsonDocument::fromJson(*content).object();
    PushRegistration registration{object[QLatin1String("distributor")].toString(),
                                  object[QLatin1String("token")].toString(),
                                  {bytes(object[QLatin1String("privateKey")]),
                                   bytes(object[QLatin1String("publicKey")]),
                                   bytes(object[QLatin1String("authSecret")])}};
    if (!registration.keys.isValid()) {
        return std::nullopt;
    }
    return registration;
}

bool PushRegistrationStore::save(const PushRegistration &registration) const
{
    const QJsonObject object{
        {QStringLiteral("distributor"), registration.distributor},
        {QStringLiteral("token"), registration.token},
        {QStringLiteral("privateKey"), text(registration.keys.privateKey)},
        {QStringLiteral("publicKey"), text(registration.keys.publicKey)},
        {QStringLiteral("authSecret"), text(registration.keys.authSecret)},
    };
    return m_file.write(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace trellisport::platform
