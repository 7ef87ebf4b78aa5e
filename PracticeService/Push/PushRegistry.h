#pragma once

#include <QHash>
#include <QString>

#include <optional>

namespace trellisport::practice {

/// A program that receives messages.
struct PushClient {
    QString service; ///< its bus name
    QString token;   ///< what it calls itself
    int generation;  ///< of the interface that it registered with, and is called by
};

/// Who is registered with the push service, kept in a file. One thread.
class PushRegistry {
public:
    explicit PushRegistry(const QString &path);

    /// Gives the client's path: the same as before for a token that is known, a new one that cannot
    /// be guessed for others. Absent when another service has the token.
    [[nodiscard]] std::optional<QString> add(const PushClient &client);
    /// Gives the client that was registered under the token.
    std::optional<PushClient> remove(const QString &token);
    [[nodiscard]] std::optional<PushClient> find(const QString &path) const;

private:
    void save() const;

    QString m_file;
    QHash<QString, PushClient> m_clients; ///< by path
};

} // namespace trellisport::practice
