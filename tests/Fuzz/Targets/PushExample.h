#pragma once

#include "Platform/Linux/Push/PushKeys.h"

#include <QByteArray>

/// The keys of the example in RFC 8291.
namespace pushExample {

inline QByteArray base64url(const char *text)
{
    return QByteArray::fromBase64(text, QByteArray::Base64UrlEncoding);
}

inline trellisport::platform::PushKeys receiver()
{
    return {base64url("q1dXpw3UpT5VOmu_cf_v6ih07Aems3njxI-JWgLcM94"),
            base64url("BCVxsr7N_eNgVRqvHtD0zTZsEc6-VV-JvLexhqUzORcxaOzi6-AYWXvTBHm4bjyPjs7Vd8pZGH6S"
                      "RpkNtoIAiw4"),
            base64url("BTBZMqHH6r4Tts7J_aSIgg")};
}

/// Without a secret: senders have none of their own.
inline trellisport::platform::PushKeys sender()
{
    return {base64url("yfWPiYE-n46HLnH0KqZOF1fJJU3MYrct3AELtAQ-oRw"),
            base64url("BP4z9KsN6nGRTbVYI_c7VJSPQTBtkgcy27mlmlMoZIIgDll6e3vCYLocInmYWAmS6TlzAC8wEqKK"
                      "6PBru3jl7A8"),
            {}};
}

} // namespace pushExample
