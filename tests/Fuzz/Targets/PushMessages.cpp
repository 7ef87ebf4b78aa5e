#include "Fuzz/Targets/Must.h"
#include "Platform/Linux/Push/WebPushDecryption.h"
#include "Platform/Toolkit/RemoteNotification.h"

#include <QByteArray>
#include <QString>

#include <cstdint>

// What a push service may deliver: a message's content, and bytes that ought to be an encrypted
// one.

namespace {

using namespace trellisport::platform;

/// The key pair of the example in RFC 8291, and another secret than there.
PushKeys keys()
{
    const auto bytes = [](const char *text) {
        return QByteArray::fromBase64(text, QByteArray::Base64UrlEncoding);
    };
    return {
        bytes("q1dXpw3UpT5VOmu_cf_v6ih07Aems3njxI-JWgLcM94"),
        bytes("BCVxsr7N_eNgVRqvHtD0zTZsEc6-VV-JvLexhqUzORcxaOzi6-AYWXvTBHm4bjyPjs7Vd8pZGH6SRpkNto"
              "IAiw4"),
        QByteArray(PushKeys::authSecretSize, '\x2A')};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const PushKeys pushKeys = keys();
    const QByteArray message(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const RemoteNotification notification =
        parseRemoteNotification(message, QStringLiteral("Title"));
    must(!notification.title.isEmpty(), "a notification has a title");
    must(notification.title.size() <= longestTitle && notification.body.size() <= longestBody,
         "what is shown is bounded");
    must(!notification.title.contains(QLatin1Char('\n')), "the title is one line");
    must(!decryptPushMessage(pushKeys, message), "no random bytes decrypt");
    return 0;
}
