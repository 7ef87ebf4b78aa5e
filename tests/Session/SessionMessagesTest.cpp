#include "Session/SessionFixture.h"

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

TEST_F(BusSessionTest, AMessageIsShownAndItsTapBringsUpTheWindowAndThenRoutes)
{
    start();
    registerDevice();
    ASSERT_TRUE(deliver(sealed(awarded)));
    ASSERT_THAT(m_service.shown(), SizeIs(1));
    EXPECT_EQ(m_service.shown().front().summary, QStringLiteral("Awarded"));
    EXPECT_THAT(log, SizeIs(0));
    m_service.tap(m_service.shown().front().id, QStringLiteral("token-2"));
    ASSERT_TRUE(logHas("open p1"));
    EXPECT_THAT(log, ElementsAre("bring up token-2", "open p1"));
}

TEST_F(BusSessionTest, NothingIsRoutedWhenTheWindowCanNotBeShown)
{
    start();
    registerDevice();
    showsWindow = false;
    ASSERT_TRUE(deliver(sealed(awarded)));
    m_service.tap(m_service.shown().front().id);
    ASSERT_TRUE(waitUntil([&] { return wishes.size() == 1; }));
    wishes.front()(false);
    runPendingEvents();
    EXPECT_THAT(log, ElementsAre("bring up "));
}

TEST_F(BusSessionTest, TheSameMessageIsShownOnceAlsoAfterARestart)
{
    start();
    registerDevice();
    const QByteArray message = sealed(awarded);
    ASSERT_TRUE(deliver(message));
    ASSERT_TRUE(deliver(message));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
    start();
    ASSERT_TRUE(deliver(message));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
    ASSERT_TRUE(deliver(sealed(awarded)));
    EXPECT_THAT(m_service.shown(), SizeIs(2));
}

TEST_F(BusSessionTest, MessagesWithTheSameIdAreOneNotification)
{
    start();
    registerDevice();
    ASSERT_TRUE(deliver(sealed(R"({"id":"n1","aps":{"alert":"one"}})")));
    ASSERT_TRUE(deliver(sealed(R"({"id":"n1","aps":{"alert":"again"}})")));
    ASSERT_TRUE(deliver(sealed(R"({"id":"n2","aps":{"alert":"two"}})")));
    EXPECT_THAT(m_service.shown(), SizeIs(2));
}

TEST_F(BusSessionTest, WhateverArrivesIsShownAndRoutesNowhereWhenItNamesNothing)
{
    start();
    registerDevice();
    for (const QByteArray &message : {awarded, QByteArray("hello"), sealed("[1]"), sealed("")}) {
        ASSERT_TRUE(deliver(message));
    }
    ASSERT_THAT(m_service.shown(), SizeIs(4));
    EXPECT_EQ(m_service.shown()[1].body, QStringLiteral("hello"));
    EXPECT_FALSE(m_service.shown()[3].body.isEmpty());
    m_service.tap(m_service.shown()[1].id);
    EXPECT_TRUE(logHas("open nothing"));
}

TEST_F(BusSessionTest, AMessageIsAcknowledgedWhenItIsShownAndNotBefore)
{
    start();
    registerDevice();
    m_service.holdsAnswers = true;
    const QDBusPendingCall call = send(sealed(awarded));
    const QDBusPendingCall again = send(lastSent);
    ASSERT_TRUE(waitUntil([&] { return m_service.held() == 1; }));
    settle();
    EXPECT_FALSE(call.isFinished());
    EXPECT_FALSE(again.isFinished());
    m_service.answerHeld();
    ASSERT_TRUE(waitUntil([&] { return call.isFinished() && again.isFinished(); }));
    EXPECT_FALSE(call.isError());
    EXPECT_FALSE(again.isError());
    EXPECT_THAT(m_service.shown(), SizeIs(1));
}

TEST_F(BusSessionTest, AMessageThatCanNotBeShownIsNotAcknowledgedAndShownLater)
{
    start();
    m_session->setWindow(true);
    registerDevice();
    m_service.vanish();
    for (int count = 0; count < 2; ++count) { // the second time it is known and waits already
        const QDBusPendingCall call = count == 0 ? send(sealed(question)) : send(lastSent);
        ASSERT_TRUE(waitUntil([&] { return call.isFinished(); }));
        EXPECT_TRUE(call.isError());
    }
    m_session->setWindow(false); // it stays for what it could not show
    EXPECT_FALSE(waitUntil([&] { return !log.empty(); }, std::chrono::milliseconds(300)));
    m_service.appear();
    ASSERT_TRUE(waitUntil([&] { return m_service.shown().size() == 1; }));
    ASSERT_TRUE(deliver(lastSent)); // the push service tries again: it has been seen by now
    EXPECT_THAT(m_service.shown(), SizeIs(1));
    m_service.tap(m_service.shown().front().id);
    EXPECT_TRUE(logHas("open p7"));
}

TEST_F(BusSessionTest, AMessageThatWasNotShownIsNotRememberedOverARestart)
{
    start();
    registerDevice();
    m_service.vanish();
    const QDBusPendingCall call = send(sealed(question));
    ASSERT_TRUE(waitUntil([&] { return call.isFinished(); }));
    start();
    m_service.appear();
    ASSERT_TRUE(deliver(lastSent));
    EXPECT_THAT(m_service.shown(), SizeIs(1));
}

TEST_F(BusSessionTest, ANotificationServiceThatDiesBeforeItsAnswerLosesNoMessage)
{
    start();
    registerDevice();
    m_service.holdsAnswers = true;
    const QDBusPendingCall call = send(sealed(question));
    ASSERT_TRUE(waitUntil([&] { return m_service.held() == 1; }));
    m_service.die();
    ASSERT_TRUE(waitUntil([&] { return call.isFinished(); }));
    EXPECT_TRUE(call.isError());
    FakeNotificationService next(m_bus.connect());
    next.appear();
    EXPECT_TRUE(waitUntil([&] { return next.shown().size() == 1; }));
}

TEST_F(BusSessionTest, ADecisionIsShownAgainByTheNextNotificationService)
{
    start();
    m_session->setWindow(true);
    registerDevice();
    ASSERT_TRUE(deliver(sealed(question)));
    ASSERT_TRUE(deliver(sealed(awarded)));
    m_service.vanish();
    settle();
    m_session->setWindow(false);
    EXPECT_FALSE(waitUntil([&] { return !log.empty(); }, std::chrono::milliseconds(300)));
    FakeNotificationService next(m_bus.connect());
    next.appear();
    ASSERT_TRUE(waitUntil([&] { return next.shown().size() == 1; }));
    EXPECT_EQ(next.shown().front().summary, QStringLiteral("Decision"));
    next.tap(next.shown().front().id);
    EXPECT_TRUE(logHas("open p7"));
}

} // namespace
} // namespace trellisport::test
