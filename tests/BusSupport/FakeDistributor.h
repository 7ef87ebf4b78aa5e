#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <vector>

namespace trellisport::test {

/// A push service that a test plays, written from the standard: well-behaved unless told otherwise.
class FakeDistributor : public QObject {
    Q_OBJECT
public:
    struct Registration {
        int generation;
        QString service;
        QString token;
        QString description;
    };

    /// Offers these generations; nothing is on the bus before appear().
    FakeDistributor(const QDBusConnection &bus, const QString &suffix, bool offersOne,
                    bool offersTwo);
    FakeDistributor(const FakeDistributor &) = delete;
    FakeDistributor &operator=(const FakeDistributor &) = delete;
    ~FakeDistributor() override;

    void appear();
    void vanish();

    // How it behaves.
    QString result = QStringLiteral("REGISTRATION_SUCCEEDED");
    QString reason;
    /// Answers Register with this error of the bus in place of a result; none when empty.
    QString error;
    /// Named before the reply to Register; none when empty.
    QString endpoint = QStringLiteral("https://push.test/a");
    /// Keeps its replies to Register back, for ever when nobody calls them.
    bool holdsReplies = false;
    std::vector<std::function<void()>> heldReplies;

    [[nodiscard]] const std::vector<Registration> &registrations() const { return m_registrations; }
    [[nodiscard]] const std::vector<QString> &unregistrations() const { return m_unregistrations; }
    [[nodiscard]] QString token() const { return m_registrations.back().token; }

    // What it calls. The last registration's service is called.
    QDBusPendingCall sendEndpoint1(const QString &token, const QString &url);
    QDBusPendingCall sendEndpoint2(const QVariantMap &arguments);
    QDBusPendingCall sendMessage1(const QString &token, const QByteArray &message,
                                  const QString &id = {});
    QDBusPendingCall sendMessage2(const QVariantMap &arguments);
    QDBusPendingCall sendUnregistered1(const QString &token);
    QDBusPendingCall sendUnregistered2(const QVariantMap &arguments);

    // Called by the interfaces.
    void registered(const Registration &registration, const QDBusMessage &call);
    void unregistered(const QString &token) { m_unregistrations.push_back(token); }

private:
    [[nodiscard]] QDBusPendingCall call(int generation, const char *method,
                                        const QVariantList &arguments);

    QDBusConnection m_bus;
    QString m_name;
    std::vector<Registration> m_registrations;
    std::vector<QString> m_unregistrations;
};

class FakeDistributor1 : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.unifiedpush.Distributor1")
public:
    explicit FakeDistributor1(FakeDistributor *distributor)
        : QDBusAbstractAdaptor(distributor)
        , m_distributor(*distributor)
    {
    }

public Q_SLOTS:
    QString Register(const QString &service, const QString &token, const QString &description,
                     const QDBusMessage &call, QString &reason);
    void Unregister(const QString &token) { m_distributor.unregistered(token); }

private:
    FakeDistributor &m_distributor;
};

class FakeDistributor2 : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.unifiedpush.Distributor2")
public:
    explicit FakeDistributor2(FakeDistributor *distributor)
        : QDBusAbstractAdaptor(distributor)
        , m_distributor(*distributor)
    {
    }

public Q_SLOTS:
    QVariantMap Register(const QVariantMap &arguments, const QDBusMessage &call);
    QVariantMap Unregister(const QVariantMap &arguments);

private:
    FakeDistributor &m_distributor;
};

} // namespace trellisport::test
