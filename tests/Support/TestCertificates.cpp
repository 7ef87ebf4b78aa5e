#include "Support/TestCertificates.h"

#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>

namespace trellisport::test {

namespace {

constexpr long day = 24L * 60 * 60;

void check(bool succeeded)
{
    if (!succeeded) {
        throw std::runtime_error("a test certificate could not be made");
    }
}

KeyPointer makeKey()
{
    KeyPointer key(EVP_EC_gen("P-256"));
    check(key != nullptr);
    return key;
}

void addExtension(X509 *certificate, X509 *issuer, int kind, const char *value)
{
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    X509_EXTENSION *extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value);
    check(extension != nullptr);
    const int added = X509_add_ext(certificate, extension, -1);
    X509_EXTENSION_free(extension);
    check(added == 1);
}

/// A certificate for the key, valid from and to so many days from now, not yet signed.
CertificatePointer makeCertificate(EVP_PKEY *key, const char *commonName, long from, long to)
{
    static long serial = 0;
    CertificatePointer certificate(X509_new());
    X509 *raw = certificate.get();
    check(raw != nullptr && X509_set_version(raw, X509_VERSION_3) == 1);
    check(ASN1_INTEGER_set(X509_get_serialNumber(raw), ++serial) == 1);
    check(X509_gmtime_adj(X509_getm_notBefore(raw), from * day) != nullptr);
    check(X509_gmtime_adj(X509_getm_notAfter(raw), to * day) != nullptr);
    check(X509_set_pubkey(raw, key) == 1);
    check(X509_NAME_add_entry_by_txt(X509_get_subject_name(raw), "CN", MBSTRING_UTF8,
                                     reinterpret_cast<const unsigned char *>(commonName), -1, -1,
                                     0) == 1);
    return certificate;
}

void sign(X509 *certificate, X509 *issuer, EVP_PKEY *issuerKey)
{
    check(X509_set_issuer_name(certificate, X509_get_subject_name(issuer)) == 1);
    check(X509_sign(certificate, issuerKey, EVP_sha256()) != 0);
}

CertificatePointer makeAuthority(EVP_PKEY *key, const char *name)
{
    CertificatePointer certificate = makeCertificate(key, name, -1, 2);
    addExtension(certificate.get(), certificate.get(), NID_basic_constraints, "critical,CA:TRUE");
    addExtension(certificate.get(), certificate.get(), NID_key_usage, "critical,keyCertSign");
    sign(certificate.get(), certificate.get(), key);
    return certificate;
}

std::string writeFile(X509 *certificate)
{
    std::string path =
        (std::filesystem::temp_directory_path() / "trellisport-authority-XXXXXX").string();
    const int descriptor = mkstemp(path.data());
    check(descriptor >= 0);
    FILE *file = fdopen(descriptor, "w");
    check(file != nullptr);
    const bool written = PEM_write_X509(file, certificate) == 1;
    check(fclose(file) == 0 && written);
    return path;
}

} // namespace

const TestCertificates &TestCertificates::instance()
{
    static const TestCertificates certificates;
    return certificates;
}

TestCertificates::TestCertificates(const char *name)
    : m_key(makeKey())
    , m_certificate(makeAuthority(m_key.get(), name))
    , m_authorityFile(writeFile(m_certificate.get()))
{
}

TestCertificates::~TestCertificates()
{
    std::error_code ignored;
    std::filesystem::remove(m_authorityFile, ignored);
}

ServerCredentials TestCertificates::issue(Identity identity) const
{
    const bool expired = identity == Identity::Expired;
    const bool early = identity == Identity::NotYetValid;
    ServerCredentials credentials{makeKey(), nullptr};
    credentials.certificate =
        makeCertificate(credentials.key.get(), "A test server", early ? 1 : -2, expired ? -1 : 2);
    X509 *certificate = credentials.certificate.get();
    addExtension(certificate, m_certificate.get(), NID_subject_alt_name,
                 identity == Identity::WrongHost ? "DNS:other.example"
                                                 : "DNS:localhost,IP:127.0.0.1");
    if (identity == Identity::SelfSigned) {
        sign(certificate, certificate, credentials.key.get());
    } else if (identity == Identity::UnknownAuthority) {
        const KeyPointer key = makeKey();
        sign(certificate, makeAuthority(key.get(), "Unknown authority").get(), key.get());
    } else {
        sign(certificate, m_certificate.get(), m_key.get());
    }
    return credentials;
}

} // namespace trellisport::test
