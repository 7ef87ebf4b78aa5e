#pragma once

#include "Platform/Environment.h"

namespace trellisport::platform {

/// The process's environment variables. The toolkit's functions for them exclude each other, so any
/// thread may ask as long as the program sets variables through these alone.
class LinuxEnvironment final : public Environment {
public:
    [[nodiscard]] std::optional<std::string> variable(const std::string &name) const override;
    [[nodiscard]] std::string wayToSet() const override;
};

} // namespace trellisport::platform
