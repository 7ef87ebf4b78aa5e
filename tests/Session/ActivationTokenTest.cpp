#include "Platform/Linux/Session/ActivationToken.h"

#include <gmock/gmock.h>

namespace trellisport::platform {
namespace {

TEST(ActivationToken, PlatformDataMayHoldEitherKindOrNone)
{
    EXPECT_EQ(ActivationToken::fromPlatformData({}).value, QString());
    EXPECT_EQ(ActivationToken::fromPlatformData(
                  {{QStringLiteral("desktop-startup-id"), QStringLiteral("a")}})
                  .value,
              QStringLiteral("a"));
    EXPECT_EQ(ActivationToken::fromPlatformData(
                  {{QStringLiteral("desktop-startup-id"), QStringLiteral("a")},
                   {QStringLiteral("activation-token"), QStringLiteral("b")}})
                  .value,
              QStringLiteral("b"));
}

TEST(ActivationToken, WhatCanBeNoTokenIsIgnored)
{
    for (const QVariant &value :
         {QVariant(QStringLiteral("a\nb")), QVariant(QString(513, QLatin1Char('a'))),
          QVariant(QVariantMap()), QVariant(5.5), QVariant(QByteArray("a"))}) {
        EXPECT_EQ(
            ActivationToken::fromPlatformData({{QStringLiteral("activation-token"), value}}).value,
            QString());
    }
}

TEST(ActivationToken, IsTakenOutOfTheEnvironmentAndPutBackForTheWindow)
{
    qputenv("XDG_ACTIVATION_TOKEN", "a");
    qputenv("DESKTOP_STARTUP_ID", "b");
    const ActivationToken token = ActivationToken::takeFromEnvironment();
    EXPECT_EQ(token.value, QStringLiteral("a"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));
    token.putIntoEnvironment();
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("a"));
    ActivationToken().putIntoEnvironment();
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

} // namespace
} // namespace trellisport::platform
