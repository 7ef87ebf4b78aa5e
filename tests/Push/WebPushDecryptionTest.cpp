#include "Platform/Linux/Push/WebPushDecryption.h"
#include "PracticeService/Push/WebPushEncryption.h"

#include <gmock/gmock.h>

#include <optional>

namespace trellisport::platform {
namespace {

QByteArray base64url(const char *text)
{
    return QByteArray::fromBase64(text, QByteArray::Base64UrlEncoding);
}

// The example of RFC 8291, section 5.
const char *const plaintext = "When I grow up, I want to be a watermelon";

PushKeys exampleKeys()
{
    return {base64url("q1dXpw3UpT5VOmu_cf_v6ih07Aems3njxI-JWgLcM94"),
            base64url("BCVxsr7N_eNgVRqvHtD0zTZsEc6-VV-JvLexhqUzORcxaOzi6-AYWXvTBHm4bjyPjs7Vd8pZGH6S"
                      "RpkNtoIAiw4"),
            base64url("BTBZMqHH6r4Tts7J_aSIgg")};
}

QByteArray exampleMessage()
{
    return base64url("DGv6ra1nlYgDCS1FRnbzlwAAEABBBP4z9KsN6nGRTbVYI_c7VJSPQTBtkgcy27mlmlMoZIIgDll6"
                     "e3vCYLocInmYWAmS6TlzAC8wEqKK6PBru3jl7A_yl95bQpu6cVPTpK4Mqgkf1CXztLVBSt2Ks3oZ"
                     "wbuwXPXLWyouBWLVWGNWQexSgSxsj_Qulcy4a-fN");
}

TEST(WebPushDecryption, OpensThePublishedExample)
{
    EXPECT_EQ(decryptPushMessage(exampleKeys(), exampleMessage()), QByteArray(plaintext));
}

TEST(WebPushDecryption, TheRecordSizeIsNotHeldAgainstTheMessage)
{
    QByteArray message = exampleMessage();
    for (const QByteArray &recordSize : {QByteArray(4, '\0'), QByteArray(4, '\xFF')}) {
        message.replace(16, 4, recordSize);
        EXPECT_EQ(decryptPushMessage(exampleKeys(), message), QByteArray(plaintext));
    }
}

TEST(WebPushDecryption, RefusesAMessageWithAnyOtherByteChanged)
{
    for (int at = 0; at < exampleMessage().size(); ++at) {
        if (at >= 16 && at < 20) {
            continue; // the record size
        }
        for (const int bit : {0, 7}) {
            QByteArray message = exampleMessage();
            message[at] = static_cast<char>(message.at(at) ^ (1 << bit));
            EXPECT_EQ(decryptPushMessage(exampleKeys(), message), std::nullopt) << at;
        }
    }
}

TEST(WebPushDecryption, RefusesAMessageCutAnywhereAndOneWithMoreAtItsEnd)
{
    for (int size = 0; size < exampleMessage().size(); ++size) {
        EXPECT_EQ(decryptPushMessage(exampleKeys(), exampleMessage().left(size)), std::nullopt)
            << size;
    }
    EXPECT_EQ(decryptPushMessage(exampleKeys(), exampleMessage() + '\0'), std::nullopt);
}

TEST(WebPushDecryption, RefusesAMessageForOtherKeys)
{
    const auto others = PushKeys::generate();
    ASSERT_TRUE(others);
    EXPECT_EQ(decryptPushMessage(*others, exampleMessage()), std::nullopt);
    PushKeys otherSecret = exampleKeys();
    otherSecret.authSecret = others->authSecret;
    EXPECT_EQ(decryptPushMessage(otherSecret, exampleMessage()), std::nullopt);
}

TEST(WebPushDecryption, RefusesASenderKeyThatIsNoPointOfTheCurve)
{
    QByteArray message = exampleMessage();
    message.replace(21, 65, QByteArray(1, '\4') + QByteArray(64, '\1'));
    EXPECT_EQ(decryptPushMessage(exampleKeys(), message), std::nullopt);
    message.replace(21, 65, QByteArray(65, '\0'));
    EXPECT_EQ(decryptPushMessage(exampleKeys(), message), std::nullopt);
}

TEST(WebPushEncryption, SealsThePublishedExample)
{
    const PushKeys receiver = exampleKeys();
    const PushKeys sender{
        base64url("yfWPiYE-n46HLnH0KqZOF1fJJU3MYrct3AELtAQ-oRw"), exampleMessage().mid(21, 65), {}};
    EXPECT_EQ(practice::encryptPushMessage({receiver.publicKey, receiver.authSecret}, plaintext,
                                           sender, exampleMessage().left(16)),
              exampleMessage());
}

TEST(WebPushEncryption, WhatItSealsOpensAndNoTwoAreAlike)
{
    const auto keys = PushKeys::generate();
    ASSERT_TRUE(keys);
    const auto seal = [&](const QByteArray &text) {
        return practice::encryptPushMessage({keys->publicKey, keys->authSecret}, text).value();
    };
    for (const qsizetype size : {0, 1, 100, 3993}) {
        const QByteArray text(size, '\0');
        EXPECT_EQ(decryptPushMessage(*keys, seal(text)), text) << size;
    }
    EXPECT_NE(seal("text"), seal("text"));
}

TEST(WebPushEncryption, RefusesAReceiverWithoutAKey)
{
    EXPECT_EQ(practice::encryptPushMessage({{}, {}}, "text"), std::nullopt);
    EXPECT_EQ(practice::encryptPushMessage({QByteArray(65, '\4'), QByteArray(16, '\1')}, "text"),
              std::nullopt);
}

TEST(PushKeys, GeneratedKeysAreValidAndNeverTheSame)
{
    const auto one = PushKeys::generate();
    const auto other = PushKeys::generate();
    ASSERT_TRUE(one && other);
    EXPECT_TRUE(one->isValid());
    EXPECT_NE(one->privateKey, other->privateKey);
    EXPECT_NE(one->authSecret, other->authSecret);
}

TEST(PushKeys, KeysThatDoNotBelongTogetherAreNotValid)
{
    const PushKeys good = exampleKeys();
    const auto other = PushKeys::generate();
    ASSERT_TRUE(good.isValid() && other);
    PushKeys mixed = good;
    mixed.publicKey = other->publicKey;
    EXPECT_FALSE(mixed.isValid());
    PushKeys shortKey = good;
    shortKey.privateKey.chop(1);
    EXPECT_FALSE(shortKey.isValid());
    PushKeys shortSecret = good;
    shortSecret.authSecret.chop(1);
    EXPECT_FALSE(shortSecret.isValid());
    PushKeys empty;
    EXPECT_FALSE(empty.isValid());
}

} // namespace
} // namespace trellisport::platform
