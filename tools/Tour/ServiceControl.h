#pragma once

#include <QByteArray>
#include <QString>

namespace trellisport::tour {

/// Tells a practice service that was started with --control how to answer from now on.
/// Each call waits for the answer and ends the program with a sentence when it is no.
class ServiceControl {
public:
    enum class Answers { Normally, WithErrors, Never, WithEmptyLists };

    /// baseURL: the service's, as the application has it.
    explicit ServiceControl(const QString &baseURL);

    void answer(Answers how) const;
    /// The body of a GET below the base URL, answered normally.
    [[nodiscard]] QByteArray get(const QString &path) const;

private:
    [[nodiscard]] QByteArray exchange(const char *method, const QString &url,
                                      const QByteArray &body = {}) const;

    QString m_baseURL;
};

} // namespace trellisport::tour
