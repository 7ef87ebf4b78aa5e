#include "Platform/Linux/Push/DistributorCalls.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QXmlStreamReader>

#include <utility>

namespace trellisport::platform {

namespace {

QString interfaceName(DistributorGeneration generation)
{
    return QStringLiteral("org.unifiedpush.Distributor%1").arg(static_cast<int>(generation));
}

bool describes(const QString &introspection, const QString &interface)
{
    QXmlStreamReader xml(introspection);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement &&
            xml.name() == QLatin1String("interface") &&
            xml.attributes().value(QLatin1String("name")) == interface) {
            return true;
        }
    }
    return false;
}

bool isUnknown(const QDBusMessage &reply)
{
    switch (QDBusError(reply).type()) {
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownInterface:
    case QDBusError::UnknownObject:
    case QDBusError::InvalidSignature:
    case QDBusError::InvalidArgs:
        return true;
    default:
        return false;
    }
}

RegisterOutcome outcomeOf(const QDBusError &error)
{
    switch (error.type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        // A push service that vanishes with our call unanswered ends here, too. It is registered
        // with again when it comes back.
        return RegisterOutcome::Pending;
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
        return RegisterOutcome::Vanished;
    default:
        return RegisterOutcome::Refused;
    }
}

} // namespace

DistributorCalls::DistributorCalls(const QDBusConnection &bus, QString name, QString service,
                                   QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_name(std::move(name))
    , m_service(std::move(service))
{
}

QDBusMessage DistributorCalls::method(DistributorGeneration generation, const QString &name) const
{
    return QDBusMessage::createMethodCall(m_name, QStringLiteral("/org/unifiedpush/Distributor"),
                                          interfaceName(generation), name);
}

void DistributorCalls::call(const QDBusMessage &message,
                            std::function<void(const QDBusMessage &reply)> answer)
{
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [watcher, answer = std::move(answer)] {
                watcher->deleteLater();
                answer(watcher->reply());
            });
}

void DistributorCalls::withGeneration(std::function<void(DistributorGeneration)> next)
{
    call(QDBusMessage::createMethodCall(m_name, QStringLiteral("/org/unifiedpush/Distributor"),
                                        QStringLiteral("org.freedesktop.DBus.Introspectable"),
                                        QStringLiteral("Introspect")),
         [next = std::move(next)](const QDBusMessage &reply) {
             const QString xml = reply.arguments().value(0).toString();
             const bool isOld = !describes(xml, interfaceName(DistributorGeneration::Two)) &&
                                describes(xml, interfaceName(DistributorGeneration::One));
             // One that does not describe itself is tried with the new generation first.
             next(isOld ? DistributorGeneration::One : DistributorGeneration::Two);
         });
}

void DistributorCalls::registerToken(const QString &token, const QString &description,
                                     std::function<void(RegisterOutcome, QString)> answer)
{
    withGeneration([this, token, description, answer = std::move(answer)](auto generation) {
        callRegister(generation, token, description, answer);
    });
}

void DistributorCalls::callRegister(DistributorGeneration generation, const QString &token,
                                    const QString &description,
                                    std::function<void(RegisterOutcome, QString)> answer)
{
    const bool isNew = generation == DistributorGeneration::Two;
    QDBusMessage message = method(generation, QStringLiteral("Register"));
    if (isNew) {
        message << QVariantMap{{QStringLiteral("service"), m_service},
                               {QStringLiteral("token"), token},
                               {QStringLiteral("description"), description}};
    } else {
        message << m_service << token << description;
    }
    call(message, [=, this](const QDBusMessage &reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            if (isNew && isUnknown(reply)) {
                callRegister(DistributorGeneration::One, token, description, answer);
                return;
            }
            answer(outcomeOf(QDBusError(reply)), reply.errorName());
            return;
        }
        QString result = reply.arguments().value(0).toString();
        QString reason = reply.arguments().value(1).toString();
        if (isNew) {
            const QVariantMap map = qdbus_cast<QVariantMap>(reply.arguments().value(0));
            result = map[QStringLiteral("success")].toString();
            reason = map[QStringLiteral("reason")].toString();
        }
        // Old ones answer with words of their own: only this one is a refusal.
        const bool refused = result == QLatin1String("REGISTRATION_FAILED");
        answer(refused ? RegisterOutcome::Refused : RegisterOutcome::Accepted, reason);
    });
}

void DistributorCalls::unregisterToken(const QString &token)
{
    withGeneration([this, token](DistributorGeneration generation) {
        QDBusMessage message = method(generation, QStringLiteral("Unregister"));
        if (generation == DistributorGeneration::Two) {
            message << QVariantMap{{QStringLiteral("token"), token}};
        } else {
            message << token;
        }
        m_bus.send(message);
    });
}

} // namespace trellisport::platform
