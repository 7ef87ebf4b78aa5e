#pragma once

#include <QString>
#include <QVariantMap>

namespace trellisport::platform {

/// What a launcher or a notification service gives along, so that the window may come to the front.
/// Empty when there is none.
struct ActivationToken {
    QString value;

    /// Of a call on the bus: anybody may have made it.
    [[nodiscard]] static ActivationToken fromPlatformData(const QVariantMap &data);
    /// Of the program's own start; taken out of the environment, where it would name the next
    /// program that this one starts.
    [[nodiscard]] static ActivationToken takeFromEnvironment();

    [[nodiscard]] QVariantMap toPlatformData() const;
    /// Puts it where the toolkit looks for it when a window is shown. Main thread.
    void putIntoEnvironment() const;
};

} // namespace trellisport::platform
