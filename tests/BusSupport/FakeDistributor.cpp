#include "BusSupport/FakeDistributor.h"

#include "Platform/Linux/Push/Distributors.h"

namespace trellisport::test {

FakeDistributor::FakeDistributor(const QDBusConnection &bus, const QString &suffix, bool offersOne,
                                 bool offersTwo)
    : m_bus(bus)
    , m_name(QLatin1String(platform::distributorPrefix) + suffix)
{
    if (offersOne) {
        new FakeDistributor1(this);
    }
    if (offersTwo) {
        new FakeDistributor2(this);
    }
}

FakeDistributor::~FakeDistributor()
{
    vanish();
}

void FakeDistributor::appear()
{
    m_bus.registerObject(QStringLiteral("/org/unifiedpush/Distributor"), this);
    m_bus.registerService(m_name);
}

void FakeDistributor::vanish()
{
    m_bus.unregisterService(m_name);
    m_bus.unregisterObject(QStringLiteral("/org/unifiedpush/Distributor"));
}

void FakeDistributor::registered(const Registration &registration, const QDBusMessage &message)
{
    m_registrations.push_back(registration);
    if (!endpoint.isEmpty()) {
        if (registration.generation == 1) {
            sendEndpoint1(registration.token, endpoint);
        } else {
            sendEndpoint2({{QStringLiteral("token"), registration.token},
                           {QStringLiteral("endpoint"), endpoint}});
        }
    }
    message.setDelayedReply(true);
    QVariantList values{result, reason};
    if (registration.generation == 2) {
        QVariantMap map{{QStringLiteral("success"), result}};
        if (!reason.isEmpty()) {
            map[QStringLiteral("reason")] = reason;
        }
        values = {map};
    }
    if (!error.isEmpty()) {
        m_bus.send(message.createErrorReply(error, QStringLiteral("as the test wants it")));
        return;
    }
    const auto reply = [this, message, values] { m_bus.send(message.createReply(values)); };
    if (holdsReplies) {
        heldReplies.emplace_back(reply);
    } else {
        reply();
    }
}

QDBusPendingCall FakeDistributor::call(int generation, const char *method,
                                       const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        m_registrations.back().service, QStringLiteral("/org/unifiedpush/Connector"),
        QStringLiteral("org.unifiedpush.Connector%1").arg(generation), QLatin1String(method));
    message.setArguments(arguments);
    return m_bus.asyncCall(message);
}

QDBusPendingCall FakeDistributor::sendEndpoint1(const QString &token, const QString &url)
{
    return call(1, "NewEndpoint", {token, url});
}

QDBusPendingCall FakeDistributor::sendEndpoint2(const QVariantMap &arguments)
{
    return call(2, "NewEndpoint", {arguments});
}

QDBusPendingCall FakeDistributor::sendMessage1(const QString &token, const QByteArray &message,
                                               const QString &id)
{
    return call(1, "Message", {token, message, id});
}

QDBusPendingCall FakeDistributor::sendMessage2(const QVariantMap &arguments)
{
    return call(2, "Message", {arguments});
}

QDBusPendingCall FakeDistributor::sendUnregistered1(const QString &token)
{
    return call(1, "Unregistered", {token});
}

QDBusPendingCall FakeDistributor::sendUnregistered2(const QVariantMap &arguments)
{
    return call(2, "Unregistered", {arguments});
}

QString FakeDistributor1::Register(const QString &service, const QString &token,
                                   const QString &description, const QDBusMessage &call,
                                   QString & /*reason*/)
{
    m_distributor.registered({1, service, token, description}, call);
    return {};
}

QVariantMap FakeDistributor2::Register(const QVariantMap &arguments, const QDBusMessage &call)
{
    m_distributor.registered({2, arguments[QStringLiteral("service")].toString(),
                              arguments[QStringLiteral("token")].toString(),
                              arguments[QStringLiteral("description")].toString()},
                             call);
    return {};
}

QVariantMap FakeDistributor2::Unregister(const QVariantMap &arguments)
{
    m_distributor.unregistered(arguments[QStringLiteral("token")].toString());
    return {};
}

} // namespace trellisport::test
