#include "Push/ConnectorFixture.h"

#include <QDBusVirtualObject>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

QString fullName(const char *suffix)
{
    return QLatin1String(platform::distributorPrefix) + QLatin1String(suffix);
}

TEST(ChooseDistributor, TheNamedOneAdmitsNoOther)
{
    const platform::DistributorNames names{{fullName("a"), fullName("b")}, {}};
    EXPECT_EQ(platform::chooseDistributor(names, QStringLiteral("b"), {fullName("a")}),
              fullName("b"));
    EXPECT_EQ(platform::chooseDistributor(names, QStringLiteral("c"), {fullName("a")}),
              std::nullopt);
}

TEST(ChooseDistributor, TheOneInUseBeforeComesBeforeOthers)
{
    EXPECT_EQ(
        platform::chooseDistributor({{fullName("a"), fullName("b")}, {}}, {}, {fullName("b")}),
        fullName("b"));
    EXPECT_EQ(platform::chooseDistributor({{fullName("a")}, {fullName("b")}}, {}, {fullName("b")}),
              fullName("b"));
    EXPECT_EQ(platform::chooseDistributor({{fullName("a")}, {}}, {}, {fullName("b")}),
              fullName("a"));
}

TEST(ChooseDistributor, OfThoseInUseBeforeTheFirstThatIsThere)
{
    const QStringList before{fullName("c"), fullName("b")};
    const platform::DistributorNames two{{fullName("a"), fullName("b")}, {}};
    EXPECT_EQ(platform::chooseDistributor(two, {}, before), fullName("b"));
    const platform::DistributorNames all{{fullName("a"), fullName("b"), fullName("c")}, {}};
    EXPECT_EQ(platform::chooseDistributor(all, {}, before), fullName("c"));
}

TEST(ChooseDistributor, OfSeveralTheFirstByName)
{
    EXPECT_EQ(platform::chooseDistributor({{fullName("b"), fullName("a")}, {}}, {}, {}),
              fullName("a"));
    EXPECT_EQ(platform::chooseDistributor({{}, {fullName("a")}}, {}, {}), std::nullopt);
}

TEST_F(PushConnectorTest, APushServiceThatAppearsLaterIsRegisteredWith)
{
    startAndRegister();
    settle();
    const auto distributor = makeDistributor("fake", true, true);
    distributor->appear();
    EXPECT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
}

TEST_F(PushConnectorTest, WithoutARequestAnAppearingPushServiceIsLeftAlone)
{
    start();
    const auto distributor = makeDistributor("fake", true, true);
    distributor->appear();
    settle();
    EXPECT_THAT(distributor->registrations(), SizeIs(0));
}

TEST_F(PushConnectorTest, APushServiceThatDiesAndReturnsIsRegisteredWithAgain)
{
    auto distributor = makeDistributor("fake", true, true);
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    const QString token = distributor->token();
    distributor.reset();
    distributor = makeDistributor("fake", true, true);
    distributor->endpoint = QStringLiteral("https://push.test/b");
    distributor->appear();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 2; }));
    EXPECT_EQ(distributor->token(), token);
    EXPECT_EQ(endpoint(1), QStringLiteral("https://push.test/b"));
}

TEST_F(PushConnectorTest, APushServiceThatDiesBeforeItsReplyIsRegisteredWithWhenItReturns)
{
    auto distributor = makeDistributor("fake", false, true);
    distributor->endpoint.clear();
    distributor->holdsReplies = true;
    distributor->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return distributor->registrations().size() == 1; }));
    distributor.reset();
    distributor = makeDistributor("fake", false, true);
    distributor->appear();
    EXPECT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    EXPECT_THAT(refusals, SizeIs(0));
}

TEST_F(PushConnectorTest, OneThatDoesNotDescribeItselfIsTriedInBothGenerations)
{
    // An object that answers Introspect with nothing usable: the interface of the first generation
    // alone, behind a description that names none.
    const auto distributor = makeDistributor("fake", true, false);
    QDBusConnection bus = m_bus.connect();
    class Nameless : public QDBusVirtualObject {
    public:
        explicit Nameless(FakeDistributor &real)
            : m_real(real)
        {
        }
        [[nodiscard]] QString introspect(const QString & /*path*/) const override { return {}; }
        bool handleMessage(const QDBusMessage &message, const QDBusConnection & /*bus*/) override
        {
            if (message.interface() != QLatin1String("org.unifiedpush.Distributor1")) {
                return false;
            }
            const QVariantList given = message.arguments();
            m_real.registered({1, given[0].toString(), given[1].toString(), given[2].toString()},
                              message);
            return true;
        }

    private:
        FakeDistributor &m_real;
    } nameless(*distributor);
    bus.registerVirtualObject(QStringLiteral("/org/unifiedpush/Distributor"), &nameless);
    bus.registerService(fullName("fake"));
    startAndRegister();
    EXPECT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
}

TEST_F(PushConnectorTest, AmongSeveralTheRememberedOneIsUsedAgain)
{
    const auto b = makeDistributor("b", true, true);
    b->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    const auto a = makeDistributor("a", true, true);
    a->appear();
    settle();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 2; }));
    EXPECT_THAT(a->registrations(), SizeIs(0));
}

TEST_F(PushConnectorTest, AChangeOfPushServiceMakesANewTokenAndGivesTheOldOneBack)
{
    for (const bool newGeneration : {false, true}) {
        tokens.clear();
        const auto a = makeDistributor("a", !newGeneration, newGeneration);
        const auto b = makeDistributor("b", true, true);
        a->appear();
        b->appear();
        startAndRegister(QStringLiteral("a"));
        ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
        startAndRegister(QStringLiteral("b"));
        ASSERT_TRUE(waitUntil([&] { return tokens.size() == 2; }));
        EXPECT_NE(b->token(), a->token());
        ASSERT_TRUE(waitUntil([&] { return !a->unregistrations().empty(); }));
        EXPECT_THAT(a->unregistrations(), ElementsAre(a->token()));
    }
}

TEST_F(PushConnectorTest, TheOneInUseIsReturnedToWhenItWasMerelyLate)
{
    const auto b = makeDistributor("b", true, true);
    b->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    const QString token = b->token();
    b->vanish();
    const auto a = makeDistributor("a", true, true);
    a->endpoint = QStringLiteral("https://push.test/stand-in");
    a->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 2; }));
    EXPECT_EQ(endpoint(1), a->endpoint);
    EXPECT_NE(a->token(), token);
    // A message that the late one still had is ours, too.
    ASSERT_TRUE(finished(b->sendMessage1(token, "old")));
    EXPECT_THAT(messages, SizeIs(1));
    b->appear();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 3; }));
    EXPECT_EQ(endpoint(2), b->endpoint);
    EXPECT_EQ(b->token(), token);
    ASSERT_TRUE(waitUntil([&] { return !a->unregistrations().empty(); }));
    EXPECT_THAT(a->unregistrations(), ElementsAre(a->token()));
}

TEST_F(PushConnectorTest, OneThatTakesThePlaceOfTheVanishedIsRegisteredWith)
{
    auto a = makeDistributor("a", true, true);
    a->appear();
    startAndRegister();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 1; }));
    a.reset();
    const auto b = makeDistributor("b", true, true);
    b->endpoint = QStringLiteral("https://push.test/b");
    b->appear();
    ASSERT_TRUE(waitUntil([&] { return tokens.size() == 2; }));
    EXPECT_EQ(endpoint(1), QStringLiteral("https://push.test/b"));
}

} // namespace
} // namespace trellisport::test
