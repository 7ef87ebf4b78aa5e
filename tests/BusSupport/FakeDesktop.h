#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>
#include <QString>

#include <vector>

namespace trellisport::test {

/// A desktop's settings portal that a test plays.
class FakeSettingsPortal : public QObject {
public:
    explicit FakeSettingsPortal(const QDBusConnection &bus);

    void appear();
    /// What it knows as the text scale; invalid: nothing.
    QVariant textScale;
    /// Tells everybody that a setting has another value now.
    void change(const QString &group, const QString &key, const QVariant &value);
    /// How often it was asked.
    [[nodiscard]] int questions() const { return m_questions; }

private:
    friend class FakeSettingsInterface;

    QDBusConnection m_bus;
    int m_questions = 0;
    class FakeSettingsInterface *m_interface = nullptr;
};

class FakeSettingsInterface : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    explicit FakeSettingsInterface(FakeSettingsPortal *portal)
        : QDBusAbstractAdaptor(portal)
        , m_portal(*portal)
    {
    }

public Q_SLOTS:
    QDBusVariant Read(const QString &group, const QString &key, const QDBusMessage &call);

Q_SIGNALS:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    FakeSettingsPortal &m_portal;
};

/// A phone shell's keyboard that a test plays.
class FakeShellKeyboard : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "sm.puri.OSK0")
public:
    explicit FakeShellKeyboard(const QDBusConnection &bus);

    void appear();
    /// What it was told, oldest first.
    [[nodiscard]] const std::vector<bool> &calls() const { return m_calls; }

public Q_SLOTS:
    void SetVisible(bool isVisible) { m_calls.push_back(isVisible); }

private:
    QDBusConnection m_bus;
    std::vector<bool> m_calls;
};

} // namespace trellisport::test
