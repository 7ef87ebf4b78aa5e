#pragma once

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <memory>
#include <string>

namespace trellisport::test {

struct OpenSslDeleter {
    void operator()(EVP_PKEY *key) const { EVP_PKEY_free(key); }
    void operator()(X509 *certificate) const { X509_free(certificate); }
};
using KeyPointer = std::unique_ptr<EVP_PKEY, OpenSslDeleter>;
using CertificatePointer = std::unique_ptr<X509, OpenSslDeleter>;

/// What a server shows of itself.
enum class Identity {
    Trusted,          ///< for localhost and 127.0.0.1, by the test authority
    Expired,          ///< the same, out of date
    NotYetValid,      ///< the same, from the future
    WrongHost,        ///< by the test authority, for another name
    SelfSigned,       ///< for localhost, by itself
    UnknownAuthority, ///< for localhost, by an authority that nobody knows
};

struct ServerCredentials {
    KeyPointer key;
    CertificatePointer certificate;
};

/// A certificate authority, made anew with each object.
class TestCertificates {
public:
    /// The one that test servers use as a rule. Made on first use; any thread.
    [[nodiscard]] static const TestCertificates &instance();

    /// name: different for authorities that are trusted together.
    explicit TestCertificates(const char *name = "Test authority");
    TestCertificates(const TestCertificates &) = delete;
    TestCertificates &operator=(const TestCertificates &) = delete;
    /// Removes the file.
    ~TestCertificates();

    /// The authority's certificate as a PEM file.
    [[nodiscard]] const std::string &authorityFile() const { return m_authorityFile; }
    [[nodiscard]] ServerCredentials issue(Identity identity) const;

private:
    KeyPointer m_key;
    CertificatePointer m_certificate;
    std::string m_authorityFile;
};

} // namespace trellisport::test
