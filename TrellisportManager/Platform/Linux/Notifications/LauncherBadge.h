#pragma once

#include <QDBusConnection>
#include <QString>

namespace trellisport::platform {

/// The number on the program's icon, in launchers that show one. Nobody answers; launchers that
/// know the signal pick it up.
class LauncherBadge {
public:
    /// desktopFile is the name of the program's desktop file, with its ending.
    LauncherBadge(const QDBusConnection &bus, const QString &desktopFile);

    /// 0 takes the badge away.
    void show(qint64 count);

private:
    QDBusConnection m_bus;
    QString m_uri;
};

} // namespace trellisport::platform
