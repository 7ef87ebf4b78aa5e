#include "DesktopNotifications/PresenterFixture.h"

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

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

} // namespace
} // namespace trellisport::test
