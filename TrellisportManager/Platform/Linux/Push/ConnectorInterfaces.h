#pragma once

#include <QByteArray>
#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariantMap>

#include <functional>

namespace trellisport::platform {

/// What became of a message.
enum class MessageFate {
    Done,    ///< it need not come again
    NotNow,  ///< it could not be shown
    TooMany, ///< others have to be dealt with first
};

/// What push services call, whatever generation they speak. Anyone on the bus can call it: nothing
/// is known of the caller but that it knows the token, or not.
class PushReceiver {
public:
    PushReceiver() = default;
    PushReceiver(const PushReceiver &) = delete;
    PushReceiver &operator=(const PushReceiver &) = delete;
    virtual ~PushReceiver() = default;

    /// done is called once, when the message's fate is known.
    virtual void message(const QString &token, const QByteArray &message, const QString &id,
                         std::function<void(MessageFate)> done) = 0;
    virtual void newEndpoint(const QString &token, const QString &endpoint) = 0;
    virtual void unregistered(const QString &token) = 0;
};

/// Puts the first generation of the interface on an object. The receiver must outlive the object.
class ConnectorInterface1 : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.unifiedpush.Connector1")
public:
    ConnectorInterface1(PushReceiver &receiver, const QDBusConnection &bus, QObject *object);

public Q_SLOTS:
    void Message(const QString &token, const QByteArray &message, const QString &id,
                 const QDBusMessage &call);
    void NewEndpoint(const QString &token, const QString &endpoint);
    void Unregistered(const QString &token);

private:
    PushReceiver &m_receiver;
    QDBusConnection m_bus;
};

/// The second generation.
class ConnectorInterface2 : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.unifiedpush.Connector2")
public:
    ConnectorInterface2(PushReceiver &receiver, const QDBusConnection &bus, QObject *object);

public Q_SLOTS:
    QVariantMap Message(const QVariantMap &arguments, const QDBusMessage &call);
    QVariantMap NewEndpoint(const QVariantMap &arguments);
    QVariantMap Unregistered(const QVariantMap &arguments);

private:
    PushReceiver &m_receiver;
    QDBusConnection m_bus;
};

} // namespace trellisport::platform
