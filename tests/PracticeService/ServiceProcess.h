#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <string>

namespace trellisport::practice {

/// The practice service as a program of its own.
class ServiceProcess {
public:
    /// Starts it on a free port and waits for its line; url() is empty when there is none.
    explicit ServiceProcess(const QString &folder, const QStringList &arguments = {});
    ServiceProcess(const ServiceProcess &) = delete;
    ServiceProcess &operator=(const ServiceProcess &) = delete;
    /// Kills it when it still runs.
    ~ServiceProcess();

    /// Without the path, e.g. "https://127.0.0.1:40001".
    [[nodiscard]] const std::string &url() const noexcept { return m_url; }
    [[nodiscard]] std::string api() const { return m_url + "/api/v1"; }
    [[nodiscard]] const std::string &authority() const noexcept { return m_authority; }
    [[nodiscard]] qint64 pid() const { return m_process.processId(); }
    /// kill -9, waited for.
    void kill();
    /// SIGTERM; false when the program does not end in time.
    [[nodiscard]] bool terminate(int milliseconds);
    [[nodiscard]] int exitCode() const { return m_process.exitCode(); }
    [[nodiscard]] QByteArray output() { return m_process.readAllStandardOutput(); }
    [[nodiscard]] QByteArray errors() { return m_process.readAllStandardError(); }

private:
    QProcess m_process;
    std::string m_url;
    std::string m_authority;
};

/// A run that is expected to end by itself.
struct FinishedRun {
    bool finished = false;
    int exitCode = -1;
    QByteArray output;
    QByteArray errors;
};
[[nodiscard]] FinishedRun runService(const QStringList &arguments);

} // namespace trellisport::practice
