#include "Exchange/EasyHandle.h"

#include <stdexcept>
#include <utility>

namespace trellisport::bench {

EasyHandle::EasyHandle(const std::string &url, const std::string &authorityFile)
    : m_handle(curl_easy_init())
{
    for (const char *header : {"Accept:", "Expect:", "Content-Type: application/json"}) {
        curl_slist *longer = curl_slist_append(m_headers.get(), header);
        static_cast<void>(m_headers.release());
        m_headers.reset(longer);
    }
    CURL *handle = m_handle.get();
    curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_CAINFO, authorityFile.c_str());
    curl_easy_setopt(handle, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    curl_easy_setopt(handle, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, m_headers.get());
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &EasyHandle::takeBody);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &m_body);
}

std::string EasyHandle::get()
{
    m_body.clear();
    const CURLcode code = curl_easy_perform(m_handle.get());
    if (code != CURLE_OK) {
        throw std::runtime_error(curl_easy_strerror(code));
    }
    return std::exchange(m_body, {});
}

std::size_t EasyHandle::takeBody(char *bytes, std::size_t size, std::size_t count, void *body)
{
    static_cast<std::string *>(body)->append(bytes, size * count);
    return size * count;
}

} // namespace trellisport::bench
