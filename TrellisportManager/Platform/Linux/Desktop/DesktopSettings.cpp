#include "Platform/Linux/Desktop/DesktopSettings.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

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
                SLOT(settingChanged(QDBusMessage)));
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, settings, QStringLiteral("Read"));
    call.setArguments({QString(textGroup), QString(textKey)});
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError()) {
            tell(QVariant::fromValue(reply.value()));
        }
        watcher->deleteLater();
    });
}

void DesktopSettings::settingChanged(const QDBusMessage &change)
{
    const QVariantList arguments = change.arguments();
    if (arguments.size() == 3 && arguments[0].toString() == textGroup &&
        arguments[1].toString() == textKey) {
        tell(arguments[2]);
    }
}

void DesktopSettings::tell(const QVariant &value)
{
    const QVariant plain = unwrapped(value);
    if (plain.userType() == QMetaType::Double) {
        m_textScaleChanged(plain.toDouble());
    }
}

} // namespace trellisport::platform
