#include "SignedToken.h"

#include "Platform/Linux/Push/KeyAgreement.h"

#include <QJsonDocument>
#include <QRegularExpression>

#include <openssl/ecdsa.h>

#include <memory>

namespace trellisport::practice {

namespace {

using platform::openssl::Free;

QByteArray decoded(const QString &text)
{
    return QByteArray::fromBase64(text.toLatin1(), QByteArray::Base64UrlEncoding);
}

const unsigned char *bytes(const QByteArray &array)
{
    return reinterpret_cast<const unsigned char *>(array.constData());
}

bool verifies(const QByteArray &text, const QByteArray &numbers, const QByteArray &point)
{
    if (numbers.size() != 64)
        return false;
    const std::unique_ptr<ECDSA_SIG, Free<ECDSA_SIG_free>> signature(ECDSA_SIG_new());
    ECDSA_SIG_set0(signature.get(), BN_bin2bn(bytes(numbers), 32, nullptr),
                   BN_bin2bn(bytes(numbers) + 32, 32, nullptr));
    unsigned char *der = nullptr;
    const int size = i2d_ECDSA_SIG(signature.get(), &der);
    const auto key = platform::publicKey(point);
    const std::unique_ptr<EVP_MD_CTX, Free<EVP_MD_CTX_free>> digest(EVP_MD_CTX_new());
    const bool isGenuine =
        size > 0 && key &&
        EVP_DigestVerifyInit(digest.get(), nullptr, EVP_sha256(), nullptr, key.get()) == 1 &&
        EVP_DigestVerify(digest.get(), der, static_cast<std::size_t>(size), bytes(text),
                         static_cast<std::size_t>(text.size())) == 1;
    OPENSSL_free(der);
    return isGenuine;
}

} // namespace

std::optional<SignedToken> readAuthorization(const std::string &value)
{
    static const QRegularExpression shape(QStringLiteral(
        R"(^vapid t=(([A-Za-z0-9_-]+)\.([A-Za-z0-9_-]+))\.([A-Za-z0-9_-]+), k=([A-Za-z0-9_-]+)$)"));
    const auto match = shape.match(QString::fromStdString(value));
    if (!match.hasMatch())
        return std::nullopt;
    SignedToken token;
    token.header = QJsonDocument::fromJson(decoded(match.captured(2))).object();
    token.claims = QJsonDocument::fromJson(decoded(match.captured(3))).object();
    token.key = match.captured(5).toStdString();
    token.point = decoded(match.captured(5));
    token.isGenuine =
        verifies(match.captured(1).toLatin1(), decoded(match.captured(4)), token.point);
    return token;
}

} // namespace trellisport::practice
