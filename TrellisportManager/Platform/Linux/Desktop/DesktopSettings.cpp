#include "Platform/Linux/Desktop/DesktopSettings.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace trellisport::platform {

namespace {

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");
constexpr QLatin1String settings("org.freedesktop.portal.Settings");
constexpr QLatin1String textGroup("org.gnome.desktop.interface");
constexpr QLatin1String textKey("text-scaling-factor");

/// The portal wraps what it reads once more than it says.
QVariant unwrapped(QVariant value)
{
    while (value.userType() == qMetaTypeId<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace

DesktopSettings::DesktopSettings(QDBusConnection bus, std::function<void(double)> textScaleChanged)
    : m_textScaleChanged(std::move(textScaleChanged))
{
    bus.connect(service, path, settings, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, settings, QStringLiteral("Read"));
    call.setArguments({QString(textGroup), QString(textKey)});
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError()) {
            settingChanged(textGroup, textKey, reply.value());
        }
        watcher->deleteLater();
    });
}

void DesktopSettings::settingChanged(const QString &group, const QString &key,
                                     const QDBusVariant &value)
{
    if (group == textGroup && key == textKey) {
        const QVariant plain = unwrapped(value.variant());
        if (plain.userType() == QMetaType::Double) {
            m_textScaleChanged(plain.toDouble());
        }
    }
}

} // namespace trellisport::platform
