#include "Fuzz/Targets/Must.h"
#include "Fuzz/Targets/PushExample.h"
#include "Platform/Linux/Push/WebPushDecryption.h"
#include "PracticeService/Push/WebPushEncryption.h"

#include <cstdint>

// Encrypted messages on a hostile way. The first three bytes say where one is changed, and how; the
// rest is what it carries.

namespace {

constexpr qsizetype recordSizeAt = 16;
constexpr qsizetype keyLengthAt = 20;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace trellisport;
    static const platform::PushKeys keys = pushExample::receiver();
    static const platform::PushKeys sender = pushExample::sender();
    if (size < 3) {
        return 0;
    }
    const QByteArray content(reinterpret_cast<const char *>(data) + 3,
                             static_cast<qsizetype>(size - 3));
    const auto sealed = practice::encryptPushMessage({keys.publicKey, keys.authSecret}, content,
                                                     sender, QByteArray(16, '\x5A'));
    must(sealed.has_value(), "every content can be sealed");
    must(platform::decryptPushMessage(keys, *sealed) == content,
         "what was sealed for us opens to what it was");

    QByteArray changed = *sealed;
    const qsizetype at = (data[0] * 256 + data[1]) % changed.size();
    changed[at] = static_cast<char>(static_cast<unsigned char>(changed[at]) ^ data[2]);
    const bool isHarmless =
        changed == *sealed || (at >= recordSizeAt && at < keyLengthAt); // named, not held against
    must(platform::decryptPushMessage(keys, changed).has_value() == isHarmless,
         "what was changed on its way does not open");
    must(!platform::decryptPushMessage(keys, sealed->left(at)), "what was cut does not open");
    return 0;
}
