#include "Push/ConnectorFixture.h"

#include "PracticeService/Push/WebPushEncryption.h"

#include <QDBusError>

namespace trellisport::test {
namespace {

using ::testing::SizeIs;

QByteArray encrypted(const platform::PushKeys &keys, const QByteArray &plaintext)
{
    return practice::encryptPushMessage({keys.publicKey, keys.authSecret}, plaintext).value();
}

class DeliveryTest : public PushConnectorTest {
protected:
    void SetUp() override
    {
        m_distributor = makeDistributor("fake", true, true);
        m_distributor->appear();
        startAndRegister();
        ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
        m_token = m_distributor->token();
    }
    [[nodiscard]] QVariantMap arguments(const QByteArray &message, const QString &id = {}) const
    {
        QVariantMap map{{QStringLiteral("token"), m_token}, {QStringLiteral("message"), message}};
        if (!id.isEmpty()) {
            map[QStringLiteral("id")] = id;
        }
        return map;
    }

    std::unique_ptr<FakeDistributor> m_distributor;
    QString m_token;
};

TEST_F(DeliveryTest, BothGenerationsDeliverWhicheverRegistered)
{
    ASSERT_TRUE(finished(m_distributor->sendMessage1(m_token, "first", QStringLiteral("1"))));
    ASSERT_TRUE(finished(m_distributor->sendMessage2(arguments("second"))));
    ASSERT_THAT(messages, SizeIs(2));
    EXPECT_EQ(messages[0].content, QByteArray("first"));
    EXPECT_EQ(messages[1].content, QByteArray("second"));
}

TEST_F(DeliveryTest, AnEncryptedMessageIsOpened)
{
    const QByteArray sealed = encrypted(stored().value().keys, "secret");
    ASSERT_TRUE(finished(m_distributor->sendMessage2(arguments(sealed))));
    ASSERT_THAT(messages, SizeIs(1));
    EXPECT_EQ(messages[0].content, QByteArray("secret"));
}

TEST_F(DeliveryTest, TheLargestAllowedMessageIsOpenedAndALargerOneDropped)
{
    const QByteArray sealed = encrypted(stored().value().keys, QByteArray(3993, 'x'));
    ASSERT_EQ(sealed.size(), 4096);
    ASSERT_TRUE(finished(m_distributor->sendMessage2(arguments(sealed))));
    ASSERT_THAT(messages, SizeIs(1));
    EXPECT_EQ(messages[0].content.size(), 3993);
    ASSERT_TRUE(finished(m_distributor->sendMessage2(arguments(QByteArray(4097, 'x')))));
    ASSERT_TRUE(finished(m_distributor->sendMessage1(m_token, QByteArray(4097, 'x'))));
    ASSERT_TRUE(finished(m_distributor->sendMessage1(m_token, QByteArray())));
    EXPECT_THAT(messages, SizeIs(1));
}

TEST_F(DeliveryTest, TheSameMessageTwiceHasTheSameIdentityAndTwoHaveTwo)
{
    const platform::PushKeys keys = stored().value().keys;
    const QByteArray sealed = encrypted(keys, "text");
    for (const QByteArray &message : {sealed, sealed, encrypted(keys, "text")}) {
        ASSERT_TRUE(finished(m_distributor->sendMessage2(arguments(message))));
    }
    ASSERT_THAT(messages, SizeIs(3));
    EXPECT_EQ(messages[0].identity, messages[1].identity);
    EXPECT_NE(messages[0].identity, messages[2].identity);
    ASSERT_TRUE(finished(m_distributor->sendMessage1(m_token, "plain", QStringLiteral("7"))));
    ASSERT_TRUE(finished(m_distributor->sendMessage2(arguments("plain", QStringLiteral("7")))));
    EXPECT_EQ(messages[3].identity, messages[4].identity);
    ASSERT_TRUE(finished(m_distributor->sendMessage1(m_token, "plain")));
    EXPECT_TRUE(messages[5].identity.isEmpty());
}

TEST_F(DeliveryTest, TheReplyComesWhenTheMessageIsDealtWithAndNamesItsId)
{
    holdsMessages = true;
    const QDBusPendingCall call =
        m_distributor->sendMessage2(arguments("text", QStringLiteral("m1")));
    const QDBusPendingCall old = m_distributor->sendMessage1(m_token, "text");
    settle();
    ASSERT_THAT(held, SizeIs(2));
    EXPECT_FALSE(call.isFinished());
    EXPECT_FALSE(old.isFinished());
    held[0](platform::MessageFate::Done);
    held[1](platform::MessageFate::Done);
    ASSERT_TRUE(finished(call) && finished(old));
    const auto map = qdbus_cast<QVariantMap>(call.reply().arguments().value(0));
    EXPECT_EQ(map, (QVariantMap{{QStringLiteral("id"), QStringLiteral("m1")}}));
    EXPECT_EQ(old.reply().type(), QDBusMessage::ReplyMessage);
}

TEST_F(DeliveryTest, AMessageThatWasNotShownIsNotAcknowledged)
{
    holdsMessages = true;
    const QDBusPendingCall call =
        m_distributor->sendMessage2(arguments("text", QStringLiteral("m1")));
    const QDBusPendingCall old = m_distributor->sendMessage1(m_token, "text");
    settle();
    ASSERT_THAT(held, SizeIs(2));
    held[0](platform::MessageFate::NotNow);
    held[1](platform::MessageFate::NotNow);
    ASSERT_TRUE(finished(call) && finished(old));
    EXPECT_EQ(QDBusError(call.reply()).type(), QDBusError::Failed);
    EXPECT_EQ(QDBusError(old.reply()).type(), QDBusError::Failed);
}

TEST_F(DeliveryTest, APlainMessageWithTheIdOfAnotherIsAnother)
{
    for (const char *content : {"first", "second"}) {
        ASSERT_TRUE(finished(m_distributor->sendMessage1(m_token, content, QStringLiteral("1"))));
    }
    EXPECT_NE(messages[0].identity, messages[1].identity);
}

TEST_F(DeliveryTest, WithoutAnIdTheReplyNamesNone)
{
    const QDBusPendingCall call = m_distributor->sendMessage2(arguments("text"));
    ASSERT_TRUE(finished(call));
    EXPECT_EQ(qdbus_cast<QVariantMap>(call.reply().arguments().value(0)), QVariantMap());
}

TEST_F(DeliveryTest, MessagesForUnknownTokensAreIgnored)
{
    for (const char *token : {"", "another"}) {
        ASSERT_TRUE(finished(m_distributor->sendMessage1(QLatin1String(token), "text")));
        QVariantMap map = arguments("text");
        map[QStringLiteral("token")] = QLatin1String(token);
        ASSERT_TRUE(finished(m_distributor->sendMessage2(map)));
    }
    EXPECT_THAT(messages, SizeIs(0));
}

TEST_F(DeliveryTest, ValuesOfOtherTypesAreIgnored)
{
    for (const QVariant &message : {QVariant(QStringLiteral("text")), QVariant(7),
                                    QVariant(QStringList{QStringLiteral("text")})}) {
        QVariantMap map = arguments({});
        map[QStringLiteral("message")] = message;
        ASSERT_TRUE(finished(m_distributor->sendMessage2(map)));
    }
    QVariantMap map = arguments("text");
    map[QStringLiteral("token")] = m_token.toUtf8();
    ASSERT_TRUE(finished(m_distributor->sendMessage2(map)));
    ASSERT_TRUE(finished(m_distributor->sendMessage2({})));
    EXPECT_THAT(messages, SizeIs(0));
}

TEST_F(DeliveryTest, AKeptTokenIsServedBeforeAnyRegistration)
{
    start();
    ASSERT_TRUE(finished(m_distributor->sendMessage2(arguments("text"))));
    EXPECT_THAT(messages, SizeIs(1));
}

TEST_F(DeliveryTest, OfAFloodTheExcessIsTurnedAwayAndTheRestIsServed)
{
    start({}, 4);
    holdsMessages = true;
    std::vector<QDBusPendingCall> calls;
    calls.reserve(10);
    for (int count = 0; count < 10; ++count) {
        calls.push_back(m_distributor->sendMessage2(arguments("text")));
    }
    settle();
    EXPECT_THAT(messages, SizeIs(4));
    for (std::size_t index = 4; index < 10; ++index) {
        ASSERT_TRUE(finished(calls[index]));
        EXPECT_EQ(QDBusError(calls[index].reply()).type(), QDBusError::LimitsExceeded);
    }
    for (const auto &done : held) {
        done(platform::MessageFate::Done);
    }
    holdsMessages = false;
    ASSERT_TRUE(finished(m_distributor->sendMessage2(arguments("text"))));
    EXPECT_THAT(messages, SizeIs(5));
}

} // namespace
} // namespace trellisport::test
