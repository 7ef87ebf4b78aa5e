#include "Platform/Linux/Push/ConnectorInterfaces.h"

#include <QDBusError>

namespace trellisport::platform {

namespace {

void answer(QDBusConnection bus, const QDBusMessage &call, MessageFate fate,
            const QVariantList &values)
{
    if (!call.isReplyRequired()) {
        return;
    }
    switch (fate) {
    case MessageFate::Done:
        bus.send(call.createReply(values));
        break;
    case MessageFate::NotNow:
        bus.send(call.createErrorReply(QDBusError::Failed,
                                       QStringLiteral("The message can't be shown now.")));
        break;
    case MessageFate::TooMany:
        bus.send(call.createErrorReply(QDBusError::LimitsExceeded,
                                       QStringLiteral("Too many messages at once.")));
        break;
    }
}

/// The callers choose the types in a map: what is not of the type that the key has is not there.
template <typename T>
T argument(const QVariantMap &arguments, const char *key)
{
    const QVariant value = arguments.value(QLatin1String(key));
    return value.metaType() == QMetaType::fromType<T>() ? value.value<T>() : T();
}

} // namespace

ConnectorInterface1::ConnectorInterface1(PushReceiver &receiver, const QDBusConnection &bus,
                                         QObject *object)
    : QDBusAbstractAdaptor(object)
    , m_receiver(receiver)
    , m_bus(bus)
{
}

void ConnectorInterface1::Message(const QString &token, const QByteArray &message,
                                  const QString &id, const QDBusMessage &call)
{
    call.setDelayedReply(true);
    m_receiver.message(token, message, id,
                       [bus = m_bus, call](MessageFate fate) { answer(bus, call, fate, {}); });
}

void ConnectorInterface1::NewEndpoint(const QString &token, const QString &endpoint)
{
    m_receiver.newEndpoint(token, endpoint);
}

void ConnectorInterface1::Unregistered(const QString &token)
{
    // An empty token confirms that we gave ours back.
    if (!token.isEmpty()) {
        m_receiver.unregistered(token);
    }
}

ConnectorInterface2::ConnectorInterface2(PushReceiver &receiver, const QDBusConnection &bus,
                                         QObject *object)
    : QDBusAbstractAdaptor(object)
    , m_receiver(receiver)
    , m_bus(bus)
{
}

QVariantMap ConnectorInterface2::Message(const QVariantMap &arguments, const QDBusMessage &call)
{
    call.setDelayedReply(true);
    const auto id = argument<QString>(arguments, "id");
    QVariantMap acknowledgement;
    if (!id.isEmpty()) {
        acknowledgement[QStringLiteral("id")] = id;
    }
    m_receiver.message(argument<QString>(arguments, "token"),
                       argument<QByteArray>(arguments, "message"), id,
                       [bus = m_bus, call, acknowledgement](MessageFate fate) {
                           answer(bus, call, fate, {acknowledgement});
                       });
    return {};
}

QVariantMap ConnectorInterface2::NewEndpoint(const QVariantMap &arguments)
{
    m_receiver.newEndpoint(argument<QString>(arguments, "token"),
                           argument<QString>(arguments, "endpoint"));
    return {};
}

QVariantMap ConnectorInterface2::Unregistered(const QVariantMap &arguments)
{
    m_receiver.unregistered(argument<QString>(arguments, "token"));
    return {};
}

} // namespace trellisport::platform
