#include "PracticeService/Certificates.h"

#include <QByteArray>
#include <QFile>
#include <QSaveFile>

#include <openssl/bio.h>
#include <openssl/bn.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <memory>
#include <string>

namespace trellisport::practice {

namespace {

using std::chrono::system_clock;
namespace fs = std::filesystem;

template <auto release>
struct Releaser {
    template <typename Object>
    void operator()(Object *object) const
    {
        release(object);
    }
};
using Bio = std::unique_ptr<BIO, Releaser<BIO_free>>;
using Key = std::unique_ptr<EVP_PKEY, Releaser<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Releaser<X509_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Releaser<X509_EXTENSION_free>>;
using BigNumber = std::unique_ptr<BIGNUM, Releaser<BN_free>>;

struct Identity {
    Key key;
    Certificate certificate;
};

constexpr std::chrono::days authorityLife(3650);
// Stricter clients refuse server certificates that live longer than 398 days.
constexpr std::chrono::days serverLife(390);
constexpr std::chrono::days renewAhead(30);

void require(bool done, const char *what)
{
    if (!done)
        throw CertificateError(std::string("Cannot make the certificates: ") + what + '.');
}

QByteArray contentOf(const fs::path &path)
{
    QFile file(QString::fromStdString(path.string()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const fs::path &path, const Bio &content, bool secret)
{
    char *bytes = nullptr;
    const long size = BIO_get_mem_data(content.get(), &bytes);
    QSaveFile file(QString::fromStdString(path.string()));
    QFileDevice::Permissions mode = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    if (!secret)
        mode |= QFileDevice::ReadGroup | QFileDevice::ReadOther;
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(mode) ||
        file.write(bytes, size) != size || !file.commit()) {
        throw CertificateError("Cannot write " + path.string() + ": " +
                               file.errorString().toStdString() + '.');
    }
}

Bio readerOf(const QByteArray &content)
{
    return Bio(BIO_new_mem_buf(content.constData(), static_cast<int>(content.size())));
}

Identity load(const fs::path &certificate, const fs::path &key)
{
    const QByteArray certificateText = contentOf(certificate);
    const QByteArray keyText = contentOf(key);
    Identity identity;
    identity.certificate.reset(
        PEM_read_bio_X509(readerOf(certificateText).get(), nullptr, nullptr, nullptr));
    // A key with a pass phrase counts as unreadable; the default would ask for it on the terminal.
    const auto noPassPhrase = [](char *, int, int, void *) { return 0; };
    identity.key.reset(
        PEM_read_bio_PrivateKey(readerOf(keyText).get(), nullptr, noPassPhrase, nullptr));
    return identity;
}

bool isUsable(const Identity &identity, const Identity &issuer, system_clock::time_point now)
{
    if (!identity.key || !identity.certificate || !issuer.certificate)
        return false;
    std::time_t start = system_clock::to_time_t(now);
    std::time_t until = system_clock::to_time_t(now + renewAhead);
    const Key issuerKey(X509_get_pubkey(issuer.certificate.get()));
    return X509_check_private_key(identity.certificate.get(), identity.key.get()) == 1 &&
           X509_verify(identity.certificate.get(), issuerKey.get()) == 1 &&
           X509_cmp_time(X509_get0_notBefore(identity.certificate.get()), &start) < 0 &&
           X509_cmp_time(X509_get0_notAfter(identity.certificate.get()), &until) > 0;
}

void extend(X509 *certificate, X509 *issuer, int kind, const char *value)
{
    X509V3_CTX context;
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    const Extension extension(X509V3_EXT_conf_nid(nullptr, &context, kind, value));
    require(extension && X509_add_ext(certificate, extension.get(), -1) == 1, "an extension");
}

/// A certificate without its purpose and its signature.
Identity blank(const char *name, X509 *issuer, std::chrono::days life, system_clock::time_point now)
{
    Identity identity;
    identity.key.reset(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"));
    identity.certificate.reset(X509_new());
    X509 *certificate = identity.certificate.get();
    require(identity.key && certificate != nullptr, "a key");
    require(X509_set_version(certificate, X509_VERSION_3) == 1, "the version");

    const BigNumber serial(BN_new());
    require(BN_rand(serial.get(), 127, BN_RAND_TOP_ONE, BN_RAND_BOTTOM_ANY) == 1 &&
                BN_to_ASN1_INTEGER(serial.get(), X509_get_serialNumber(certificate)) != nullptr,
            "a serial number");
    // A day back, for clients whose clock is behind.
    const std::time_t start = system_clock::to_time_t(now - std::chrono::days(1));
    const std::time_t end = system_clock::to_time_t(now + life);
    require(ASN1_TIME_set(X509_getm_notBefore(certificate), start) != nullptr &&
                ASN1_TIME_set(X509_getm_notAfter(certificate), end) != nullptr,
            "the dates");
    X509_NAME *subject = X509_get_subject_name(certificate);
    require(X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_UTF8,
                                       reinterpret_cast<const unsigned char *>(name), -1, -1,
                                       0) == 1,
            "the name");
    X509 *signer = issuer != nullptr ? issuer : certificate;
    require(X509_set_issuer_name(certificate, X509_get_subject_name(signer)) == 1 &&
                X509_set_pubkey(certificate, identity.key.get()) == 1,
            "the public key");
    extend(certificate, signer, NID_subject_key_identifier, "hash");
    extend(certificate, signer, NID_authority_key_identifier, "keyid:always");
    return identity;
}

void sign(const Identity &identity, const Key &signer)
{
    require(X509_sign(identity.certificate.get(), signer.get(), EVP_sha256()) > 0, "the signature");
}

Identity makeAuthority(system_clock::time_point now)
{
    Identity authority = blank("Trellisport practice authority", nullptr, authorityLife, now);
    X509 *certificate = authority.certificate.get();
    extend(certificate, certificate, NID_basic_constraints, "critical,CA:TRUE,pathlen:0");
    extend(certificate, certificate, NID_key_usage, "critical,keyCertSign,cRLSign");
    sign(authority, authority.key);
    return authority;
}

Identity makeServer(const Identity &authority, system_clock::time_point now)
{
    X509 *issuer = authority.certificate.get();
    Identity server = blank("localhost", issuer, serverLife, now);
    X509 *certificate = server.certificate.get();
    extend(certificate, issuer, NID_basic_constraints, "critical,CA:FALSE");
    extend(certificate, issuer, NID_key_usage, "critical,digitalSignature");
    extend(certificate, issuer, NID_ext_key_usage, "serverAuth");
    extend(certificate, issuer, NID_subject_alt_name, "IP:127.0.0.1,IP:::1,DNS:localhost");
    sign(server, authority.key);
    return server;
}

void save(const Identity &identity, const fs::path &certificate, const fs::path &key)
{
    const Bio certificateText(BIO_new(BIO_s_mem()));
    const Bio keyText(BIO_new(BIO_s_mem()));
    require(PEM_write_bio_X509(certificateText.get(), identity.certificate.get()) == 1 &&
                PEM_write_bio_PrivateKey(keyText.get(), identity.key.get(), nullptr, nullptr, 0,
                                         nullptr, nullptr) == 1,
            "the PEM text");
    writeFile(key, keyText, true);
    writeFile(certificate, certificateText, false);
}

} // namespace

CertificateFiles ensureCertificates(const fs::path &folder, system_clock::time_point now)
{
    CertificateFiles files{folder / "ca.pem", folder / "ca-key.pem", folder / "server.pem",
                           folder / "server-key.pem"};
    Identity authority = load(files.authority, files.authorityKey);
    if (!isUsable(authority, authority, now)) {
        authority = makeAuthority(now);
        save(authority, files.authority, files.authorityKey);
    }
    const Identity server = load(files.server, files.serverKey);
    if (!isUsable(server, authority, now))
        save(makeServer(authority, now), files.server, files.serverKey);
    return files;
}

} // namespace trellisport::practice
