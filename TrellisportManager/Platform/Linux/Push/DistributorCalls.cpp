#include "Platform/Linux/Push/DistributorCalls.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringView>

#include <algorithm>
#include <utility>

namespace trellisport::platform {

namespace {

QString interfaceName(DistributorGeneration generation)
{
    return QStringLiteral("org.unifiedpush.Distributor%1").arg(static_cast<int>(generation));
}

/// The value of the tag's attribute "name"; empty when it has none.
QStringView nameIn(QStringView tag)
{
    const auto isBlank = [](QChar c) { return c.isSpace(); };
    while (true) {
        // What stands before the next quote is a key, and after it a value.
        const auto open = std::find_if(tag.begin(), tag.end(), [](QChar c) {
            return c == QLatin1Char('"') || c == QLatin1Char('\'');
        });
        const auto close = open == tag.end() ? open : std::find(open + 1, tag.end(), *open);
        if (close == tag.end()) {
            return {};
        }
        QStringView key = tag.first(open - tag.begin()).trimmed();
        if (key.endsWith(QLatin1Char('='))) {
            key = key.chopped(1).trimmed();
            if (key == QLatin1String("name") ||
                (key.endsWith(QLatin1String("name")) && isBlank(key.at(key.size() - 5)))) {
                return tag.sliced(open + 1 - tag.begin(), close - open - 1);
            }
        }
        tag = tag.sliced(close + 1 - tag.begin());
    }
}

/// Whether the interface is among those that the description names. Its author is anybody who took
/// the name on the bus: so it is searched, and not handed to a parser that knows all of XML.
bool describes(QStringView introspection, const QString &interface)
{
    constexpr QLatin1String start("<interface");
    for (qsizetype at = 0; (at = introspection.indexOf(start, at)) >= 0;) {
        at += start.size();
        const qsizetype end = introspection.indexOf(QLatin1Char('>'), at);
        const QStringView tag =
            introspection.sliced(at, (end < 0 ? introspection.size() : end) - at);
        if (!tag.isEmpty() && tag.front().isSpace() && nameIn(tag) == interface) {
            return true;
        }
        at += tag.size();
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
