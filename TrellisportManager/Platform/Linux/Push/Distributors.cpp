#include "Platform/Linux/Push/Distributors.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace trellisport::platform {

std::optional<QString> chooseDistributor(DistributorNames names, const QString &named,
                                         const QStringList &before)
{
    const auto isUsable = [&](const QString &name) {
        return names.running.contains(name) || names.startable.contains(name);
    };
    if (!named.isEmpty()) {
        const QString name = QLatin1String(distributorPrefix) + named;
        return isUsable(name) ? std::optional(name) : std::nullopt;
    }
    for (const QString &name : before) {
        if (isUsable(name)) {
            return name;
        }
    }
    if (names.running.isEmpty()) {
        return std::nullopt;
    }
    names.running.sort();
    return names.running.first();
}

Distributors::Distributors(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_watcher(QStringLiteral("org.unifiedpush.Distributor*"), bus,
                QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &name, const QString & /*before*/, const QString &now) {
                if (!name.startsWith(QLatin1String(distributorPrefix))) {
                    return;
                }
                if (now.isEmpty()) {
                    Q_EMIT vanished(name);
                } else {
                    Q_EMIT appeared(name);
                }
            });
}

void Distributors::list(std::function<void(DistributorNames)> answer)
{
    askBus(QStringLiteral("ListNames"), [this, answer = std::move(answer)](const QStringList &now) {
        askBus(QStringLiteral("ListActivatableNames"), [now, answer](const QStringList &startable) {
            answer({now, startable});
        });
    });
}

void Distributors::askBus(const QString &method, std::function<void(QStringList)> answer)
{
    const QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), method);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [watcher, answer = std::move(answer)] {
                watcher->deleteLater();
                const QDBusPendingReply<QStringList> reply = *watcher;
                QStringList names = reply.isError() ? QStringList() : reply.value();
                names.removeIf([](const QString &name) {
                    return !name.startsWith(QLatin1String(distributorPrefix));
                });
                answer(names);
            });
}

} // namespace trellisport::platform
