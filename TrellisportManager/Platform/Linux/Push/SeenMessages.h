#pragma once

#include "Platform/Linux/Push/PrivateFile.h"

#include <QByteArray>
#include <QList>
#include <QTimer>

namespace trellisport::platform {

/// Knows the last messages that were shown, so that one which a push service delivers again is
/// shown once; also across a restart. Holds digests, no part of a message. One thread, which runs
/// an event loop.
class SeenMessages {
public:
    static constexpr qsizetype capacity = 256;

    explicit SeenMessages(const QString &path);
    SeenMessages(const SeenMessages &) = delete;
    SeenMessages &operator=(const SeenMessages &) = delete;
    /// Keeps what was not kept yet.
    ~SeenMessages();

    /// Whether a message of this identity was noted before.
    [[nodiscard]] bool contains(const QByteArray &identity) const;
    /// Notes it; the oldest is forgotten for it when there are too many. The file follows soon.
    void add(const QByteArray &identity);

private:
    void save();

    PrivateFile m_file;
    QList<QByteArray> m_digests; ///< oldest first
    QTimer m_saving;
};

} // namespace trellisport::platform
