#include "Platform/Linux/Session/ApplicationInterface.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

#include <utility>

namespace trellisport::platform {

ApplicationInterface::ApplicationInterface(std::function<void(ActivationToken)> activate,
                                           QObject *object)
    : QDBusAbstractAdaptor(object)
    , m_activate(std::move(activate))
{
}

void ApplicationInterface::Activate(const QVariantMap &platformData)
{
    m_activate(ActivationToken::fromPlatformData(platformData));
}

void ApplicationInterface::Open(const QStringList & /*uris*/, const QVariantMap &platformData)
{
    Activate(platformData);
}

void ApplicationInterface::ActivateAction(const QString & /*name*/,
                                          const QVariantList & /*parameter*/,
                                          const QVariantMap &platformData)
{
    Activate(platformData);
}

bool claimApplicationName(const QDBusConnection &bus, const QString &name)
{
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        bus.interface()->registerService(name, QDBusConnectionInterface::DontQueueService,
                                         QDBusConnectionInterface::DontAllowReplacement);
    return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
}

bool activateRunningApplication(const QDBusConnection &bus, const QString &name,
                                const QString &path, const ActivationToken &token)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        name, path, QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call << token.toPlatformData();
    return bus.call(call).type() == QDBusMessage::ReplyMessage;
}

} // namespace trellisport::platform
