#pragma once

#include "Platform/UserNotificationCenter.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace trellisport::platform {

/// A notification as a push message carries it.
struct RemoteNotification {
    QString title;
    QString body;          ///< may be empty
    bool isUrgent = false; ///< the agent waits for an answer
    QByteArray id;         ///< the sender's own name for it; empty when it gave none
    UserNotification notification;
};

/// Reads a message's content: a JSON object, whose "aps"."alert" is what is shown (a text, or an
/// object with "title" and "body"). What is missing or odd is stood in for: fallbackTitle is the
/// title where there is none. Absent when the content is no JSON object.
[[nodiscard]] std::optional<RemoteNotification>
parseRemoteNotification(const QByteArray &content, const QString &fallbackTitle);

} // namespace trellisport::platform
