#pragma once

#include "Platform/HttpSession.h"
#include "Platform/Linux/CurlHttpSession.h"
#include "Platform/Linux/ReplyReader.h"

#include <curl/curl.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace trellisport::platform {

class Authorities;

/// One request on its way and the reply that comes back. The worker's thread only.
class CurlTransfer {
public:
    using Clock = std::chrono::steady_clock;

    /// conditions: headers sent besides the request's own. The authorities must outlive the
    /// transfer.
    /// Throws TransportError when the request can't be sent.
    CurlTransfer(HttpRequest request, const std::vector<HttpHeader> &conditions,
                 const CurlHttpOptions &options, const Authorities &authorities);
    CurlTransfer(const CurlTransfer &) = delete;
    CurlTransfer &operator=(const CurlTransfer &) = delete;
    ~CurlTransfer();

    [[nodiscard]] CURL *handle() const { return m_handle.get(); }
    [[nodiscard]] const HttpRequest &request() const { return m_request; }

    /// Looks whether bytes have moved since the last look, and gives the moment when they last
    /// did. sharesConnection: others may move bytes on the same connection, so that only those of
    /// this transfer's own reply count.
    [[nodiscard]] Clock::time_point lastProgress(bool sharesConnection);

    /// Whether the reply came over HTTP/2.
    [[nodiscard]] bool usedHttp2() const;

    /// Whether its result is certain although libcurl may not be done: no bytes of it are needed.
    [[nodiscard]] bool isSettled() const { return m_reply.isSettled(); }

    /// What has become of it, once libcurl is done or it is settled; code is then of no matter.
    [[nodiscard]] HttpResult finish(CURLcode code);

private:
    void setUp();
    void setMethodAndBody();
    void setAddress();
    void setHeaders(const std::vector<HttpHeader> &conditions);
    void appendHeaders(const std::vector<HttpHeader> &headers);
    void appendHeader(const std::string &line);
    void setSecurity(const Authorities &authorities);
    template <typename Value>
    void set(CURLoption option, Value value);
    [[nodiscard]] std::uint64_t bytesMoved(bool sharesConnection) const;

    struct EasyDeleter {
        void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
    };
    struct ListDeleter {
        void operator()(curl_slist *list) const { curl_slist_free_all(list); }
    };

    HttpRequest m_request;
    ReplyReader m_reply;
    std::unique_ptr<curl_slist, ListDeleter> m_headers;
    std::unique_ptr<CURL, EasyDeleter> m_handle; ///< freed before what it points to
    std::uint64_t m_bytesMoved = 0;
    Clock::time_point m_lastProgress = Clock::now();
};

} // namespace trellisport::platform
