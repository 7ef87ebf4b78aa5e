#pragma once

#include "Platform/Linux/Session/ActivationToken.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <functional>

namespace trellisport::platform {

/// org.freedesktop.Application: how launchers and second starts bring the program to the front.
/// Anybody on the bus can call it, and all it does is that.
class ApplicationInterface : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    /// activate is called on the object's thread.
    ApplicationInterface(std::function<void(ActivationToken)> activate, QObject *object);

public Q_SLOTS:
    void Activate(const QVariantMap &platformData);
    /// The program opens no documents; somebody wants it all the same.
    void Open(const QStringList &uris, const QVariantMap &platformData);
    /// There are no actions; somebody who thinks so wants the program, too.
    void ActivateAction(const QString &name, const QVariantList &parameter,
                        const QVariantMap &platformData);

private:
    std::function<void(ActivationToken)> m_activate;
};

/// Takes the program's name on the bus, by which only one instance runs. False when another has it.
[[nodiscard]] bool claimApplicationName(const QDBusConnection &bus, const QString &name);
/// Brings the instance that has the name to the front. False when it does not answer.
[[nodiscard]] bool activateRunningApplication(const QDBusConnection &bus, const QString &name,
                                              const QString &path, const ActivationToken &token);

} // namespace trellisport::platform
