#include "CurlClient.h"

#include <algorithm>
#include <cctype>

namespace trellisport::practice {

namespace {

std::size_t takeBody(char *data, std::size_t /*one*/, std::size_t size, void *body)
{
    static_cast<std::string *>(body)->append(data, size);
    return size;
}

std::size_t takeHeader(char *data, std::size_t /*one*/, std::size_t size, void *target)
{
    const std::string line(data, size);
    const auto colon = line.find(": ");
    if (colon != std::string::npos) {
        std::string name = line.substr(0, colon);
        std::transform(name.begin(), name.end(), name.begin(), [](unsigned char letter) {
            return static_cast<char>(std::tolower(letter));
        });
        auto &headers = *static_cast<std::map<std::string, std::string> *>(target);
        headers[name] = line.substr(colon + 2, line.find_last_not_of("\r\n") - colon - 1);
    }
    return size;
}

} // namespace

CurlClient::CurlClient(std::string authority)
    : m_curl(curl_easy_init())
    , m_authority(std::move(authority))
{
}

CurlClient::Reply CurlClient::get(const std::string &url, const std::vector<std::string> &headers)
{
    curl_easy_reset(m_curl.get());
    return perform(url, headers);
}

CurlClient::Reply CurlClient::head(const std::string &url)
{
    curl_easy_reset(m_curl.get());
    curl_easy_setopt(m_curl.get(), CURLOPT_NOBODY, 1L);
    return perform(url, {});
}

CurlClient::Reply CurlClient::send(const std::string &method, const std::string &url,
                                   const std::string &body)
{
    curl_easy_reset(m_curl.get());
    curl_easy_setopt(m_curl.get(), CURLOPT_CUSTOMREQUEST, method.c_str());
    curl_easy_setopt(m_curl.get(), CURLOPT_POSTFIELDSIZE_LARGE,
                     static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(m_curl.get(), CURLOPT_COPYPOSTFIELDS, body.c_str());
    return perform(url, {"Content-Type: application/json", "Expect:"});
}

void CurlClient::prepare(const std::string &url)
{
    CURL *curl = m_curl.get();
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, 30L);
    curl_easy_setopt(curl, CURLOPT_NOPROXY, "*");
    curl_easy_setopt(curl, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(curl, CURLOPT_SSL_VERIFYHOST, 2L);
    if (!m_authority.empty()) {
        curl_easy_setopt(curl, CURLOPT_CAINFO, m_authority.c_str());
        curl_easy_setopt(curl, CURLOPT_CAPATH, nullptr);
    }
}

bool CurlClient::sendOnly(const std::string &url, const std::string &bytes)
{
    CURL *curl = m_curl.get();
    curl_easy_reset(curl);
    prepare(url);
    curl_easy_setopt(curl, CURLOPT_CONNECT_ONLY, 1L);
    if (curl_easy_perform(curl) != CURLE_OK)
        return false;
    std::size_t sent = 0;
    for (std::size_t offset = 0; offset < bytes.size(); offset += sent) {
        sent = 0;
        const CURLcode code =
            curl_easy_send(curl, bytes.data() + offset, bytes.size() - offset, &sent);
        if (code != CURLE_OK && code != CURLE_AGAIN)
            break;
    }
    return true;
}

CurlClient::Reply CurlClient::perform(const std::string &url,
                                      const std::vector<std::string> &headers)
{
    Reply reply;
    CURL *curl = m_curl.get();
    curl_slist *list = nullptr;
    for (const std::string &header : headers)
        list = curl_slist_append(list, header.c_str());
    prepare(url);
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, list);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &takeBody);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &reply.body);
    curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, &takeHeader);
    curl_easy_setopt(curl, CURLOPT_HEADERDATA, &reply.headers);
    reply.code = curl_easy_perform(curl);
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &reply.status);
    curl_slist_free_all(list);
    return reply;
}

} // namespace trellisport::practice
