#include "Platform/Linux/ThreadPoolExecutor.h"

#include <utility>

namespace trellisport::platform {

void ThreadPoolExecutor::run(std::function<void()> work)
{
    m_pool.start(std::move(work));
}

void ThreadPoolExecutor::finish()
{
    m_pool.waitForDone();
}

} // namespace trellisport::platform
