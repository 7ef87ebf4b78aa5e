#include "BusSupport/FakeLauncher.h"
#include "BusSupport/FakeNotificationService.h"
#include "BusSupport/PrivateBus.h"
#include "Platform/Linux/Notifications/NotificationPresenter.h"
#include "Support/Waiting.h"

#include <QDBusMessage>

#include <gmock/gmock.h>

#include <memory>
#include <optional>

namespace trellisport::test {
namespace {

using platform::PresentationOptions;
using platform::Presented;
using platform::RemoteNotification;
using ::testing::ElementsAre;
using ::testing::SizeIs;

RemoteNotification question()
{
    return {QStringLiteral("A question"),
            QStringLiteral("Is 1 < 2 & \"so\"?"),
            true,
            {},
            {{{"project_id", {std::string("p1")}}}}};
}

RemoteNotification news(const QString &body = QStringLiteral("Awarded"))
{
    return {QStringLiteral("News"), body, false, {}, {}};
}

class PresenterTest : public ::testing::Test {
protected:
    void SetUp() override { m_service.appear(); }

    bool present(const RemoteNotification &notification)
    {
        const auto fates = std::make_shared<std::vector<Presented>>();
        m_presenter.present(notification, [fates](Presented fate) { fates->push_back(fate); });
        return waitUntil([&] { return !fates->empty(); }) && fates->back() == Presented::Settled;
    }
    std::optional<bool> authorize(unsigned options = 4 + 1 + 2 + 16)
    {
        std::optional<bool> granted;
        m_presenter.authorize(
            {options}, [&](bool given, const std::optional<std::string> &) { granted = given; });
        static_cast<void>(waitUntil([&] { return granted.has_value(); }));
        return granted;
    }

    /// What the launcher shows; nothing before it was told anything.
    [[nodiscard]] std::optional<qlonglong> badge() const
    {
        if (m_launcher.updates().empty()) {
            return std::nullopt;
        }
        const QVariantMap &last = m_launcher.updates().back().properties;
        const qlonglong count = last[QStringLiteral("count")].toLongLong();
        return last[QStringLiteral("count-visible")].toBool() ? count : 0;
    }

