#pragma once

#include <QByteArray>
#include <QString>

namespace trellisport::tour {

/// Tells a practice service that was started with --control how to answer.
/// Each call waits for the answer and ends the program with a sentence when it is no.
class ServiceControl {
public:
    /// baseURL: the service's, as the application has it.
    explicit ServiceControl(const QString &baseURL);

    /// The next reply to a path below the base URL ("/dashboard") comes only after two minutes.
    void stall(const QString &path) const;
    /// The next reply to the path is an error of this status.
    void fail(const QString &path, int status) const;
    /// The body of a GET below the base URL.
    [[nodiscard]] QByteArray get(const QString &path) const;

private:
    void fault(const QString &path, const QString &what) const;
    [[nodiscard]] QByteArray exchange(const char *method, const QString &url) const;

    QString m_baseURL;
};

} // namespace trellisport::tour
