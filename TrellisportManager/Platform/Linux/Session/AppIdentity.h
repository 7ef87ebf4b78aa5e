#pragma once

#include <QLatin1String>
#include <QString>

namespace trellisport::platform {

/// Who the program is on the session bus and to the desktop: its bus name, its desktop file without
/// the ending and its window's id are all this.
[[nodiscard]] inline QString applicationId()
{
    return QStringLiteral(TRELLISPORT_APP_ID);
}

/// As a person reads it.
[[nodiscard]] inline QString applicationName()
{
    return QStringLiteral("TrellisportManager");
}

/// Where on the bus the program offers org.freedesktop.Application: made of the id by its rules.
[[nodiscard]] inline QString applicationPath()
{
    return QLatin1Char('/') + applicationId()
                                  .replace(QLatin1Char('.'), QLatin1Char('/'))
                                  .replace(QLatin1Char('-'), QLatin1Char('_'));
}

} // namespace trellisport::platform
