#pragma once

#include "Platform/UserNotificationCenter.h"

#include <QByteArray>
#include <QString>

namespace trellisport::platform {

/// A notification as a push message carries it.
struct RemoteNotification {
    QString title;         ///< one line
    QString body;          ///< may be empty
    bool isUrgent = false; ///< the agent waits for an answer
    QByteArray id;         ///< the sender's own name for it; empty when it gave none
    UserNotification notification;
};

/// The longest texts that are shown, in UTF-16 units; longer ones are cut.
inline constexpr qsizetype longestTitle = 200;
inline constexpr qsizetype longestBody = 1000;

/// Reads a message's content: a JSON object, whose "aps"."alert" is what is shown (a text, or an
/// object with "title" and "body"). What is missing or odd is stood in for: fallbackTitle is the
/// title where there is none. Content that is no JSON object is the body if it is a text a person
/// can read, else a sentence is; such a notification carries nothing and leads nowhere.
[[nodiscard]] RemoteNotification parseRemoteNotification(const QByteArray &content,
                                                         const QString &fallbackTitle);

} // namespace trellisport::platform
