#include "Platform/Linux/Push/WebPushDecryption.h"

#include "Platform/Linux/Push/KeyAgreement.h"
#include "Platform/Linux/Push/OpenSsl.h"

namespace trellisport::platform {

namespace {

// The message's head: salt, record size (four bytes), length of the key, key.
constexpr int saltSize = 16;
constexpr int keyLengthAt = saltSize + 4;
constexpr int keyAt = keyLengthAt + 1;
constexpr int headSize = keyAt + PushKeys::publicKeySize;
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

std::optional<QByteArray> openRecord(const QByteArray &key, const QByteArray &nonce,
                                     const QByteArray &sealed)
{
    const openssl::Cipher cipher(EVP_CIPHER_CTX_new());
    const auto size = static_cast<int>(sealed.size()) - tagSize;
    QByteArray tag = sealed.right(tagSize);
    QByteArray plain(size, '\0');
    int written = 0;
    int rest = 0;
    if (!cipher ||
        EVP_DecryptInit_ex2(cipher.get(), EVP_aes_128_gcm(), bytes(key), bytes(nonce), nullptr) !=
            1 ||
        EVP_DecryptUpdate(cipher.get(), bytes(plain), &written, bytes(sealed), size) != 1 ||
        EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_GCM_SET_TAG, tagSize, tag.data()) != 1 ||
        EVP_DecryptFinal_ex(cipher.get(), bytes(plain) + written, &rest) != 1) {
        return std::nullopt;
    }
    return plain;
}

/// Takes off the padding: zeros after a byte 2, which says that this record is the last.
std::optional<QByteArray> withoutPadding(QByteArray record)
{
    auto end = record.size();
    while (end > 0 && record.at(end - 1) == '\0') {
        --end;
    }
    if (end == 0 || record.at(end - 1) != '\2') {
        return std::nullopt;
    }
    record.truncate(end - 1);
    return record;
}

} // namespace

std::optional<QByteArray> decryptPushMessage(const PushKeys &keys, const QByteArray &message)
{
    if (message.size() <= headSize + tagSize ||
        message.at(keyLengthAt) != PushKeys::publicKeySize) {
        return std::nullopt;
    }
    const QByteArray salt = message.left(saltSize);
    const QByteArray sender = message.mid(keyAt, PushKeys::publicKeySize);
    const auto shared = sharedSecret(keyPair(keys.privateKey, keys.publicKey), publicKey(sender));
    if (!shared) {
        return std::nullopt;
    }
    const auto input =
        hkdf(keys.authSecret, *shared,
             QByteArrayLiteral("WebPush: info\0") + keys.publicKey + sender, secretSize);
    if (!input) {
        return std::nullopt;
    }
    const auto key =
        hkdf(salt, *input, QByteArrayLiteral("Content-Encoding: aes128gcm\0"), contentKeySize);
    const auto nonce =
        hkdf(salt, *input, QByteArrayLiteral("Content-Encoding: nonce\0"), nonceSize);
    if (!key || !nonce) {
        return std::nullopt;
    }
    auto record = openRecord(*key, *nonce, message.mid(headSize));
    return record ? withoutPadding(*std::move(record)) : std::nullopt;
}

} // namespace trellisport::platform
