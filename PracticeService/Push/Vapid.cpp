#include "PracticeService/Push/Vapid.h"

#include "Platform/Linux/Push/PrivateFile.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <openssl/bio.h>
#include <openssl/core_names.h>
#include <openssl/ecdsa.h>
#include <openssl/pem.h>

#include <memory>
#include <system_error>
#include <utility>

namespace trellisport::practice {

namespace {

using platform::openssl::Free;
using platform::openssl::Key;
using Bio = std::unique_ptr<BIO, Free<BIO_free>>;
using Digest = std::unique_ptr<EVP_MD_CTX, Free<EVP_MD_CTX_free>>;
using Signature = std::unique_ptr<ECDSA_SIG, Free<ECDSA_SIG_free>>;

constexpr std::size_t pointSize = 65;
constexpr int numberSize = 32;
constexpr int httpsPort = 443;

const QByteArray::Base64Options base64url =
    QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

/// The public key as an uncompressed point; empty when the key is none on P-256.
QByteArray pointOf(const Key &key)
{
    QByteArray point(static_cast<qsizetype>(pointSize), '\0');
    std::size_t size = 0;
    if (!key || EVP_PKEY_is_a(key.get(), "EC") != 1 ||
        EVP_PKEY_set_utf8_string_param(key.get(), OSSL_PKEY_PARAM_EC_POINT_CONVERSION_FORMAT,
                                       "uncompressed") != 1) {
        return {};
    }
    QByteArray group(64, '\0');
    if (EVP_PKEY_get_group_name(key.get(), group.data(), static_cast<std::size_t>(group.size()),
                                nullptr) != 1 ||
        qstrcmp(group.constData(), "prime256v1") != 0 ||
        EVP_PKEY_get_octet_string_param(key.get(), OSSL_PKEY_PARAM_PUB_KEY,
                                        reinterpret_cast<unsigned char *>(point.data()), pointSize,
                                        &size) != 1 ||
        size != pointSize) {
        return {};
    }
    return point;
}

Key readKey(const QByteArray &text)
{
    const Bio reader(BIO_new_mem_buf(text.constData(), static_cast<int>(text.size())));
    // A key with a pass phrase is none; the default would ask for it on the terminal.
    const auto noPassPhrase = [](char *, int, int, void *) { return 0; };
    return Key(reader ? PEM_read_bio_PrivateKey(reader.get(), nullptr, noPassPhrase, nullptr)
                      : nullptr);
}

Key makeKey(const platform::PrivateFile &file, const std::filesystem::path &path)
{
    Key key(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"));
    const Bio text(BIO_new(BIO_s_secmem()));
    if (!key || !text ||
        PEM_write_bio_PrivateKey(text.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr) !=
            1) {
        throw VapidError("Cannot make a key for push messages.");
    }
    char *bytes = nullptr;
    const long size = BIO_get_mem_data(text.get(), &bytes);
    if (!file.write(QByteArray::fromRawData(bytes, size)))
        throw VapidError("Cannot write " + path.string() + ".");
    return key;
}

/// ES256 as JSON Web Signature has it: both numbers one after the other, each in 32 bytes.
std::optional<QByteArray> sign(const Key &key, const QByteArray &text)
{
    const Digest digest(EVP_MD_CTX_new());
    const auto *const bytes = reinterpret_cast<const unsigned char *>(text.constData());
    const auto length = static_cast<std::size_t>(text.size());
    std::size_t size = 0;
    if (!digest ||
        EVP_DigestSignInit(digest.get(), nullptr, EVP_sha256(), nullptr, key.get()) != 1 ||
        EVP_DigestSign(digest.get(), nullptr, &size, bytes, length) != 1) {
        return std::nullopt;
    }
    QByteArray der(static_cast<qsizetype>(size), '\0');
    if (EVP_DigestSign(digest.get(), reinterpret_cast<unsigned char *>(der.data()), &size, bytes,
                       length) != 1) {
        return std::nullopt;
    }
    const auto *from = reinterpret_cast<const unsigned char *>(der.constData());
    const Signature signature(d2i_ECDSA_SIG(nullptr, &from, static_cast<long>(size)));
    QByteArray numbers(2L * numberSize, '\0');
    auto *const to = reinterpret_cast<unsigned char *>(numbers.data());
    if (!signature || BN_bn2binpad(ECDSA_SIG_get0_r(signature.get()), to, numberSize) < 0 ||
        BN_bn2binpad(ECDSA_SIG_get0_s(signature.get()), to + numberSize, numberSize) < 0) {
        return std::nullopt;
    }
    return numbers;
}

QString originOf(const std::string &endpoint)
{
    QUrl url(QString::fromStdString(endpoint));
    if (url.port() == httpsPort)
        url.setPort(-1);
    return url.toString(QUrl::FullyEncoded | QUrl::RemoveUserInfo | QUrl::RemovePath |
                        QUrl::RemoveQuery | QUrl::RemoveFragment);
}

QByteArray part(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact).toBase64(base64url);
}

} // namespace

Vapid::Vapid(const std::filesystem::path &file, std::string contact)
    : m_contact(std::move(contact))
{
    const platform::PrivateFile kept(QString::fromStdString(file.string()));
    const std::optional<QByteArray> text = kept.read();
    std::error_code error;
    if (!text && std::filesystem::exists(std::filesystem::symlink_status(file, error)))
        throw VapidError("Cannot read " + file.string() + ".");
    m_key = readKey(text.value_or(QByteArray()));
    QByteArray point = pointOf(m_key);
    if (point.isEmpty()) {
        m_key = makeKey(kept, file);
        point = pointOf(m_key);
    }
    m_publicKey = point.toBase64(base64url).toStdString();
}

std::optional<std::string> Vapid::authorization(const std::string &endpoint,
                                                Clock::time_point now) const
{
    const auto until =
        std::chrono::floor<std::chrono::seconds>(now + life).time_since_epoch().count();
    const QByteArray claims = part({{QStringLiteral("typ"), QStringLiteral("JWT")},
                                    {QStringLiteral("alg"), QStringLiteral("ES256")}}) +
                              '.' +
                              part({{QStringLiteral("aud"), originOf(endpoint)},
                                    {QStringLiteral("exp"), static_cast<qint64>(until)},
                                    {QStringLiteral("sub"), QString::fromStdString(m_contact)}});
    const auto signature = sign(m_key, claims);
    if (!signature)
        return std::nullopt;
    return "vapid t=" + (claims + '.' + signature->toBase64(base64url)).toStdString() +
           ", k=" + m_publicKey;
}

} // namespace trellisport::practice
