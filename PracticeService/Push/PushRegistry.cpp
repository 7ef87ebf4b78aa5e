#include "PracticeService/Push/PushRegistry.h"

#include "Platform/Linux/Push/PrivateFile.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

namespace trellisport::practice {

PushRegistry::PushRegistry(const QString &path)
    : m_file(path)
{
    const auto content = platform::PrivateFile(m_file).read();
    const QJsonObject clients = QJsonDocument::fromJson(content.value_or(QByteArray())).object();
    for (auto entry = clients.begin(); entry != clients.end(); ++entry) {
        const QJsonObject client = entry.value().toObject();
        m_clients[entry.key()] = {client[QLatin1String("service")].toString(),
                                  client[QLatin1String("token")].toString(),
                                  client[QLatin1String("generation")].toInt()};
    }
}

std::optional<QString> PushRegistry::add(const PushClient &client)
{
    for (auto known = m_clients.cbegin(); known != m_clients.cend(); ++known) {
        if (known->token == client.token) {
            return known->service == client.service ? std::optional(known.key()) : std::nullopt;
        }
    }
    const QString path = QUuid::createUuid().toString(QUuid::Id128);
    m_clients[path] = client;
    save();
    return path;
}

std::optional<PushClient> PushRegistry::remove(const QString &token)
{
    for (auto known = m_clients.begin(); known != m_clients.end(); ++known) {
        if (known->token == token) {
            const PushClient client = *known;
            m_clients.erase(known);
            save();
            return client;
        }
    }
    return std::nullopt;
}

std::optional<PushClient> PushRegistry::find(const QString &path) const
{
    const auto found = m_clients.find(path);
    return found == m_clients.end() ? std::nullopt : std::optional(*found);
}

void PushRegistry::save() const
{
    QJsonObject clients;
    for (auto known = m_clients.cbegin(); known != m_clients.cend(); ++known) {
        clients[known.key()] = QJsonObject{{QStringLiteral("service"), known->service},
                                           {QStringLiteral("token"), known->token},
                                           {QStringLiteral("generation"), known->generation}};
    }
    // When it can't be kept, clients get a new path the next time that they register.
    static_cast<void>(platform::PrivateFile(m_file).write(QJsonDocument(clients).toJson()));
}

} // namespace trellisport::practice
