#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace trellisport::test {

/// A session bus of the test's own.
class PrivateBus {
public:
    /// Throws std::runtime_error when it does not start.
    PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;
    ~PrivateBus();

    [[nodiscard]] const QString &address() const { return m_address; }
    /// A connection of its own, which ends with the bus.
    [[nodiscard]] QDBusConnection connect();
    /// Lets the bus start a program for a name.
    void addService(const QString &name, const QString &command);
    /// Ends at once, as the bus of a session does that is over.
    void end();

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
    QStringList m_connections;
};

} // namespace trellisport::test
