#include "DesktopNotifications/PresenterFixture.h"

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

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
