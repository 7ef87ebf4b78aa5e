#pragma once

#include "Platform/Environment.h"

namespace trellisport::platform {

/// A browser has no variables; the page's own address stands for the service's.
class WebEnvironment final : public Environment {
public:
    [[nodiscard]] std::optional<std::string> variable(const std::string &name) const override;
};

} // namespace trellisport::platform
