#include "Platform/Toolkit/MainThreadQueue.h"

#include <utility>

namespace trellisport::platform {

void MainThreadQueue::async(std::function<void()> work)
{
    const std::lock_guard lock(m_mutex);
    m_work.push_back(std::move(work));
    if (m_work.size() == 1) {
        post();
    }
}

void MainThreadQueue::wake()
{
    const std::lock_guard lock(m_mutex);
    if (!m_receiver) {
        m_receiver = std::make_unique<QObject>();
    }
    if (!m_work.empty()) {
        post();
    }
}

void MainThreadQueue::post()
{
    if (m_receiver) {
        QMetaObject::invokeMethod(
            m_receiver.get(), [this] { drain(); }, Qt::QueuedConnection);
    }
}

void MainThreadQueue::drain()
{
    // What is queued meanwhile waits for the next turn, so that other events come in between.
    std::deque<std::function<void()>> work;
    {
        const std::lock_guard lock(m_mutex);
        work.swap(m_work);
    }
    for (const auto &piece : work) {
        piece();
    }
}

} // namespace trellisport::platform
