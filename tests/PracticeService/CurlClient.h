#pragma once

#include <curl/curl.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace trellisport::practice {

/// A client that trusts one authority and nothing else, and keeps its connection.
class CurlClient {
public:
    /// Empty: what the system trusts.
    explicit CurlClient(std::string authority);

    struct Reply {
        CURLcode code = CURLE_OK;
        long status = 0;
        std::string body;
        std::map<std::string, std::string> headers; ///< names in lower case
    };
    Reply get(const std::string &url, const std::vector<std::string> &headers = {});
    Reply head(const std::string &url);
    Reply send(const std::string &method, const std::string &url, const std::string &body);

    /// Sends bytes as they are over TLS and waits for no reply. They may arrive in part only, when
    /// the other side has closed; false when there was no connection.
    [[nodiscard]] bool sendOnly(const std::string &url, const std::string &bytes);

    [[nodiscard]] CURL *handle() const noexcept { return m_curl.get(); }

private:
    void prepare(const std::string &url);
    Reply perform(const std::string &url, const std::vector<std::string> &headers);

    struct Closer {
        void operator()(CURL *curl) const { curl_easy_cleanup(curl); }
    };
    std::unique_ptr<CURL, Closer> m_curl;
    std::string m_authority;
};

} // namespace trellisport::practice
