#include "Platform/Linux/CurlWorker.h"

#include "Platform/Linux/CurlFailure.h"

#include <algorithm>
#include <exception>
#include <thread>
#include <utility>
#include <variant>

namespace trellisport::platform {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds idleWait = 1h;
/// How much later than due a stalled exchange may be noticed.
constexpr std::chrono::milliseconds stallPrecision = 500ms;
/// Connections kept open for further reads.
constexpr long keptConnections = 8;

/// Completions do not throw; one that did would end the program here, where its fault is seen.
void complete(const HttpSession::Completion &completion, HttpResult result) noexcept
{
    completion(std::move(result));
}

} // namespace

CurlWorker::CurlWorker(CurlInbox &inbox, const CurlHttpOptions &options)
    : m_inbox(inbox)
    , m_options(options)
    , m_authorities(options)
    , m_multi(curl_multi_init())
{
    curl_multi_setopt(m_multi, CURLMOPT_MAXCONNECTS, keptConnections);
    m_inbox.setWaiter(m_multi);
}

CurlWorker::~CurlWorker()
{
    m_inbox.setWaiter(nullptr);
    curl_multi_cleanup(m_multi);
}

void CurlWorker::run()
{
    while (readInbox()) {
        int running = 0;
        if (curl_multi_perform(m_multi, &running) != CURLM_OK) {
            endAll(TransportFailure::Other);
        }
        endFinished();
        endSettled();
        endStalled();
        if (curl_multi_poll(m_multi, nullptr, 0, static_cast<int>(longestWait().count()),
                            nullptr) != CURLM_OK) {
            std::this_thread::sleep_for(stallPrecision); // out of memory: don't spin
        }
    }
    endAll(TransportFailure::Cancelled);
}

bool CurlWorker::readInbox()
{
    CurlInbox::Contents contents = m_inbox.take();
    for (CurlJob &job : contents.started) {
        const auto &cancelled = contents.cancelled;
        if (contents.stops ||
            std::find(cancelled.begin(), cancelled.end(), job.id) != cancelled.end()) {
            complete(job.completion, transportError(TransportFailure::Cancelled));
        } else {
            start(std::move(job));
        }
    }
    for (const CurlJob::Id id : contents.cancelled) {
        if (const auto job = m_running.find(id); job != m_running.end()) {
            end(job, transportError(TransportFailure::Cancelled));
        }
    }
    return !contents.stops;
}

void CurlWorker::start(CurlJob job)
{
    HttpCache::Ticket ticket = m_cache.begin(job.request);
    if (ticket.fresh) {
        complete(job.completion, std::move(*ticket.fresh));
        return;
    }
    try {
        auto transfer = std::make_unique<CurlTransfer>(std::move(job.request), ticket.conditions,
                                                       m_options, m_authorities);
        if (curl_multi_add_handle(m_multi, transfer->handle()) != CURLM_OK) {
            throw transportError(TransportFailure::Other);
        }
        m_running.emplace(
            job.id, Running{std::move(transfer), std::move(ticket), std::move(job.completion)});
    } catch (const TransportError &error) {
        complete(job.completion, error);
    }
}

void CurlWorker::endFinished()
{
    int left = 0;
    while (const CURLMsg *message = curl_multi_info_read(m_multi, &left)) {
        if (message->msg != CURLMSG_DONE) {
            continue;
        }
        const CURLcode code = message->data.result;
        const auto job = std::find_if(m_running.begin(), m_running.end(), [&](const auto &entry) {
            return entry.second.transfer->handle() == message->easy_handle;
        });
        if (job != m_running.end()) {
            finish(job, code);
        }
    }
}

void CurlWorker::endSettled()
{
    for (auto job = m_running.begin(); job != m_running.end();) {
        const auto current = job++;
        if (current->second.transfer->isSettled()) {
            finish(current, CURLE_OK);
        }
    }
}

void CurlWorker::finish(RunningJobs::iterator job, CURLcode code)
{
    m_readsShareConnections |= job->second.transfer->usedHttp2();
    HttpResult result = job->second.transfer->finish(code);
    end(job, std::move(result));
}

void CurlWorker::endStalled()
{
    const auto latest = CurlTransfer::Clock::now() - m_options.timeout;
    for (auto job = m_running.begin(); job != m_running.end();) {
        const auto current = job++;
        if (current->second.transfer->lastProgress(m_readsShareConnections) <= latest) {
            end(current, transportError(TransportFailure::TimedOut));
        }
    }
}

void CurlWorker::end(RunningJobs::iterator job, HttpResult result)
{
    const Running ended = std::move(job->second);
    m_running.erase(job);
    curl_multi_remove_handle(m_multi, ended.transfer->handle());
    const HttpRequest &request = ended.transfer->request();
    if (auto *reply = std::get_if<HttpReply>(&result)) {
        *reply = m_cache.finish(request, ended.ticket, std::move(*reply));
    } else {
        m_cache.fail(request);
    }
    complete(ended.completion, std::move(result));
}

void CurlWorker::endAll(TransportFailure failure)
{
    while (!m_running.empty()) {
        end(m_running.begin(), transportError(failure));
    }
}

std::chrono::milliseconds CurlWorker::longestWait() const
{
    if (m_running.empty()) {
        return idleWait;
    }
    return std::clamp(m_options.timeout / 8, std::chrono::milliseconds(1), stallPrecision);
}

} // namespace trellisport::platform
