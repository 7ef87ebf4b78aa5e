#pragma once

#include "PracticeService/Workflow.h"

#include <QByteArray>

#include <string>

namespace trellisport::practice {

/// What is pushed for an alert: the payload that consoles understand, short enough for one message.
/// id tells this notification from every other.
[[nodiscard]] QByteArray pushPayload(const Alert &alert, const std::string &id);

} // namespace trellisport::practice
