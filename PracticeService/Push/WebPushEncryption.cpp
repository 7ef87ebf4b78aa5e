#include "PracticeService/Push/WebPushEncryption.h"

#include "Platform/Linux/Push/KeyAgreement.h"

#include <openssl/rand.h>

namespace trellisport::practice {

namespace {

constexpr int saltSize = 16;
constexpr int tagSize = 16;
constexpr int contentKeySize = 16;
constexpr int nonceSize = 12;
constexpr int secretSize = 32;

const unsigned char *bytes(const QByteArray &array)
{
    return reinterpret_cast<const unsigned char *>(array.data());
}

unsigned char *bytes(QByteArray &array)
{
    return reinterpret_cast<unsigned char *>(array.data());
}

std::optional<QByteArray> sealRecord(const QByteArray &key, const QByteArray &nonce,
                                     const QByteArray &record)
{
    const platform::openssl::Cipher cipher(EVP_CIPHER_CTX_new());
    QByteArray sealed(record.size() + tagSize, '\0');
    int written = 0;
    int rest = 0;
    if (!cipher ||
        EVP_EncryptInit_ex2(cipher.get(), EVP_aes_128_gcm(), bytes(key), bytes(nonce), nullptr) !=
            1 ||
        EVP_EncryptUpdate(cipher.get(), bytes(sealed), &written, bytes(record),
                          static_cast<int>(record.size())) != 1 ||
        EVP_EncryptFinal_ex(cipher.get(), bytes(sealed) + written, &rest) != 1 ||
        EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_GCM_GET_TAG, tagSize,
                            bytes(sealed) + record.size()) != 1) {
        return std::nullopt;
    }
    return sealed;
}

} // namespace

std::optional<QByteArray> encryptPushMessage(const PushRecipient &recipient,
                                             const QByteArray &plaintext)
{
    const auto sender = platform::PushKeys::generate();
    QByteArray salt(saltSize, '\0');
    if (!sender || RAND_bytes(bytes(salt), saltSize) != 1) {
        return std::nullopt;
    }
    return encryptPushMessage(recipient, plaintext, *sender, salt);
}

std::optional<QByteArray> encryptPushMessage(const PushRecipient &recipient,
                                             const QByteArray &plaintext,
                                             const platform::PushKeys &sender,
                                             const QByteArray &salt)
{
    using platform::hkdf;
    const auto shared =
        platform::sharedSecret(platform::keyPair(sender.privateKey, sender.publicKey),
                               platform::publicKey(recipient.publicKey));
    if (!shared) {
        return std::nullopt;
    }
    const auto input = hkdf(
        recipient.authSecret, *shared,
        QByteArrayLiteral("WebPush: info\0") + recipient.publicKey + sender.publicKey, secretSize);
    if (!input) {
        return std::nullopt;
    }
    const auto key =
        hkdf(salt, *input, QByteArrayLiteral("Content-Encoding: aes128gcm\0"), contentKeySize);
    const auto nonce =
        hkdf(salt, *input, QByteArrayLiteral("Content-Encoding: nonce\0"), nonceSize);
    // A byte 2 ends the last record's content.
    const auto sealed = key && nonce ? sealRecord(*key, *nonce, plaintext + '\2') : std::nullopt;
    if (!sealed) {
        return std::nullopt;
    }
    return salt + QByteArrayLiteral("\0\0\x10\0") + static_cast<char>(sender.publicKey.size()) +
           sender.publicKey + *sealed;
}

} // namespace trellisport::practice
