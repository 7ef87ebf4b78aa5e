#include "PracticeService/Push/PushPost.h"

#include <curl/curl.h>

#include <memory>

namespace trellisport::practice {

namespace {

constexpr long patienceSeconds = 10;
constexpr long connectSeconds = 4;
constexpr long gone = 410;
constexpr long notFound = 404;

struct Closer {
    void operator()(CURL *curl) const { curl_easy_cleanup(curl); }
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};

std::size_t ignore(char * /*data*/, std::size_t size, std::size_t count, void * /*nothing*/)
{
    return size * count;
}

} // namespace

PushOutcome post(const PushPost &message, const Vapid &sender, const std::string &authority)
{
    const std::unique_ptr<CURL, Closer> curl(curl_easy_init());
    const auto proof = sender.authorization(message.endpoint, Vapid::Clock::now());
    if (!curl || !proof) {
        return PushOutcome::Failed;
    }
    const std::string authorization = "Authorization: " + *proof;
    std::unique_ptr<curl_slist, Closer> headers;
    for (const char *header :
         {"Content-Type: application/octet-stream", "Content-Encoding: aes128gcm", "TTL: 86400",
          message.isUrgent ? "Urgency: high" : "Urgency: normal", authorization.c_str()}) {
        headers.reset(curl_slist_append(headers.release(), header));
    }
    curl_easy_setopt(curl.get(), CURLOPT_URL, message.endpoint.c_str());
    curl_easy_setopt(curl.get(), CURLOPT_PROTOCOLS_STR, "https");
    curl_easy_setopt(curl.get(), CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(curl.get(), CURLOPT_POSTFIELDS, message.content.constData());
    curl_easy_setopt(curl.get(), CURLOPT_POSTFIELDSIZE, static_cast<long>(message.content.size()));
    curl_easy_setopt(curl.get(), CURLOPT_TIMEOUT, patienceSeconds);
    curl_easy_setopt(curl.get(), CURLOPT_CONNECTTIMEOUT, connectSeconds);
    curl_easy_setopt(curl.get(), CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl.get(), CURLOPT_WRITEFUNCTION, &ignore);
    if (!authority.empty()) {
        // Beside the system's own, which stay in their folder.
        curl_easy_setopt(curl.get(), CURLOPT_CAINFO, authority.c_str());
    }
    long status = 0;
    if (curl_easy_perform(curl.get()) != CURLE_OK ||
        curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &status) != CURLE_OK) {
        return PushOutcome::Failed;
    }
    if (status == gone || status == notFound) {
        return PushOutcome::Gone;
    }
    return status >= 200 && status <= 299 ? PushOutcome::Accepted : PushOutcome::Failed;
}

} // namespace trellisport::practice
