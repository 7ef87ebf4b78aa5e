#pragma once

#include "Platform/Executor.h"

namespace trellisport::platform {

/// The executor of a system with one thread.
class InPlaceExecutor final : public Executor {
public:
    void run(std::function<void()> work) override;
};

} // namespace trellisport::platform
