#include "Support/FakeHttpSession.h"

#include "Support/Waiting.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace trellisport::test {

using platform::HttpReply;
using platform::HttpRequest;
using platform::HttpResult;
using platform::TransportError;
using platform::TransportFailure;

struct FakeHttpSession::Call {
    std::string url;
    HttpResult result;
    Completion completion;
};

struct FakeHttpSession::State {
    /// Takes the answer for a URL, with the lock held.
    HttpResult takeAnswer(std::string_view url);
    /// Moves a held call to those to be completed, with the lock held.
    void deliver(std::deque<std::shared_ptr<Call>>::iterator call);
    /// With the lock held.
    void cancelAll();
    void work();

    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<Answer> queue;
    std::vector<Answer> always;
    std::vector<HttpRequest> requests;
    std::deque<std::shared_ptr<Call>> waiting;
    std::deque<std::shared_ptr<Call>> ready;
    std::size_t cancelled = 0;
    std::size_t underWay = 0; ///< sent, and the completion has not returned
    bool holds = false;
    bool refuses = false;
    bool ends = false;
};

class FakeHttpSession::Exchange : public platform::HttpExchange {
public:
    Exchange(std::shared_ptr<State> state, std::shared_ptr<Call> call)
        : m_state(std::move(state))
        , m_call(std::move(call))
    {
    }
    Exchange(const Exchange &) = delete;
    Exchange &operator=(const Exchange &) = delete;
    ~Exchange() override { Exchange::cancel(); }

    void cancel() override
    {
        const std::lock_guard lock(m_state->mutex);
        const auto call = std::find(m_state->waiting.begin(), m_state->waiting.end(), m_call);
        if (call != m_state->waiting.end()) {
            ++m_state->cancelled;
            m_call->result =
                TransportError(TransportFailure::Cancelled, "The request was cancelled.");
            m_state->deliver(call);
        }
    }

private:
    std::shared_ptr<State> m_state;
    std::shared_ptr<Call> m_call;
};

namespace {

/// All sessions that are there.
struct Sessions {
    std::mutex mutex;
    std::set<FakeHttpSession *> all;

    static Sessions &shared()
    {
        static auto *sessions = new Sessions;
        return *sessions;
    }
};

} // namespace

FakeHttpSession::FakeHttpSession()
    : m_state(std::make_shared<State>())
    , m_thread([state = m_state] { state->work(); })
{
    const std::lock_guard lock(Sessions::shared().mutex);
    Sessions::shared().all.insert(this);
}

FakeHttpSession::~FakeHttpSession()
{
    {
        const std::lock_guard lock(Sessions::shared().mutex);
        Sessions::shared().all.erase(this);
    }
    end();
}

void FakeHttpSession::finish()
{
    const auto isIdle = [this] {
        const std::lock_guard lock(m_state->mutex);
        return m_state->underWay == 0;
    };
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->refuses = true;
        m_state->cancelAll();
    }
    do {
        if (!waitUntil(isIdle)) {
            return;
        }
        runPendingEvents(); // whoever waited goes on, and may send again
    } while (!isIdle());
}

void FakeHttpSession::endAll()
{
    const std::lock_guard lock(Sessions::shared().mutex);
    for (FakeHttpSession *session : Sessions::shared().all) {
        session->end();
    }
}

void FakeHttpSession::end()
{
    if (!m_thread.joinable()) {
        return;
    }
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->ends = true;
        m_state->cancelAll();
        m_state->changed.notify_all();
    }
    m_thread.join();
}

std::unique_ptr<platform::HttpExchange> FakeHttpSession::send(HttpRequest request,
                                                              Completion completion)
{
    const std::lock_guard lock(m_state->mutex);
    auto call = std::make_shared<Call>(
        Call{request.url, m_state->takeAnswer(request.url), std::move(completion)});
    m_state->requests.push_back(std::move(request));
    m_state->waiting.push_back(call);
    ++m_state->underWay;
    if (m_state->refuses) {
        m_state->cancelAll();
    } else if (!m_state->holds) {
        m_state->deliver(std::prev(m_state->waiting.end()));
    }
    return std::make_unique<Exchange>(m_state, std::move(call));
}

