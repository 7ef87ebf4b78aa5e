#include "Platform/Linux/Push/PushRegistration.h"

#include <QJsonArray>
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
    PushRegistration registration{{},
                                  {bytes(object[QLatin1String("privateKey")]),
                                   bytes(object[QLatin1String("publicKey")]),
                                   bytes(object[QLatin1String("authSecret")])}};
    if (!registration.keys.isValid()) {
        return std::nullopt;
    }
    for (const auto &entry : object[QLatin1String("places")].toArray()) {
        registration.places.append({entry[QLatin1String("distributor")].toString(),
                                    entry[QLatin1String("token")].toString()});
    }
    return registration;
}

bool PushRegistrationStore::save(const PushRegistration &registration) const
{
    QJsonArray places;
    for (const PushRegistration::Place &place : registration.places) {
        places.append(QJsonObject{{QStringLiteral("distributor"), place.distributor},
                                  {QStringLiteral("token"), place.token}});
    }
    const QJsonObject object{
        {QStringLiteral("places"), places},
        {QStringLiteral("privateKey"), text(registration.keys.privateKey)},
        {QStringLiteral("publicKey"), text(registration.keys.publicKey)},
        {QStringLiteral("authSecret"), text(registration.keys.authSecret)},
    };
    return m_file.write(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace trellisport::platform
