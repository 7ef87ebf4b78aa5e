#pragma once

#include <openssl/ssl.h>

#include <memory>
#include <string>

namespace trellisport::platform {

struct CurlHttpOptions;

/// The certificate authorities that a session's connections trust: the system's and those added,
/// shared by all connections. One thread at a time.
class Authorities {
public:
    /// Finds them. The system's folder holds them one by one, and only the one that is needed is
    /// read, when it is needed; reading all from the system's file, where there is no such folder,
    /// takes longer than all else in connecting.
    explicit Authorities(const CurlHttpOptions &options);

    /// Whether a file was named, as the system's or to be added, that could not be read. A missing
    /// system's is harmless where others are added: they may be enough.
    [[nodiscard]] bool areIncomplete() const { return m_areIncomplete; }

    /// Makes the context trust these and no others. The context may live longer than this.
    void applyTo(SSL_CTX *context) const;

private:
    struct StoreDeleter {
        void operator()(X509_STORE *store) const { X509_STORE_free(store); }
    };

    [[nodiscard]] bool addSystems();
    [[nodiscard]] bool addFolder(const std::string &folder);
    [[nodiscard]] bool add(const std::string &file);

    std::unique_ptr<X509_STORE, StoreDeleter> m_store;
    bool m_areIncomplete = false;
};

} // namespace trellisport::platform
