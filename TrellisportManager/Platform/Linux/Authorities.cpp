#include "Platform/Linux/Authorities.h"

#include "Platform/Linux/CurlHttpSession.h"

#include <curl/curl.h>
#include <openssl/err.h>
#include <openssl/x509_vfy.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace trellisport::platform {

namespace {

/// Where the network library was built to look for the system's authorities; empty for nowhere.
struct SystemPlaces {
    std::string file;
    std::string folder;
};

SystemPlaces systemPlaces()
{
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle(curl_easy_init(),
                                                                     &curl_easy_cleanup);
    const auto place = [&](CURLINFO which) {
        const char *path = nullptr;
        if (handle) {
            curl_easy_getinfo(handle.get(), which, &path);
        }
        return std::string(path == nullptr ? "" : path);
    };
    return {place(CURLINFO_CAINFO), place(CURLINFO_CAPATH)};
}

/// Whether certificates can be looked up in a folder: there they stand under a number of their
/// names' and a counter.
bool isSearchable(const std::string &folder)
{
    std::error_code error;
    const std::filesystem::directory_iterator entries(folder, error);
    return !error && std::any_of(begin(entries), end(entries), [](const auto &entry) {
        const std::string name = entry.path().filename().string();
        constexpr std::size_t digits = 8;
        return name.size() == digits + 2 && name.ends_with(".0") &&
               name.find_first_not_of("0123456789abcdef") == digits;
    });
}

} // namespace

Authorities::Authorities(const CurlHttpOptions &options)
    : m_store(X509_STORE_new())
{
    if (!m_store) {
        m_areIncomplete = true;
        return;
    }
    // As the network library does: an authority below the root is enough if it was given.
    X509_STORE_set_flags(m_store.get(), X509_V_FLAG_TRUSTED_FIRST | X509_V_FLAG_PARTIAL_CHAIN);
    const std::string &ownChoice = options.systemAuthorities;
    const bool hasSystems =
        ownChoice.empty() ? addSystems() : addFolder(ownChoice) || add(ownChoice);
    if (options.authorityFile.empty()) {
        m_areIncomplete = !ownChoice.empty() && !hasSystems;
    } else {
        m_areIncomplete = !add(options.authorityFile);
    }
    ERR_clear_error();
}

bool Authorities::addSystems()
{
    const SystemPlaces system = systemPlaces();
    return addFolder(system.folder) || add(system.file);
}

bool Authorities::addFolder(const std::string &folder)
{
    return isSearchable(folder) && X509_STORE_load_path(m_store.get(), folder.c_str()) == 1;
}

bool Authorities::add(const std::string &file)
{
    return !file.empty() && X509_STORE_load_file(m_store.get(), file.c_str()) == 1;
}

void Authorities::applyTo(SSL_CTX *context) const
{
    SSL_CTX_set1_cert_store(context, m_store.get());
}

} // namespace trellisport::platform
