#include "Platform/Linux/CurlHttpSession.h"

#include "Platform/Linux/CurlInbox.h"
#include "Platform/Linux/CurlWorker.h"

#include <curl/curl.h>

#include <utility>

namespace trellisport::platform {

namespace {

class CurlExchange final : public HttpExchange {
public:
    CurlExchange(std::shared_ptr<CurlInbox> inbox, CurlJob::Id id)
        : m_inbox(std::move(inbox))
        , m_id(id)
    {
    }
    CurlExchange(const CurlExchange &) = delete;
    CurlExchange &operator=(const CurlExchange &) = delete;
    ~CurlExchange() override { CurlExchange::cancel(); }

    void cancel() override { m_inbox->cancel(m_id); }

private:
    std::shared_ptr<CurlInbox> m_inbox;
    CurlJob::Id m_id;
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
    m_inbox->stop();
    m_thread.join();
}

std::unique_ptr<HttpExchange> CurlHttpSession::send(HttpRequest request, Completion completion)
{
    const CurlJob::Id id = m_inbox->start(std::move(request), std::move(completion));
    return std::make_unique<CurlExchange>(m_inbox, id);
}

} // namespace trellisport::platform
