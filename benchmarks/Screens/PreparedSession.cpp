#include "Screens/PreparedSession.h"

#include <algorithm>
#include <utility>

namespace trellisport::bench {

namespace {

class Exchange : public platform::HttpExchange {
public:
    void cancel() override {}
};

} // namespace

PreparedSession::PreparedSession()
    : m_thread([this] { work(); })
{
}

PreparedSession::~PreparedSession()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void PreparedSession::answer(const std::string &urlEnd, std::function<std::string()> body)
{
    const std::lock_guard lock(m_mutex);
    m_bodies[urlEnd] = std::move(body);
}

void PreparedSession::holdBack(const std::string &urlEnd, std::function<std::string()> body)
{
    answer(urlEnd, std::move(body));
    const std::lock_guard lock(m_mutex);
    m_heldBack = urlEnd;
}

bool PreparedSession::isReady() const
{
    const std::lock_guard lock(m_mutex);
    return m_isReady;
}

void PreparedSession::handOver()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isReleased = true;
    }
    m_changed.notify_all();
}

SteadyClock::time_point PreparedSession::handedOverAt() const
{
    const std::lock_guard lock(m_mutex);
    return m_handedOverAt;
}

std::size_t PreparedSession::replySize() const
{
    const std::lock_guard lock(m_mutex);
    return m_replySize;
}

std::unique_ptr<platform::HttpExchange> PreparedSession::send(platform::HttpRequest request,
                                                              Completion completion)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back({std::move(request.url), std::move(completion)});
    }
    m_changed.notify_all();
    return std::make_unique<Exchange>();
}

void PreparedSession::work()
{
    for (;;) {
        Job job;
        {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return m_ends || !m_jobs.empty(); });
            if (m_ends) {
                return;
            }
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        reply(job);
    }
}

void PreparedSession::reply(const Job &job)
{
    std::function<std::string()> make;
    bool isHeldBack = false;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = std::find_if(m_bodies.begin(), m_bodies.end(), [&](const auto &body) {
            return job.url.ends_with(body.first);
        });
        if (found != m_bodies.end()) {
            make = found->second;
            isHeldBack = found->first == m_heldBack;
        }
    }
    if (!make) {
        job.completion(platform::HttpReply{404, {}, {}});
        return;
    }
    platform::HttpReply reply{200, {}, make()};
    if (isHeldBack) {
        waitForHandOver(reply.body.size());
    }
    job.completion(std::move(reply));
}

void PreparedSession::waitForHandOver(std::size_t size)
{
    std::unique_lock lock(m_mutex);
    m_replySize = size;
    m_isReady = true;
    m_changed.wait(lock, [this] { return m_isReleased || m_ends; });
    m_isReady = false;
    m_isReleased = false;
    m_handedOverAt = SteadyClock::now();
}

} // namespace trellisport::bench