HttpResult FakeHttpSession::State::takeAnswer(std::string_view url)
{
    const auto fits = [&](const Answer &answer) { return url.ends_with(answer.urlEnd); };
    if (const auto answer = std::find_if(queue.begin(), queue.end(), fits); answer != queue.end()) {
        HttpResult result = std::move(answer->result);
        queue.erase(answer);
        return result;
    }
    if (const auto answer = std::find_if(always.begin(), always.end(), fits);
        answer != always.end()) {
        return answer->result;
    }
    return TransportError(TransportFailure::CannotConnect, "The test has queued no reply.");
}

void FakeHttpSession::State::deliver(std::deque<std::shared_ptr<Call>>::iterator call)
{
    ready.push_back(*call);
    waiting.erase(call);
    changed.notify_all();
}

void FakeHttpSession::State::cancelAll()
{
    while (!waiting.empty()) {
        ++cancelled;
        waiting.front()->result =
            TransportError(TransportFailure::Cancelled, "The session has ended.");
        deliver(waiting.begin());
    }
}

void FakeHttpSession::State::work()
{
    std::unique_lock lock(mutex);
    for (;;) {
        changed.wait(lock, [this] { return ends || !ready.empty(); });
        if (ready.empty()) {
            return;
        }
        const std::shared_ptr<Call> call = std::move(ready.front());
        ready.pop_front();
        lock.unlock();
        call->completion(std::move(call->result));
        call->completion = nullptr;
        lock.lock();
        --underWay;
    }
}

void FakeHttpSession::queueReply(int status, std::string body, std::string urlEnd)
{
    queue({std::move(urlEnd), HttpReply{status, {}, std::move(body)}});
}

void FakeHttpSession::queueFailure(TransportFailure failure, std::string description,
                                   std::string urlEnd)
{
    queue({std::move(urlEnd), TransportError(failure, description)});
}

void FakeHttpSession::queue(Answer answer)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->queue.push_back(std::move(answer));
}

void FakeHttpSession::alwaysReply(std::string urlEnd, int status, std::string body)
{
    const std::lock_guard lock(m_state->mutex);
    std::erase_if(m_state->always, [&](const Answer &answer) { return answer.urlEnd == urlEnd; });
    m_state->always.push_back({std::move(urlEnd), HttpReply{status, {}, std::move(body)}});
}

std::size_t FakeHttpSession::queued() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->queue.size();
}

void FakeHttpSession::hold()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->holds = true;
}

void FakeHttpSession::release()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->holds = false;
    while (!m_state->waiting.empty()) {
        m_state->deliver(m_state->waiting.begin());
    }
}

bool FakeHttpSession::releaseOne(std::string_view urlEnd)
{
    const std::lock_guard lock(m_state->mutex);
    const auto call = std::find_if(
        m_state->waiting.begin(), m_state->waiting.end(),
        [&](const std::shared_ptr<Call> &waiting) { return waiting->url.ends_with(urlEnd); });
    if (call == m_state->waiting.end()) {
        return false;
    }
    m_state->deliver(call);
    return true;
}

bool FakeHttpSession::releaseNewest()
{
    const std::lock_guard lock(m_state->mutex);
    if (m_state->waiting.empty()) {
        return false;
    }
    m_state->deliver(std::prev(m_state->waiting.end()));
    return true;
}

std::size_t FakeHttpSession::held() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->waiting.size();
}

std::vector<HttpRequest> FakeHttpSession::requests() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->requests;
}

std::size_t FakeHttpSession::requestCount() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->requests.size();
}

std::size_t FakeHttpSession::cancelled() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->cancelled;
}

} // namespace trellisport::test
