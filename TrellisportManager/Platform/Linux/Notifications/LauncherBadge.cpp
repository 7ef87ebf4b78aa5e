#include "Platform/Linux/Notifications/LauncherBadge.h"

#include <QDBusMessage>
#include <QVariantMap>

namespace trellisport::platform {

LauncherBadge::LauncherBadge(const QDBusConnection &bus, const QString &desktopFile)
    : m_bus(bus)
    , m_uri(QStringLiteral("application://") + desktopFile)
{
}

void LauncherBadge::show(qint64 count)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        QStringLiteral("/com/canonical/unity/launcherentry"),
        QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
    signal << m_uri
           << QVariantMap{{QStringLiteral("count"), count},
                          {QStringLiteral("count-visible"), count > 0}};
    m_bus.send(signal);
}

} // namespace trellisport::platform
