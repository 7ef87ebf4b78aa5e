#include "BusSupport/FakeDesktop.h"

namespace trellisport::test {

FakeSettingsPortal::FakeSettingsPortal(const QDBusConnection &bus)
    : m_bus(bus)
{
    // The adaptor looks for it.
    qRegisterMetaType<QDBusVariant>("QDBusVariant");
    m_interface = new FakeSettingsInterface(this);
}

void FakeSettingsPortal::appear()
{
    m_bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this);
    m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

void FakeSettingsPortal::change(const QString &group, const QString &key, const QVariant &value)
{
    Q_EMIT m_interface->SettingChanged(group, key, QDBusVariant(value));
}

QDBusVariant FakeSettingsInterface::Read(const QString &group, const QString &key,
                                         const QDBusMessage &call)
{
    ++m_portal.m_questions;
    if (!m_portal.textScale.isValid() || group != QLatin1String("org.gnome.desktop.interface") ||
        key != QLatin1String("text-scaling-factor")) {
        call.setDelayedReply(true);
        m_portal.m_bus.send(call.createErrorReply(
            QStringLiteral("org.freedesktop.portal.Error.NotFound"), QStringLiteral("unknown")));
        return {};
    }
    // Once more than it says, as the real one does.
    return QDBusVariant(QVariant::fromValue(QDBusVariant(m_portal.textScale)));
}

FakeShellKeyboard::FakeShellKeyboard(const QDBusConnection &bus)
    : m_bus(bus)
{
}

void FakeShellKeyboard::appear()
{
    m_bus.registerObject(QStringLiteral("/sm/puri/OSK0"), this, QDBusConnection::ExportAllSlots);
    m_bus.registerService(QStringLiteral("sm.puri.OSK0"));
}

} // namespace trellisport::test
