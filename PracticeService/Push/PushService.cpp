#include "PracticeService/Push/PushService.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

#include <utility>

namespace trellisport::practice {

namespace {

const QString objectPath = QStringLiteral("/org/unifiedpush/Distributor");
const QString succeeded = QStringLiteral("REGISTRATION_SUCCEEDED");
const QString failed = QStringLiteral("REGISTRATION_FAILED");
const QString unauthorized = QStringLiteral("UNAUTHORIZED");

} // namespace

PushService::PushService(const QDBusConnection &bus, const QString &registryFile,
                         QString endpointRoot)
    : m_bus(bus)
    , m_registry(registryFile)
    , m_endpointRoot(std::move(endpointRoot))
{
    new DistributorInterface1(this);
    new DistributorInterface2(this);
    m_bus.registerObject(objectPath, this);
}

PushService::~PushService()
{
    m_bus.unregisterService(m_name);
    m_bus.unregisterObject(objectPath);
}

bool PushService::appear(const QString &name)
{
    m_name = name;
    return m_bus.registerService(name);
}

bool PushService::registerClient(const PushClient &client)
{
    if (client.token.isEmpty() || client.token.toUtf8().size() > longestText ||
        client.service.isEmpty() || client.service.startsWith(QLatin1Char(':'))) {
        return false;
    }
    const auto path = m_registry.add(client);
    if (path) {
        const QString endpoint = m_endpointRoot + *path;
        call(client, QStringLiteral("NewEndpoint"), {client.token, endpoint},
             {{QStringLiteral("token"), client.token}, {QStringLiteral("endpoint"), endpoint}});
    }
    return path.has_value();
}

void PushService::unregisterClient(const QString &token)
{
    if (const auto client = m_registry.remove(token)) {
        // The first generation confirms with an empty token.
        call(*client, QStringLiteral("Unregistered"), {QString()},
             {{QStringLiteral("token"), token}});
    }
}

void PushService::deliver(const QString &path, const QByteArray &message)
{
    if (const auto client = m_registry.find(path)) {
        call(*client, QStringLiteral("Message"), {client->token, message, QString()},
             {{QStringLiteral("token"), client->token}, {QStringLiteral("message"), message}});
    }
}

void PushService::call(const PushClient &client, const QString &method, const QVariantList &one,
                       const QVariantMap &two)
{
    // The bus starts the client when it does not run.
    QDBusMessage message = QDBusMessage::createMethodCall(
        client.service, QStringLiteral("/org/unifiedpush/Connector"),
        QStringLiteral("org.unifiedpush.Connector%1").arg(client.generation), method);
    message.setArguments(client.generation == 1 ? one : QVariantList{two});
    m_bus.asyncCall(message);
}

QString DistributorInterface1::Register(const QString &service, const QString &token,
                                        const QString & /*description*/, QString &reason)
{
    if (m_service.registerClient({service, token, 1})) {
        return succeeded;
    }
    reason = unauthorized;
    return failed;
}

void DistributorInterface1::Unregister(const QString &token)
{
    m_service.unregisterClient(token);
}

QVariantMap DistributorInterface2::Register(const QVariantMap &arguments)
{
    if (m_service.registerClient({arguments[QStringLiteral("service")].toString(),
                                  arguments[QStringLiteral("token")].toString(), 2})) {
        return {{QStringLiteral("success"), succeeded}};
    }
    return {{QStringLiteral("success"), failed}, {QStringLiteral("reason"), unauthorized}};
}

QVariantMap DistributorInterface2::Unregister(const QVariantMap &arguments)
{
    m_service.unregisterClient(arguments[QStringLiteral("token")].toString());
    return {};
}

} // namespace trellisport::practice
