#pragma once

#include "PracticeService/Push/PushRegistry.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>

#include <functional>

namespace trellisport::practice {

/// The side of the push service that lies on the session bus: programs register, and get the
/// messages that are posted to their endpoints. One thread, which runs an event loop.
class PushService : public QObject {
    Q_OBJECT
public:
    /// A token, and any text, may be that long.
    static constexpr qsizetype longestText = 100;

    /// endpointRoot: the https URL before a client's path, with a slash at its end.
    PushService(const QDBusConnection &bus, const QString &registryFile, QString endpointRoot);
    PushService(const PushService &) = delete;
    PushService &operator=(const PushService &) = delete;
    /// Gives the name back.
    ~PushService() override;

    /// Takes the name by which programs find it. False when another has it.
    [[nodiscard]] bool appear(const QString &name);
    [[nodiscard]] bool knows(const QString &path) const
    {
        return m_registry.find(path).has_value();
    }
    /// Hands a message on, to a program that is started for it when it does not run.
    void deliver(const QString &path, const QByteArray &message);

    // For the interfaces.
    [[nodiscard]] bool registerClient(const PushClient &client);
    void unregisterClient(const QString &token);

private:
    void call(const PushClient &client, const QString &method, const QVariantList &one,
              const QVariantMap &two);

    QDBusConnection m_bus;
    PushRegistry m_registry;
    QString m_endpointRoot;
    QString m_name;
};

class DistributorInterface1 : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.unifiedpush.Distributor1")
public:
    explicit DistributorInterface1(PushService *service)
        : QDBusAbstractAdaptor(service)
        , m_service(*service)
    {
    }

public Q_SLOTS:
    QString Register(const QString &service, const QString &token, const QString &description,
                     QString &reason);
    void Unregister(const QString &token);

private:
    PushService &m_service;
};

class DistributorInterface2 : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.unifiedpush.Distributor2")
public:
    explicit DistributorInterface2(PushService *service)
        : QDBusAbstractAdaptor(service)
        , m_service(*service)
    {
    }

public Q_SLOTS:
    QVariantMap Register(const QVariantMap &arguments);
    QVariantMap Unregister(const QVariantMap &arguments);

private:
    PushService &m_service;
};

} // namespace trellisport::practice
