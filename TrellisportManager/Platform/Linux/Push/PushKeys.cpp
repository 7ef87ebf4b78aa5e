#include "Platform/Linux/Push/PushKeys.h"

#include "Platform/Linux/Push/KeyAgreement.h"
#include "Platform/Linux/Push/OpenSsl.h"

#include <openssl/core_names.h>
#include <openssl/ec.h>
#include <openssl/rand.h>

namespace trellisport::platform {

namespace {

unsigned char *bytes(QByteArray &array)
{
    return reinterpret_cast<unsigned char *>(array.data());
}

} // namespace

std::optional<PushKeys> PushKeys::generate()
{
    const openssl::Key key(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"));
    BIGNUM *number = nullptr;
    if (!key || EVP_PKEY_get_bn_param(key.get(), OSSL_PKEY_PARAM_PRIV_KEY, &number) != 1) {
        return std::nullopt;
    }
    const openssl::Number privateNumber(number);
    PushKeys keys{QByteArray(privateKeySize, '\0'), QByteArray(publicKeySize, '\0'),
                  QByteArray(authSecretSize, '\0')};
    std::size_t size = 0;
    if (BN_bn2binpad(privateNumber.get(), bytes(keys.privateKey), privateKeySize) !=
            privateKeySize ||
        EVP_PKEY_get_octet_string_param(key.get(), OSSL_PKEY_PARAM_PUB_KEY, bytes(keys.publicKey),
                                        publicKeySize, &size) != 1 ||
        size != publicKeySize || RAND_bytes(bytes(keys.authSecret), authSecretSize) != 1) {
        return std::nullopt;
    }
    return keys;
}

bool PushKeys::isValid() const
{
    if (authSecret.size() != authSecretSize) {
        return false;
    }
    const openssl::Key pair = keyPair(privateKey, publicKey);
    const openssl::KeyContext context(EVP_PKEY_CTX_new(pair.get(), nullptr));
    return pair && context && EVP_PKEY_check(context.get()) == 1;
}

} // namespace trellisport::platform
