#pragma once

#include "Platform/Environment.h"

namespace trellisport::platform {

/// The process's environment variables.
class LinuxEnvironment final : public Environment {
public:
    [[nodiscard]] std::optional<std::string> variable(const std::string &name) const override;
};

} // namespace trellisport::platform
