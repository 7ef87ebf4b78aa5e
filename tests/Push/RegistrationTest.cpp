#include "Push/ConnectorFixture.h"

#include <QFile>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

TEST_F(PushConnectorTest, WithoutAPushServiceNothingHappens)
{
    startAndRegister();
    settle();
    EXPECT_THAT(tokens, SizeIs(0));
    EXPECT_THAT(refusals, SizeIs(0));
}

TEST_F(PushConnectorTest, RegistersInEitherGenerationAndPrefersTheSecond)
{
    struct Case {
        bool one;
        bool two;
        int expected;
    };
    for (const auto [one, two, expected] :
         {Case{true, false, 1}, Case{false, true, 2}, Case{true, true, 2}}) {
        tokens.clear();
        const auto distributor = makeDistributor("fake", one, two);
        distributor->appear();
        startAndRegister();
        ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; })) << expected;
        const FakeDistributor::Registration registration = distributor->registrations().at(0);
        EXPECT_EQ(registration.generation, expected);
        EXPECT_EQ(registration.service, QLatin1String(service));
        EXPECT_EQ(registration.description, QStringLiteral("the tests"));
        EXPECT_EQ(endpoint(), distributor->endpoint);
    }
}

TEST_F(PushConnectorTest, TheTokenIsAnIdentifierOfAtMostAHundredBytes)
{
    const auto distributor = makeDistributor("fake", true, true);
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    EXPECT_GE(distributor->token().size(), 32);
    EXPECT_LE(distributor->token().toUtf8().size(), 100);
}

TEST_F(PushConnectorTest, TheDeviceTokenCarriesEndpointAndPublicKeys)
{
    const auto distributor = makeDistributor("fake", true, true);
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    const platform::PushKeys keys = stored().value().keys;
    const auto bytes = [&](const char *key) {
        return QByteArray::fromBase64(tokens.at(0)[QLatin1String(key)].toString().toLatin1(),
                                      QByteArray::Base64UrlEncoding);
    };
    EXPECT_THAT(tokens.at(0).keys(), ElementsAre(QStringLiteral("auth"), QStringLiteral("endpoint"),
                                                 QStringLiteral("p256dh")));
    EXPECT_EQ(bytes("p256dh"), keys.publicKey);
    EXPECT_EQ(bytes("auth"), keys.authSecret);
}

TEST_F(PushConnectorTest, TheTokenIsOnDiskBeforeTheEndpointArrives)
{
    const auto distributor = makeDistributor("fake", true, true);
    distributor->holdsReplies = true; // the endpoint comes before the reply
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    EXPECT_THAT(distributor->heldReplies, SizeIs(1));
    EXPECT_EQ(storedToken(), distributor->token());
}

TEST_F(PushConnectorTest, OnlyTheUserMayReadTheKeys)
{
    const auto distributor = makeDistributor("fake", true, true);
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    constexpr QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_EQ(QFile::permissions(statePath()) & others, QFile::Permissions());
}

TEST_F(PushConnectorTest, EveryStartRegistersTheSameTokenAgain)
{
    const auto distributor = makeDistributor("fake", true, true);
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    const QString token = distributor->token();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 2; }));
    EXPECT_EQ(distributor->token(), token);
    EXPECT_EQ(tokens.at(0), tokens.at(1));
}

TEST_F(PushConnectorTest, AnUnusableStateFileIsReplaced)
{
    const auto distributor = makeDistributor("fake", true, true);
    distributor->appear();
    platform::PushRegistrationStore(statePath()).save({});
    ASSERT_TRUE(QFile::exists(statePath()));
    EXPECT_EQ(stored(), std::nullopt);
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    EXPECT_TRUE(stored().has_value());
}

TEST_F(PushConnectorTest, ALateReplyIsNoFailure)
{
    const auto distributor = makeDistributor("fake", false, true);
    distributor->endpoint.clear();
    distributor->holdsReplies = true;
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return distributor->heldReplies.size() == 1; }));
    distributor->sendEndpoint2(
        {{QStringLiteral("token"), distributor->token()},
         {QStringLiteral("endpoint"), QStringLiteral("https://push.test/b")}});
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    distributor->heldReplies.at(0)();
    settle();
    EXPECT_EQ(endpoint(), QStringLiteral("https://push.test/b"));
    EXPECT_THAT(refusals, SizeIs(0));
}

TEST_F(PushConnectorTest, ARefusalIsToldWithItsReason)
{
    const auto distributor = makeDistributor("fake", true, true);
    distributor->result = QStringLiteral("REGISTRATION_FAILED");
    distributor->reason = QStringLiteral("VAPID_REQUIRED");
    distributor->endpoint.clear();
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return refusals.size() == 1; }));
    EXPECT_EQ(refusals.at(0), QStringLiteral("VAPID_REQUIRED"));
    settle();
    EXPECT_THAT(distributor->registrations(), SizeIs(1));
}

TEST_F(PushConnectorTest, AnEndpointIsTakenWhateverTheReplySays)
{
    for (const char *result : {"REGISTRATION_FAILED", "NEW_ENDPOINT", "everything is fine"}) {
        tokens.clear();
        const auto distributor = makeDistributor("fake", true, false);
        distributor->result = QLatin1String(result);
        distributor->appear();
        startAndRegister();
        EXPECT_TRUE(waitUntil([&] { return tokens.size() == 1; })) << result;
    }
}