    PrivateBus m_bus;
    FakeLauncher m_launcher{m_bus.connect()};
    FakeNotificationService m_service{m_bus.connect()};
    bool m_isInFront = false;
    PresentationOptions m_options{16 + 2 + 1};
    int m_willPresent = 0;
    int m_waitingChanges = 0;
    std::vector<platform::UserNotification> m_opened;
    std::vector<QString> m_tokens;
    platform::NotificationPresenter m_presenter{
        m_bus.connect(),
        {QStringLiteral("The console"), QStringLiteral("org.trellisport.test"),
         std::chrono::milliseconds(20)},
        {[this] { return m_isInFront; },
         [this](const platform::UserNotification &, const auto &completion) {
             ++m_willPresent;
             completion(m_options);
         },
         [this](const platform::UserNotification &notification, const QString &token) {
             m_opened.push_back(notification);
             m_tokens.push_back(token);
         },
         [this] { ++m_waitingChanges; }}};
};

TEST_F(PresenterTest, PermissionIsGrantedWhenANotificationServiceAnswers)
{
    EXPECT_EQ(authorize(), true);
}

TEST_F(PresenterTest, PermissionIsDeniedWithoutANotificationService)
{
    m_service.vanish();
    EXPECT_EQ(authorize(), false);
}

TEST_F(PresenterTest, ADecisionIsCriticalAndNeverExpires)
{
    ASSERT_TRUE(present(question()));
    ASSERT_THAT(m_service.shown(), SizeIs(1));
    const auto &shown = m_service.shown().front();
    EXPECT_EQ(shown.applicationName, QStringLiteral("The console"));
    EXPECT_EQ(shown.icon, QStringLiteral("org.trellisport.test"));
    EXPECT_EQ(shown.summary, QStringLiteral("A question"));
    EXPECT_EQ(shown.hints[QStringLiteral("urgency")], QVariant::fromValue<uchar>(2));
    EXPECT_EQ(shown.hints[QStringLiteral("urgency")].metaType(), QMetaType::fromType<uchar>());
    EXPECT_EQ(shown.expiry, 0);
}

TEST_F(PresenterTest, OtherNotificationsAreNormalAndExpireAsTheServiceLikes)
{
    ASSERT_TRUE(present(news()));
    const auto &shown = m_service.shown().front();
    EXPECT_EQ(shown.hints[QStringLiteral("urgency")], QVariant::fromValue<uchar>(1));
    EXPECT_EQ(shown.expiry, -1);
}

TEST_F(PresenterTest, EveryNotificationCarriesEntryCategorySoundAndDefaultAction)
{
    ASSERT_TRUE(present(news()));
    const auto &shown = m_service.shown().front();
    EXPECT_EQ(shown.hints[QStringLiteral("desktop-entry")], QStringLiteral("org.trellisport.test"));
    EXPECT_EQ(shown.hints[QStringLiteral("category")], QStringLiteral("im.received"));
    EXPECT_EQ(shown.hints[QStringLiteral("sound-name")], QStringLiteral("message-new-instant"));
    EXPECT_THAT(shown.actions, ElementsAre(QStringLiteral("default"), QStringLiteral("Open")));
}

TEST_F(PresenterTest, AServiceWithoutActionsIsGivenNone)
{
    m_service.capabilities = {QStringLiteral("body")};
    ASSERT_TRUE(present(news()));
    EXPECT_THAT(m_service.shown().front().actions, SizeIs(0));
}

TEST_F(PresenterTest, TheBodyIsEscapedOnlyWhereMarkupIsUnderstood)
{
    ASSERT_TRUE(present(question()));
    EXPECT_EQ(m_service.shown().at(0).body, QStringLiteral("Is 1 < 2 & \"so\"?"));
    // The next service understands markup.
    m_service.vanish();
    m_service.capabilities << QStringLiteral("body-markup");
    m_service.appear();
    ASSERT_TRUE(waitUntil([&] { return m_service.shown().size() == 2; }));
    EXPECT_EQ(m_service.shown().at(1).body, QStringLiteral("Is 1 &lt; 2 &amp; &quot;so&quot;?"));
}

TEST_F(PresenterTest, TheTitleIsNeverEscaped)
{
    m_service.capabilities << QStringLiteral("body-markup");
    RemoteNotification notification = news();
    notification.title = QStringLiteral("<b>R&D</b>");
    ASSERT_TRUE(present(notification));
    EXPECT_EQ(m_service.shown().front().summary, QStringLiteral("<b>R&D</b>"));
}

TEST_F(PresenterTest, WhatWasNotAuthorizedIsNotUsed)
{
    ASSERT_EQ(authorize(4), true); // alerts alone
    ASSERT_TRUE(present(question()));
    const auto &shown = m_service.shown().front();
    EXPECT_EQ(shown.hints[QStringLiteral("urgency")], QVariant::fromValue<uchar>(1));
    EXPECT_EQ(shown.hints[QStringLiteral("suppress-sound")], true);
    EXPECT_FALSE(shown.hints.contains(QStringLiteral("sound-name")));
    ASSERT_EQ(authorize(2), true); // no alerts
    ASSERT_TRUE(present(question()));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
}

TEST_F(PresenterTest, InFrontTheDelegateSaysHowItIsShown)
{
    m_isInFront = true;
    ASSERT_TRUE(present(question()));
    EXPECT_EQ(m_willPresent, 1);
    EXPECT_TRUE(m_service.shown().at(0).hints.contains(QStringLiteral("sound-name")));
    EXPECT_THAT(m_opened, SizeIs(0));
    m_options = {PresentationOptions::banner};
    ASSERT_TRUE(present(question()));
    EXPECT_FALSE(m_service.shown().at(1).hints.contains(QStringLiteral("sound-name")));
    m_options = {};
    ASSERT_TRUE(present(question()));
    EXPECT_THAT(m_service.shown(), SizeIs(2));
}

TEST_F(PresenterTest, NotInFrontTheDelegateIsNotAsked)
{
    ASSERT_TRUE(present(question()));
    EXPECT_EQ(m_willPresent, 0);
    EXPECT_THAT(m_service.shown(), SizeIs(1));
}

TEST_F(PresenterTest, ATapOpensItOnceAndTakesItOffTheScreen)
{
    ASSERT_TRUE(present(question()));
    const quint32 id = m_service.shown().front().id;
    m_service.tap(id, QStringLiteral("token-1"));
    m_service.tap(id);
    ASSERT_TRUE(waitUntil([&] { return m_service.closed().size() == 1; }));
    runPendingEvents();
    ASSERT_THAT(m_opened, SizeIs(1));
    EXPECT_EQ(*m_opened.front().userInfo.at("project_id").text(), "p1");
    EXPECT_THAT(m_tokens, ElementsAre(QStringLiteral("token-1")));
    EXPECT_THAT(m_service.closed(), ElementsAre(id));
    EXPECT_EQ(m_presenter.waiting(), 0);
}

TEST_F(PresenterTest, ATokenForAnotherNotificationIsNotUsed)
{
    ASSERT_TRUE(present(question()));
    const quint32 id = m_service.shown().front().id;
    m_service.tap(id + 1, QStringLiteral("token-1"), QStringLiteral("reply"));
    m_service.tap(id);
    ASSERT_TRUE(waitUntil([&] { return !m_opened.empty(); }));
    EXPECT_THAT(m_tokens, ElementsAre(QString()));
}

TEST_F(PresenterTest, OtherIdsOtherActionsAndStrangersOpenNothing)
{
    ASSERT_TRUE(present(question()));
    const quint32 id = m_service.shown().front().id;
    m_service.tap(id + 1);
    m_service.tap(id, {}, QStringLiteral("settings"));
    QDBusMessage signal = QDBusMessage::createSignal(
        QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("ActionInvoked"));
    signal << id << QStringLiteral("default");
    QDBusConnection stranger = m_bus.connect();
    stranger.send(signal);
    ASSERT_TRUE(present(news())); // everything before it has arrived
    EXPECT_THAT(m_opened, SizeIs(0));
    EXPECT_EQ(m_presenter.waiting(), 2);
}

TEST_F(PresenterTest, ADismissedNotificationWaitsNoLonger)
{
    ASSERT_TRUE(present(question()));
    EXPECT_EQ(m_presenter.waiting(), 1);
    m_service.dismiss(m_service.shown().front().id);
    EXPECT_TRUE(waitUntil([&] { return m_presenter.waiting() == 0; }));
    EXPECT_EQ(m_waitingChanges, 2);
}

TEST_F(PresenterTest, WhenTheServiceVanishesDecisionsStillWaitAndNewsDoesNot)
{
    ASSERT_TRUE(present(question()));
    ASSERT_TRUE(present(news()));
    EXPECT_EQ(m_presenter.waiting(), 2);
    m_service.vanish();
    EXPECT_TRUE(waitUntil([&] { return m_presenter.waiting() == 1; }));
    m_service.appear();
    ASSERT_TRUE(waitUntil([&] { return m_service.shown().size() == 3; }));
    EXPECT_EQ(m_service.shown().back().summary, QStringLiteral("A question"));
    m_service.tap(m_service.shown().back().id);
    EXPECT_TRUE(waitUntil([&] { return m_opened.size() == 1; }));
    EXPECT_EQ(m_presenter.waiting(), 0);
}

TEST_F(PresenterTest, WithoutAServiceItIsToldAndShownWhenOneComes)
{
    m_service.vanish();
    std::vector<Presented> fates;
    m_presenter.present(news(), [&](Presented fate) { fates.push_back(fate); });
    ASSERT_TRUE(waitUntil([&] { return fates.size() == 1; }));
    EXPECT_EQ(m_presenter.waiting(), 1);
    m_service.appear();
    ASSERT_TRUE(waitUntil([&] { return fates.size() == 2; }));
    EXPECT_THAT(fates, ElementsAre(Presented::Later, Presented::Settled));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
}

TEST_F(PresenterTest, AServiceThatDoesNotAnswerInTimeIsTriedAgainLater)
{
    m_service.refusals = 1;
    m_service.refusal = QStringLiteral("org.freedesktop.DBus.Error.NoReply");
    std::vector<Presented> fates;
    m_presenter.present(question(), [&](Presented fate) { fates.push_back(fate); });
    ASSERT_TRUE(waitUntil([&] { return fates.size() == 2; }));
    EXPECT_THAT(fates, ElementsAre(Presented::Later, Presented::Settled));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
}

TEST_F(PresenterTest, AServiceThatRefusesIsTriedAgainLater)
{
    m_service.refusals = 3;
    std::vector<Presented> fates;
    m_presenter.present(question(), [&](Presented fate) { fates.push_back(fate); });
    ASSERT_TRUE(waitUntil([&] { return fates.size() == 2; }));
    EXPECT_THAT(fates, ElementsAre(Presented::Later, Presented::Settled));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
}

TEST_F(PresenterTest, ARefusedNotificationIsTriedAgain)
{
    m_service.refusals = 1;
    ASSERT_TRUE(present(question()));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
    EXPECT_EQ(m_presenter.waiting(), 1);
}

TEST_F(PresenterTest, BeyondTheMostThatWaitTheOldestThatIsNotUrgentIsTakenBack)
{
    constexpr auto most = static_cast<int>(platform::NotificationPresenter::mostWaiting);
    ASSERT_TRUE(present(question()));
    for (int count = 0; count < most; ++count) {
        ASSERT_TRUE(present(news(QString::number(count))));
    }
    ASSERT_TRUE(waitUntil([&] { return m_service.closed().size() == 1; }));
    EXPECT_THAT(m_service.closed(), ElementsAre(m_service.shown()[1].id));
    EXPECT_EQ(m_presenter.waiting(), most);
    ASSERT_TRUE(waitUntil([&] { return badge() == most; }));
}

TEST_F(PresenterTest, WhenAllAreUrgentTheOldestIsTakenBack)
{
    for (int count = 0; count <= platform::NotificationPresenter::mostWaiting; ++count) {
        ASSERT_TRUE(present(question()));
    }
    ASSERT_TRUE(waitUntil([&] { return m_service.closed().size() == 1; }));
    EXPECT_THAT(m_service.closed(), ElementsAre(m_service.shown().front().id));
}

TEST_F(PresenterTest, OfTooManyThatCanNotBeShownTheOldestIsGivenUp)
{
    m_service.vanish();
    std::vector<Presented> first;
    m_presenter.present(news(), [&](Presented fate) { first.push_back(fate); });
    for (int count = 0; count < platform::NotificationPresenter::mostWaiting; ++count) {
        m_presenter.present(question(), [](Presented) {});
    }
    ASSERT_THAT(first, ElementsAre(Presented::Never));
    EXPECT_EQ(m_presenter.waiting(), platform::NotificationPresenter::mostWaiting);
}

TEST_F(PresenterTest, TheBadgeCountsWhatWaitsAndMayBeCounted)
{
    ASSERT_TRUE(present(question()));
    ASSERT_TRUE(present(news()));
    ASSERT_TRUE(waitUntil([&] { return badge() == 2; }));
    m_isInFront = true;
    m_options = {PresentationOptions::banner};
    ASSERT_TRUE(present(news()));
    m_service.dismiss(m_service.shown().front().id);
    ASSERT_TRUE(waitUntil([&] { return badge() == 1; })); // neither that one nor the uncounted
    m_service.tap(m_service.shown()[1].id);
    ASSERT_TRUE(waitUntil([&] { return badge() == 0; }));
    EXPECT_EQ(m_presenter.waiting(), 1);
}

TEST_F(PresenterTest, WithoutLeaveForABadgeThereIsNone)
{
    ASSERT_EQ(authorize(4 + 2 + 16), true);
    ASSERT_TRUE(present(question()));
    ASSERT_TRUE(waitUntil([&] { return !m_launcher.updates().empty(); }));
    EXPECT_EQ(badge(), 0);
}

TEST_F(PresenterTest, CapabilitiesAreAskedForOncePerService)
{
    ASSERT_TRUE(present(news()));
    ASSERT_TRUE(present(news()));
    EXPECT_EQ(m_service.questions(), 1);
}

} // namespace
} // namespace trellisport::test
