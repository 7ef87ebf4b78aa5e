#include "Platform/Linux/Session/UserEnvironment.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

namespace trellisport::platform {

QStringList userEnvironment(const QDBusConnection &bus)
{
    constexpr int patience = 2000;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.systemd1"), QStringLiteral("/org/freedesktop/systemd1"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    // Where nothing runs that knows, nothing should be started for it.
    call.setAutoStartService(false);
    call << QStringLiteral("org.freedesktop.systemd1.Manager") << QStringLiteral("Environment");
    const QDBusReply<QDBusVariant> reply = bus.call(call, QDBus::Block, patience);
    return reply.isValid() ? qdbus_cast<QStringList>(reply.value().variant()) : QStringList();
}

} // namespace trellisport::platform
