#pragma once

#include "Platform/Executor.h"

#include <functional>

namespace trellisport::test {

/// An executor of a platform with one thread: the work is done when run() returns.
class InlineExecutor : public platform::Executor {
public:
    void run(std::function<void()> work) override { work(); }
};

} // namespace trellisport::test