TEST_F(PushConnectorTest, EmptyAndMalformedEndpointsAreIgnored)
{
    const auto distributor = makeDistributor("fake", true, true);
    distributor->endpoint.clear();
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return distributor->registrations().size() == 1; }));
    const QString tooLong = QStringLiteral("https://push.test/") + QString(983, QLatin1Char('x'));
    for (const QString &url :
         {QString(), QStringLiteral("push.test/a"), QStringLiteral("http://push.test/a"),
          QStringLiteral("https://"), QStringLiteral("https://push.test/a b"),
          QStringLiteral("file:///etc/passwd"), tooLong}) {
        distributor->sendEndpoint1(distributor->token(), url);
        distributor->sendEndpoint2(
            {{QStringLiteral("token"), distributor->token()}, {QStringLiteral("endpoint"), url}});
    }
    distributor->sendEndpoint2(
        {{QStringLiteral("token"), distributor->token()}, {QStringLiteral("endpoint"), 7}});
    distributor->sendEndpoint2({{QStringLiteral("token"), distributor->token()}});
    settle();
    EXPECT_THAT(tokens, SizeIs(0));
    distributor->sendEndpoint1(distributor->token(), tooLong.chopped(1));
    EXPECT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
}

TEST_F(PushConnectorTest, AnEndpointThatIsWithdrawnAndComesAgainIsAnnouncedAgain)
{
    const auto distributor = makeDistributor("fake", true, true);
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    distributor->sendEndpoint1(distributor->token(), distributor->endpoint);
    settle();
    EXPECT_THAT(tokens, SizeIs(1)); // nothing has changed
    distributor->sendEndpoint1(distributor->token(), {});
    distributor->sendEndpoint1(distributor->token(), distributor->endpoint);
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 2; }));
    EXPECT_EQ(tokens[0], tokens[1]);
}

TEST_F(PushConnectorTest, NoReplyToARegistrationIsPendingAndAnEndpointIsStillTaken)
{
    const auto distributor = makeDistributor("fake", false, true);
    distributor->endpoint.clear();
    distributor->error = QStringLiteral("org.freedesktop.DBus.Error.NoReply");
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return distributor->registrations().size() == 1; }));
    settle();
    EXPECT_THAT(refusals, SizeIs(0));
    distributor->sendEndpoint2(
        {{QStringLiteral("token"), distributor->token()},
         {QStringLiteral("endpoint"), QStringLiteral("https://push.test/late")}});
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    EXPECT_EQ(endpoint(), QStringLiteral("https://push.test/late"));
}

TEST_F(PushConnectorTest, AnEndpointForAnUnknownTokenIsIgnored)
{
    const auto distributor = makeDistributor("fake", true, true);
    distributor->endpoint.clear();
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return distributor->registrations().size() == 1; }));
    for (const char *token : {"", "another"}) {
        distributor->sendEndpoint1(QLatin1String(token), QStringLiteral("https://push.test/b"));
        distributor->sendEndpoint2(
            {{QStringLiteral("token"), QLatin1String(token)},
             {QStringLiteral("endpoint"), QStringLiteral("https://push.test/b")}});
    }
    settle();
    EXPECT_THAT(tokens, SizeIs(0));
}

TEST_F(PushConnectorTest, TheSameEndpointIsHandedOnOnceAndANewOneAgain)
{
    const auto distributor = makeDistributor("fake", true, true);
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    distributor->sendEndpoint1(distributor->token(), distributor->endpoint);
    settle();
    EXPECT_THAT(tokens, SizeIs(1));
    distributor->sendEndpoint1(distributor->token(), QString());
    distributor->sendEndpoint1(distributor->token(), QStringLiteral("https://push.test/b"));
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 2; }));
    EXPECT_EQ(endpoint(1), QStringLiteral("https://push.test/b"));
}

TEST_F(PushConnectorTest, AfterUnregisteredTheNextStartMakesANewToken)
{
    for (const int generation : {1, 2}) {
        tokens.clear();
        const auto distributor = makeDistributor("fake", true, true);
        distributor->appear();
        startAndRegister();
        ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
        const QString token = distributor->token();
        if (generation == 1) {
            distributor->sendUnregistered1(QString()); // confirms what we never asked for
            distributor->sendUnregistered1(QStringLiteral("another"));
            settle();
            EXPECT_EQ(storedToken(), token);
            distributor->sendUnregistered1(token);
        } else {
            distributor->sendUnregistered2({});
            distributor->sendUnregistered2({{QStringLiteral("token"), QStringLiteral("another")}});
            settle();
            EXPECT_EQ(storedToken(), token);
            distributor->sendUnregistered2({{QStringLiteral("token"), token}});
        }
        settle();
        EXPECT_THAT(distributor->registrations(), SizeIs(1)); // no going round in circles
        startAndRegister();
        ASSERT_TRUE(waitUntil([&] { return tokens.size() == 2; }));
        EXPECT_NE(distributor->token(), token);
    }
}

} // namespace
} // namespace trellisport::test
