#include "Platform/Linux/Push/KeyAgreement.h"

#include <openssl/core_names.h>

#include <array>

namespace trellisport::platform {

namespace {

constexpr int pointSize = 65;
constexpr int numberSize = 32;

const unsigned char *bytes(const QByteArray &array)
{
    return reinterpret_cast<const unsigned char *>(array.data());
}

openssl::Key makeKey(const openssl::ParameterBuilder &builder, int selection)
{
    const openssl::Parameters parameters(OSSL_PARAM_BLD_to_param(builder.get()));
    const openssl::KeyContext context(EVP_PKEY_CTX_new_from_name(nullptr, "EC", nullptr));
    EVP_PKEY *key = nullptr;
    if (!parameters || !context || EVP_PKEY_fromdata_init(context.get()) != 1 ||
        EVP_PKEY_fromdata(context.get(), &key, selection, parameters.get()) != 1) {
        return nullptr;
    }
    return openssl::Key(key);
}

bool pushPoint(const openssl::ParameterBuilder &builder, const QByteArray &point)
{
    return point.size() == pointSize &&
           OSSL_PARAM_BLD_push_utf8_string(builder.get(), OSSL_PKEY_PARAM_GROUP_NAME, "P-256", 0) ==
               1 &&
           OSSL_PARAM_BLD_push_octet_string(builder.get(), OSSL_PKEY_PARAM_PUB_KEY, point.data(),
                                            pointSize) == 1;
}

/// The library changes nothing that it is given here, but its parameters are not const.
OSSL_PARAM octets(const char *name, const QByteArray &array)
{
    return OSSL_PARAM_construct_octet_string(name, const_cast<char *>(array.constData()),
                                             static_cast<std::size_t>(array.size()));
}

} // namespace

openssl::Key keyPair(const QByteArray &privateKey, const QByteArray &publicKey)
{
    if (privateKey.size() != numberSize) {
        return nullptr;
    }
    const openssl::ParameterBuilder builder(OSSL_PARAM_BLD_new());
    const openssl::Number number(BN_bin2bn(bytes(privateKey), numberSize, nullptr));
    if (!builder || !number || !pushPoint(builder, publicKey) ||
        OSSL_PARAM_BLD_push_BN(builder.get(), OSSL_PKEY_PARAM_PRIV_KEY, number.get()) != 1) {
        return nullptr;
    }
    return makeKey(builder, EVP_PKEY_KEYPAIR);
}

openssl::Key publicKey(const QByteArray &point)
{
    const openssl::ParameterBuilder builder(OSSL_PARAM_BLD_new());
    if (!builder || !pushPoint(builder, point)) {
        return nullptr;
    }
    return makeKey(builder, EVP_PKEY_PUBLIC_KEY);
}

std::optional<QByteArray> sharedSecret(const openssl::Key &mine, const openssl::Key &theirs)
{
    const openssl::KeyContext context(EVP_PKEY_CTX_new(mine.get(), nullptr));
    QByteArray secret(numberSize, '\0');
    std::size_t size = numberSize;
    if (!mine || !theirs || !context || EVP_PKEY_derive_init(context.get()) != 1 ||
        EVP_PKEY_derive_set_peer(context.get(), theirs.get()) != 1 ||
        EVP_PKEY_derive(context.get(), reinterpret_cast<unsigned char *>(secret.data()), &size) !=
            1 ||
        size != numberSize) {
        return std::nullopt;
    }
    return secret;
}

std::optional<QByteArray> hkdf(const QByteArray &salt, const QByteArray &secret,
                               const QByteArray &info, int size)
{
    const openssl::Kdf kdf(EVP_KDF_fetch(nullptr, "HKDF", nullptr));
    const openssl::KdfContext context(EVP_KDF_CTX_new(kdf.get()));
    std::array digest{'S', 'H', 'A', '2', '5', '6', '\0'};
    const std::array parameters{
        OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, digest.data(), 0),
        octets(OSSL_KDF_PARAM_KEY, secret), octets(OSSL_KDF_PARAM_SALT, salt),
        octets(OSSL_KDF_PARAM_INFO, info), OSSL_PARAM_construct_end()};
    QByteArray material(size, '\0');
    if (!context ||
        EVP_KDF_derive(context.get(), reinterpret_cast<unsigned char *>(material.data()),
                       static_cast<std::size_t>(size), parameters.data()) != 1) {
        return std::nullopt;
    }
    return material;
}

} // namespace trellisport::platform
