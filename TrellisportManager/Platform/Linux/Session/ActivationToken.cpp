#include "Platform/Linux/Session/ActivationToken.h"

#include <algorithm>

namespace trellisport::platform {

namespace {

constexpr const char *waylandVariable = "XDG_ACTIVATION_TOKEN";
constexpr const char *x11Variable = "DESKTOP_STARTUP_ID";
constexpr qsizetype longest = 512;

QString usable(const QString &value)
{
    const bool isPrintable = std::all_of(value.begin(), value.end(),
                                         [](QChar character) { return character.isPrint(); });
    return isPrintable && value.size() <= longest ? value : QString();
}

/// Whoever calls chooses the types, too: a number is no token, though it could be written as one.
QString usableText(const QVariant &value)
{
    return value.metaType() == QMetaType::fromType<QString>() ? usable(value.toString())
                                                              : QString();
}

} // namespace

ActivationToken ActivationToken::fromPlatformData(const QVariantMap &data)
{
    const QString token = usableText(data[QStringLiteral("activation-token")]);
    return {token.isEmpty() ? usableText(data[QStringLiteral("desktop-startup-id")]) : token};
}

ActivationToken ActivationToken::takeFromEnvironment()
{
    const QString token = usable(qEnvironmentVariable(waylandVariable));
    const QString startupId = usable(qEnvironmentVariable(x11Variable));
    qunsetenv(waylandVariable);
    qunsetenv(x11Variable);
    return {token.isEmpty() ? startupId : token};
}

QVariantMap ActivationToken::toPlatformData() const
{
    if (value.isEmpty()) {
        return {};
    }
    return {{QStringLiteral("activation-token"), value},
            {QStringLiteral("desktop-startup-id"), value}};
}

void ActivationToken::putIntoEnvironment() const
{
    if (value.isEmpty()) {
        // One that was not used must not serve a later window.
        qunsetenv(waylandVariable);
        qunsetenv(x11Variable);
    } else {
        qputenv(waylandVariable, value.toUtf8());
        qputenv(x11Variable, value.toUtf8());
    }
}

} // namespace trellisport::platform
