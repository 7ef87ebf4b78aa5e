#include "Platform/Linux/ConnectionBytes.h"

#include <openssl/bio.h>
#include <openssl/ssl.h>

namespace trellisport::platform {

std::uint64_t connectionBytes(CURL *transfer)
{
    const curl_tlssessioninfo *info = nullptr;
    if (curl_easy_getinfo(transfer, CURLINFO_TLS_SSL_PTR, &info) != CURLE_OK || info == nullptr ||
        info->backend != CURLSSLBACKEND_OPENSSL || info->internals == nullptr) {
        return 0;
    }
    const auto *ssl = static_cast<const SSL *>(info->internals);
    return BIO_number_read(SSL_get_rbio(ssl)) + BIO_number_written(SSL_get_wbio(ssl));
}

} // namespace trellisport::platform
