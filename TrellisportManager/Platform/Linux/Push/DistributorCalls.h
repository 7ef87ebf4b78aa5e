#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <functional>

namespace trellisport::platform {

/// The two generations of the push services' interface.
enum class DistributorGeneration { One = 1, Two = 2 };

/// How a call of Register ended. None of them says that the device can be reached: that is the
/// endpoint which the push service names, maybe before its reply.
enum class RegisterOutcome {
    Accepted,
    Pending,  ///< no reply in time; the push service may still be busy with it
    Refused,  ///< with a reason
    Vanished, ///< there was nobody to ask
};

/// Speaks to one push service. One thread, which runs an event loop; the answers come later, or
/// never once this is gone.
class DistributorCalls : public QObject {
    Q_OBJECT
public:
    /// name is the push service's bus name; service is ours, by which it calls back.
    DistributorCalls(const QDBusConnection &bus, QString name, QString service,
                     QObject *parent = nullptr);

    [[nodiscard]] const QString &name() const { return m_name; }

    /// Registers the token in the latest generation that the push service speaks.
    void registerToken(const QString &token, const QString &description,
                       std::function<void(RegisterOutcome, QString reason)> answer);
    /// Gives the token back. Nobody waits for an answer.
    void unregisterToken(const QString &token);

private:
    void call(const QDBusMessage &message, std::function<void(const QDBusMessage &reply)> answer);
    void withGeneration(std::function<void(DistributorGeneration)> next);
    void callRegister(DistributorGeneration generation, const QString &token,
                      const QString &description,
                      std::function<void(RegisterOutcome, QString reason)> answer);
    [[nodiscard]] QDBusMessage method(DistributorGeneration generation, const QString &name) const;

    QDBusConnection m_bus;
    QString m_name;
    QString m_service;
};

} // namespace trellisport::platform
