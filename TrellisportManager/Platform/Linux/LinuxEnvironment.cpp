#include "Platform/Linux/LinuxEnvironment.h"

#include <QByteArray>

namespace trellisport::platform {

std::optional<std::string> LinuxEnvironment::variable(const std::string &name) const
{
    // Asked once, so that nobody can unset it between two questions.
    const QByteArray value = qgetenv(name.c_str());
    return value.isNull() ? std::nullopt : std::optional(value.toStdString());
}

std::string LinuxEnvironment::wayToSet() const
{
    return "in ~/.config/environment.d/trellisport-manager.conf and log in again";
}

} // namespace trellisport::platform
