#include "Platform/Linux/CurlHttpSession.h"

#include "Platform/Linux/CurlInbox.h"
#include "Platform/Linux/CurlWorker.h"

#include <curl/curl.h>

#include <atomic>
#include <utility>

namespace trellisport::platform {

namespace {

class CurlExchange final : public HttpExchange {
public:
    CurlExchange(std::shared_ptr<CurlInbox> inbox, CurlJob::Id id,
                 std::shared_ptr<const std::atomic<bool>> hasEnded)
        : m_inbox(std::move(inbox))
        , m_id(id)
        , m_hasEnded(std::move(hasEnded))
    {
    }
    CurlExchange(const CurlExchange &) = delete;
    CurlExchange &operator=(const CurlExchange &) = delete;
    ~CurlExchange() override { CurlExchange::cancel(); }

    void cancel() override
    {
        // Most handles go when all is over; the session's thread need not wake for that.
        if (!*m_hasEnded) {
            m_inbox->cancel(m_id);
        }
    }

private:
    std::shared_ptr<CurlInbox> m_inbox;
    CurlJob::Id m_id;
    std::shared_ptr<const std::atomic<bool>> m_hasEnded;
};

void initializeCurl()
{
    static const CURLcode once = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (once != CURLE_OK) {
        throw TransportError(TransportFailure::Other, "The network library could not be started.");
    }
}

} // namespace

CurlHttpSession::CurlHttpSession(CurlHttpOptions options)
    : m_inbox(std::make_shared<CurlInbox>())
{
    initializeCurl();
    m_thread = std::thread(
        [inbox = m_inbox, options = std::move(options)] { CurlWorker(*inbox, options).run(); });
}

CurlHttpSession::~CurlHttpSession()
{
    stop();
}

void CurlHttpSession::stop()
{
    if (m_thread.joinable()) {
        m_inbox->stop();
        m_thread.join();
    }
}

std::unique_ptr<HttpExchange> CurlHttpSession::send(HttpRequest request, Completion completion)
{
    const auto hasEnded = std::make_shared<std::atomic<bool>>(false);
    const CurlJob::Id id = m_inbox->start(
        std::move(request), [hasEnded, completion = std::move(completion)](HttpResult result) {
            *hasEnded = true;
            completion(std::move(result));
        });
    return std::make_unique<CurlExchange>(m_inbox, id, hasEnded);
}

} // namespace trellisport::platform
