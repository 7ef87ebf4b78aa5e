#include "Platform/Linux/CurlTransfer.h"

#include "Platform/Linux/Authorities.h"
#include "Platform/Linux/ConnectionBytes.h"
#include "Platform/Linux/CurlFailure.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace trellisport::platform {

namespace {

struct Address {
    std::string origin; ///< scheme, host and port, with a slash
    std::string target; ///< what stands in the request line
};

/// Takes the URL apart without changing a character of it. libcurl would parse the path, and tidy
/// it up; here the service gets exactly what the URL says.
Address takeApart(std::string_view url)
{
    url = url.substr(0, url.find('#'));
    const std::size_t authority = url.find("://") + 3;
    const std::size_t end = std::min(url.find_first_of("/?", authority), url.size());
    Address address{std::string(url.substr(0, end)) + '/', std::string(url.substr(end))};
    if (!address.target.starts_with('/')) {
        address.target.insert(0, 1, '/');
    }
    return address;
}

bool isHttps(std::string_view url)
{
    constexpr std::string_view scheme = "https://";
    return curl_strnequal(url.data(), scheme.data(), scheme.size()) != 0 &&
           url.size() > scheme.size();
}

bool isWrite(const HttpRequest &request)
{
    return request.method != "GET";
}

bool isClean(std::string_view headerText)
{
    return headerText.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

/// libcurl's callback, when it has set up the context of a new connection.
CURLcode useAuthorities(CURL * /*handle*/, void *context, void *data)
{
    const auto &authorities = *static_cast<const Authorities *>(data);
    if (authorities.areIncomplete()) {
        return CURLE_SSL_CACERT_BADFILE;
    }
    authorities.applyTo(static_cast<SSL_CTX *>(context));
    return CURLE_OK;
}

} // namespace

CurlTransfer::CurlTransfer(HttpRequest request, const std::vector<HttpHeader> &conditions,
                           const CurlHttpOptions &options, const Authorities &authorities)
    : m_request(std::move(request))
    , m_reply(options.replyLimit)
    , m_handle(curl_easy_init())
{
    if (!isHttps(m_request.url)) {
        throw TransportError(TransportFailure::Other, "Only a secure address (https) can be used.");
    }
    if (!m_handle) {
        throw transportError(TransportFailure::Other);
    }
    setUp();
    setAddress();
    setMethodAndBody();
    setHeaders(conditions);
    setSecurity(authorities);
}

CurlTransfer::~CurlTransfer() = default;

template <typename Value>
void CurlTransfer::set(CURLoption option, Value value)
{
    if (curl_easy_setopt(m_handle.get(), option, value) != CURLE_OK) {
        throw transportError(TransportFailure::Other);
    }
}

void CurlTransfer::setUp()
{
    set(CURLOPT_NOSIGNAL, 1L);
    // Ending an exchange must not wait for a name that is still being looked up.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_HEADERFUNCTION, &ReplyReader::takeHeader);
    set(CURLOPT_HEADERDATA, &m_reply);
    set(CURLOPT_WRITEFUNCTION, &ReplyReader::takeBody);
    set(CURLOPT_WRITEDATA, &m_reply);
    set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    set(CURLOPT_FOLLOWLOCATION, 0L);
    m_reply.setHandle(m_handle.get());
}

void CurlTransfer::setAddress()
{
    const Address address = takeApart(m_request.url);
    set(CURLOPT_PROTOCOLS_STR, "https");
    set(CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
    set(CURLOPT_URL, address.origin.c_str());
    set(CURLOPT_PATH_AS_IS, 1L);
    set(CURLOPT_REQUEST_TARGET, address.target.c_str());
}

void CurlTransfer::setMethodAndBody()
{
    if (isWrite(m_request) || m_request.body) {
        const std::string_view body = m_request.body ? *m_request.body : std::string_view("");
        set(CURLOPT_POST, 1L);
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
        set(CURLOPT_POSTFIELDS, body.data());
        set(CURLOPT_CUSTOMREQUEST, m_request.method.c_str());
    }
    if (isWrite(m_request)) {
        // libcurl sends a request again when a kept connection turns out to be dead, or when an
        // HTTP/2 server refuses the stream. On a connection of its own it can't do either.
        set(CURLOPT_FRESH_CONNECT, 1L);
        set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    } else {
        set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
    }
}

void CurlTransfer::setHeaders(const std::vector<HttpHeader> &conditions)
{
    // A name and nothing behind it takes back what libcurl adds by itself.
    appendHeader("Accept:");
    appendHeader("Expect:");
    appendHeaders(m_request.headers);
    appendHeaders(conditions);
    set(CURLOPT_HTTPHEADER, m_headers.get());
}

void CurlTransfer::appendHeaders(const std::vector<HttpHeader> &headers)
{
    for (const HttpHeader &header : headers) {
        if (header.name.empty() || !isClean(header.name) || !isClean(header.value)) {
            throw transportError(TransportFailure::Other);
        }
        appendHeader(header.value.empty() ? header.name + ';' : header.name + ": " + header.value);
    }
}

void CurlTransfer::appendHeader(const std::string &line)
{
    curl_slist *longer = curl_slist_append(m_headers.get(), line.c_str());
    if (longer == nullptr) {
        throw transportError(TransportFailure::Other);
    }
    static_cast<void>(m_headers.release());
    m_headers.reset(longer);
}

void CurlTransfer::setSecurity(const Authorities &authorities)
{
    set(CURLOPT_SSL_VERIFYPEER, 1L);
    set(CURLOPT_SSL_VERIFYHOST, 2L);
    set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    // libcurl itself need not read any.
    set(CURLOPT_CAINFO, static_cast<const char *>(nullptr));
    set(CURLOPT_CAPATH, static_cast<const char *>(nullptr));
    set(CURLOPT_SSL_CTX_FUNCTION, &useAuthorities);
    // libcurl's interface has no const; nothing is changed.
    set(CURLOPT_SSL_CTX_DATA, &authorities);
}

CurlTransfer::Clock::time_point CurlTransfer::lastProgress(bool sharesConnection)
{
    const std::uint64_t moved = bytesMoved(sharesConnection);
    if (moved != m_bytesMoved) {
        m_bytesMoved = moved;
        m_lastProgress = Clock::now();
    }
    return m_lastProgress;
}

std::uint64_t CurlTransfer::bytesMoved(bool sharesConnection) const
{
    curl_off_t uploaded = 0;
    curl_easy_getinfo(m_handle.get(), CURLINFO_SIZE_UPLOAD_T, &uploaded);
    std::uint64_t moved = m_reply.bytesRead() + static_cast<std::uint64_t>(uploaded);
    if (isWrite(m_request) || !sharesConnection) {
        // libcurl tells of headers line by line; the connection knows of every byte.
        moved += connectionBytes(m_handle.get());
    }
    return moved;
}

bool CurlTransfer::usedHttp2() const
{
    long version = 0;
    curl_easy_getinfo(m_handle.get(), CURLINFO_HTTP_VERSION, &version);
    return version == CURL_HTTP_VERSION_2_0;
}

HttpResult CurlTransfer::finish(CURLcode code)
{
    if (m_reply.isSettled()) {
        return m_reply.take();
    }
    if (m_reply.isTooLarge()) {
        return transportError(TransportFailure::ReplyTooLarge);
    }
    if (isUnreadableReply(code) && !m_reply.hasStarted()) {
        return HttpReply{};
    }
    if (code != CURLE_OK) {
        return transportError(code);
    }
    // To libcurl an end within the headers is an end like any other.
    if (!m_reply.hasHeaders()) {
        return transportError(TransportFailure::ConnectionLost);
    }
    return m_reply.take();
}

} // namespace trellisport::platform
