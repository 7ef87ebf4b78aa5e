#include "Platform/Linux/LinuxEnvironment.h"

#include <QByteArray>

namespace trellisport::platform {

std::optional<std::string> LinuxEnvironment::variable(const std::string &name) const
{
    if (!qEnvironmentVariableIsSet(name.c_str())) {
        return {};
    }
    return qgetenv(name.c_str()).toStdString();
}

} // namespace trellisport::platform
