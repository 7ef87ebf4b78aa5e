#pragma once

#include "Platform/Executor.h"

#include <functional>

namespace trellisport::test {

/// An executor of a platform with one thread: the work is done when run() returns.
class InlineExecutor : public platform::Executor {
public:
    /// One for all tests of a program: a call that a test leaves under way may still want it when
    /// the test has ended, and even while the program ends. So it is never destroyed.
    static InlineExecutor &shared()
    {
        static auto *executor = new InlineExecutor;
        return *executor;
    }
    void run(std::function<void()> work) override { work(); }
};

} // namespace trellisport::test
