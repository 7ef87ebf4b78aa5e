#include "Fuzz/Targets/Must.h"
#include "Fuzz/Targets/PushExample.h"
#include "Platform/Linux/Push/PushEndpoint.h"
#include "PracticeService/Push/DeviceToken.h"

#include <QString>

#include <cstdint>
#include <string>

// An address that a push service names as ours, and the token that the service gets: the input is
// taken for either.

namespace {

using namespace trellisport;

void checkEndpoint(const QByteArray &text)
{
    const QString endpoint = QString::fromUtf8(text);
    if (!platform::isPushEndpoint(endpoint)) {
        return;
    }
    must(endpoint.startsWith(QLatin1String("https:"), Qt::CaseInsensitive),
         "messages come over a secure connection only");
    must(endpoint.toUtf8().size() <= 1000, "an endpoint is bounded");
    static const platform::PushKeys keys = pushExample::receiver();
    const std::vector<std::uint8_t> token = platform::deviceToken(endpoint, keys);
    const QByteArray bytes(reinterpret_cast<const char *>(token.data()),
                           static_cast<qsizetype>(token.size()));
    const auto target = practice::readDeviceToken(bytes.toHex().toStdString());
    must(target.has_value(), "a token of ours is read by the service");
    must(target->endpoint == endpoint.toStdString(), "the endpoint arrives as it is");
    must(target->recipient.publicKey == keys.publicKey &&
             target->recipient.authSecret == keys.authSecret,
         "the keys arrive as they are");
}

void checkToken(const std::string &token)
{
    const auto target = practice::readDeviceToken(token);
    must(!target || (target->recipient.publicKey.size() == platform::PushKeys::publicKeySize &&
                     target->recipient.authSecret.size() == platform::PushKeys::authSecretSize),
         "what is read has keys of the right size");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    checkEndpoint(input);
    checkToken(input.toStdString());
    checkToken(input.toHex().toStdString());
    return 0;
}
