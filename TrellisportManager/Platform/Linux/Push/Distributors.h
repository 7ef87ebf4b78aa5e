#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace trellisport::platform {

/// What the bus names of push services begin with.
inline constexpr const char *distributorPrefix = "org.unifiedpush.Distributor.";

/// The push services of a bus, by their bus names.
struct DistributorNames {
    QStringList running;
    QStringList startable; ///< by a call, running or not
};

/// Which push service to use. named, the last part of a bus name, is what the user asked for and
/// admits no other; else the first of those in use before, so that it does not change with the
/// order in which they start; else of those that run the first by name. Absent when there is none.
[[nodiscard]] std::optional<QString> chooseDistributor(DistributorNames names, const QString &named,
                                                       const QStringList &before);

/// Watches the push services of a bus. One thread, which runs an event loop.
class Distributors : public QObject {
    Q_OBJECT
public:
    explicit Distributors(const QDBusConnection &bus, QObject *parent = nullptr);

    /// Gives their names; none when the bus does not say. The answer comes later, or never once
    /// this is gone.
    void list(std::function<void(DistributorNames)> answer);

Q_SIGNALS:
    /// A push service has come, for the first time or again.
    void appeared(const QString &name);
    void vanished(const QString &name);

private:
    void askBus(const QString &method, std::function<void(QStringList)> answer);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
};

} // namespace trellisport::platform
