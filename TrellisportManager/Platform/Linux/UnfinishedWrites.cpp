#include "Platform/Linux/UnfinishedWrites.h"

#include <utility>

namespace trellisport::platform {

void UnfinishedWrites::begin()
{
    const std::lock_guard lock(m_mutex);
    ++m_count;
}

void UnfinishedWrites::end()
{
    const std::lock_guard lock(m_mutex);
    --m_count;
    m_changed.notify_all();
}

bool UnfinishedWrites::waitUntilNone(std::chrono::milliseconds patience)
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, patience, [this] { return m_count == 0; });
}

CountingHttpSession::CountingHttpSession(std::shared_ptr<HttpSession> session,
                                         std::shared_ptr<UnfinishedWrites> writes)
    : m_session(std::move(session))
    , m_writes(std::move(writes))
{
}

std::unique_ptr<HttpExchange> CountingHttpSession::send(HttpRequest request, Completion completion)
{
    if (request.method == "GET" || request.method == "HEAD") {
        return m_session->send(std::move(request), std::move(completion));
    }
    m_writes->begin();
    return m_session->send(
        std::move(request),
        [writes = m_writes, completion = std::move(completion)](HttpResult result) {
            completion(std::move(result));
            writes->end();
        });
}

} // namespace trellisport::platform
