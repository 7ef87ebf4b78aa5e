#pragma once

#include <curl/curl.h>

#include <memory>
#include <string>

namespace trellisport::bench {

/// The peer of one exchange: a libcurl handle that is used again and again, with the options that
/// the application's session sets for a read. Blocks; one thread.
class EasyHandle {
public:
    EasyHandle(const std::string &url, const std::string &authorityFile);

    /// The body of the reply; throws std::runtime_error when it can't be had.
    [[nodiscard]] std::string get();

private:
    static std::size_t takeBody(char *bytes, std::size_t size, std::size_t count, void *body);

    struct HandleDeleter {
        void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
    };
    struct ListDeleter {
        void operator()(curl_slist *list) const { curl_slist_free_all(list); }
    };

    std::unique_ptr<CURL, HandleDeleter> m_handle;
    std::unique_ptr<curl_slist, ListDeleter> m_headers;
    std::string m_body;
};

} // namespace trellisport::bench
