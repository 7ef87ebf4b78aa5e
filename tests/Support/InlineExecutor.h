#pragma once

#include "Platform/Executor.h"

#include <functional>

namespace trellisport::test {

/// An executor of a platform with one thread: the work is done when run() returns.
class InlineExecutor : public platform::Executor {
public:
    /// One for all tests of a program: a call that a test leaves under way may still want it when
    /// the test has ended.
    static InlineExecutor &shared()
    {
        static InlineExecutor executor;
        return executor;
    }
    void run(std::function<void()> work) override { work(); }
};

} // namespace trellisport::test
