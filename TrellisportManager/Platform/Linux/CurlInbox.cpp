#include "Platform/Linux/CurlInbox.h"

#include <utility>

namespace trellisport::platform {

CurlJob::Id CurlInbox::start(HttpRequest request, HttpSession::Completion completion)
{
    const std::lock_guard lock(m_mutex);
    m_contents.started.push_back({++m_lastId, std::move(request), std::move(completion)});
    wake();
    return m_lastId;
}

void CurlInbox::cancel(CurlJob::Id id)
{
    const std::lock_guard lock(m_mutex);
    if (m_waiter != nullptr || !m_contents.started.empty()) {
        m_contents.cancelled.push_back(id);
        wake();
    }
}

void CurlInbox::stop()
{
    const std::lock_guard lock(m_mutex);
    m_contents.stops = true;
    wake();
}

void CurlInbox::setWaiter(CURLM *multi)
{
    const std::lock_guard lock(m_mutex);
    m_waiter = multi;
}

CurlInbox::Contents CurlInbox::take()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_contents, {});
}

void CurlInbox::wake() const
{
    // It only writes a byte to a pipe, so the lock is not held for long.
    if (m_waiter != nullptr) {
        curl_multi_wakeup(m_waiter);
    }
}

} // namespace trellisport::platform
