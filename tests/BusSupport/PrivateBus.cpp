#include "BusSupport/PrivateBus.h"

#include <QDBusMessage>
#include <QDir>
#include <QFile>

#include <stdexcept>

namespace trellisport::test {

namespace {

void writeFile(const QString &path, const QString &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0) {
        throw std::runtime_error("a file for the private bus could not be written");
    }
}

} // namespace

PrivateBus::PrivateBus()
{
    const QString configuration = m_folder.filePath(QStringLiteral("bus.conf"));
    QDir(m_folder.path()).mkdir(QStringLiteral("services"));
    writeFile(configuration, QStringLiteral(R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <servicedir>%1/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)")
                                 .arg(m_folder.path()));
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--config-file=") + configuration, QStringLiteral("--nofork"),
                    QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1")});
    if (!m_daemon.waitForReadyRead()) {
        throw std::runtime_error("the private bus did not start");
    }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus()
{
    for (const QString &name : m_connections) {
        QDBusConnection::disconnectFromBus(name);
    }
    end();
}

void PrivateBus::end()
{
    if (m_daemon.state() != QProcess::NotRunning) {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
}

QDBusConnection PrivateBus::connect()
{
    static int count = 0;
    m_connections.append(QStringLiteral("private-%1").arg(++count));
    QDBusConnection bus = QDBusConnection::connectToBus(m_address, m_connections.last());
    if (!bus.isConnected()) {
        throw std::runtime_error("the private bus can't be reached");
    }
    return bus;
}

void PrivateBus::addService(const QString &name, const QString &command)
{
    writeFile(m_folder.filePath(QStringLiteral("services/%1.service").arg(name)),
              QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(name, command));
    QDBusConnection bus = connect();
    bus.call(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReloadConfig")));
}

} // namespace trellisport::test
