#pragma once

#include <QDBusConnection>
#include <QStringList>

namespace trellisport::platform {

/// The environment of the programs that the user's session starts now, as "NAME=value" entries.
/// Empty where nobody on the bus knows it. Waits a moment for the answer.
[[nodiscard]] QStringList userEnvironment(const QDBusConnection &bus);

} // namespace trellisport::platform
