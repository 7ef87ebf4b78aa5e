#pragma once

#include "PracticeService/Push/Vapid.h"

#include <QByteArray>

#include <string>

namespace trellisport::practice {

enum class PushOutcome {
    Accepted,
    Gone,   ///< there is no such endpoint any more (404, 410)
    Failed, ///< not now: no answer, or one that says so
};

/// How a message is posted to a push service (RFC 8030).
struct PushPost {
    std::string endpoint;
    QByteArray content; ///< encrypted
    bool isUrgent = false;
};

/// Posts it and waits for the answer, for some seconds at most. sender: who says that it is from
/// here. authority: a file with a certificate authority to trust besides the system's; may be
/// empty.
[[nodiscard]] PushOutcome post(const PushPost &message, const Vapid &sender,
                               const std::string &authority);

} // namespace trellisport::practice
