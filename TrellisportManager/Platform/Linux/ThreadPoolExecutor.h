#pragma once

#include "Platform/Executor.h"

#include <QThreadPool>

#include <functional>

namespace trellisport::platform {

/// An executor with as many threads as the machine runs at once. Destroying it waits for the work
/// that was handed over.
class ThreadPoolExecutor final : public Executor {
public:
    void run(std::function<void()> work) override;
    /// Waits for the work that was handed over so far.
    void finish();

private:
    QThreadPool m_pool;
};

} // namespace trellisport::platform
