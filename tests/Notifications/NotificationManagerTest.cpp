#include "Notifications/NotificationManager.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/FakeNotifications.h"
#include "Support/InlineExecutor.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <thread>

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Optional;
using ::testing::StrEq;

class NotificationManagerTest : public ::testing::Test {
protected:
    void open(platform::UserInfo userInfo)
    {
        int completions = 0;
        m_center.delegate()->didReceive({{std::move(userInfo)}}, [&] { ++completions; });
        EXPECT_EQ(completions, 1);
        m_queue.run();
    }

    std::shared_ptr<FakeHttpSession> m_session = std::make_shared<FakeHttpSession>();
    InlineExecutor m_executor;
    TrellisportAPI m_api{"https://service.test/api/v1", m_session, m_executor};
    FakeNotificationCenter m_center;
    FakeApplication m_application;
    ManualMainQueue m_queue;
    NotificationManager m_manager{m_api, m_center, m_application, m_queue};
    CallsEnd m_callsEnd{*m_session};
};

TEST_F(NotificationManagerTest, StartsWithNothingPending)
{
    EXPECT_EQ(m_manager.pendingProjectId(), std::nullopt);
    EXPECT_EQ(m_manager.pendingDecisionId(), std::nullopt);
    EXPECT_EQ(m_manager.pendingTab(), std::nullopt);
}

TEST_F(NotificationManagerTest, IsTheCentresDelegateWhileItLives)
{
    FakeNotificationCenter center;
    {
        const NotificationManager manager(m_api, center, m_application, m_queue);
        EXPECT_EQ(center.delegate(), &manager);
    }
    EXPECT_EQ(center.delegate(), nullptr);
}

TEST_F(NotificationManagerTest, PermissionIsAskedForAlertBadgeSoundAndCriticalAlert)
{
    m_manager.requestPermission();
    EXPECT_EQ(m_center.requests(), 1);
    ASSERT_TRUE(m_center.options());
    EXPECT_EQ(m_center.options()->bits, 4U + 1U + 2U + 16U);
}

TEST_F(NotificationManagerTest, GrantedPermissionRegistersOnTheMainQueue)
{
    m_manager.requestPermission();
    std::thread([&] { m_center.answer(true, "an error that nobody reads"); }).join();
    EXPECT_EQ(m_application.registrations(), 0);
    m_queue.run();
    EXPECT_EQ(m_application.registrations(), 1);
}

TEST_F(NotificationManagerTest, DeniedPermissionDoesNothing)
{
    m_manager.requestPermission();
    m_center.answer(false);
    EXPECT_EQ(m_queue.waiting(), 0U);
    m_queue.run();
    EXPECT_EQ(m_application.registrations(), 0);
}

TEST_F(NotificationManagerTest, TokenBytesBecomeLowerCaseHexadecimalText)
{
    m_session->queueReply(200, R"({"status":"ok"})");
    m_manager.registerDeviceToken({0x00, 0xAB, 0x10});
    ASSERT_TRUE(waitUntil([&] { return m_session->requestCount() == 1; }));
    const platform::HttpRequest request = m_session->requests().front();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url, "https://service.test/api/v1/devices");
    EXPECT_THAT(request.body, Optional(HasSubstr("\"00ab10\"")));
}

TEST_F(NotificationManagerTest, EachDeliveredTokenIsSentOnceAndFailuresAreDropped)
{
    m_session->queueReply(500);
    m_session->queueFailure(platform::TransportFailure::ConnectionLost, "lost");
    m_session->queueReply(200, "not JSON");
    for (int round = 0; round < 3; ++round) {
        m_manager.registerDeviceToken({0x01});
    }
    ASSERT_TRUE(waitUntil([&] { return m_session->queued() == 0; }));
    runPendingEvents();
    EXPECT_EQ(m_session->requestCount(), 3U);
    EXPECT_EQ(m_manager.pendingProjectId(), std::nullopt);
}

TEST_F(NotificationManagerTest, ForegroundNotificationIsShownAndChangesNothing)
{
    std::optional<platform::PresentationOptions> options;
    m_center.delegate()->willPresent(
        {{{"type", userInfoText("decision_needed")}, {"project_id", userInfoText("p1")}}},
        [&](platform::PresentationOptions given) { options = given; });
    ASSERT_TRUE(options);
    EXPECT_EQ(options->bits, 16U + 2U + 1U);
    EXPECT_EQ(m_queue.waiting(), 0U);
    EXPECT_EQ(m_manager.pendingProjectId(), std::nullopt);
    EXPECT_EQ(m_manager.pendingTab(), std::nullopt);
}

TEST_F(NotificationManagerTest, DecisionNeededNamesProjectDecisionAndTab)
{
    open({{"type", userInfoText("decision_needed")},
          {"project_id", userInfoText("p1")},
          {"decision_id", userInfoText("d7")}});
    EXPECT_THAT(m_manager.pendingProjectId(), Optional(StrEq("p1")));
    EXPECT_THAT(m_manager.pendingDecisionId(), Optional(StrEq("d7")));
    EXPECT_THAT(m_manager.pendingTab(), Optional(StrEq("decisions")));
}

TEST_F(NotificationManagerTest, DecisionNeededWithoutDecisionClearsTheEarlierOne)
{
    m_manager.setPendingDecisionId("d7");
    open({{"type", userInfoText("decision_needed")}, {"project_id", userInfoText("p1")}});
    EXPECT_EQ(m_manager.pendingDecisionId(), std::nullopt);
}

TEST_F(NotificationManagerTest, ProjectAwardedKeepsTheEarlierDecision)
{
    open({{"type", userInfoText("decision_needed")},
          {"project_id", userInfoText("p1")},
          {"decision_id", userInfoText("d7")}});
    open({{"type", userInfoText("project_awarded")},
          {"project_id", userInfoText("p2")},
          {"decision_id", userInfoText("d8")}});
    EXPECT_THAT(m_manager.pendingProjectId(), Optional(StrEq("p2")));
    EXPECT_THAT(m_manager.pendingDecisionId(), Optional(StrEq("d7")));
    EXPECT_THAT(m_manager.pendingTab(), Optional(StrEq("overview")));
}

TEST_F(NotificationManagerTest, DevErrorWithoutProjectClearsTheEarlierProject)
{
    m_manager.setPendingProjectId("p1");
    open({{"type", userInfoText("dev_error")}});
    EXPECT_EQ(m_manager.pendingProjectId(), std::nullopt);
    EXPECT_THAT(m_manager.pendingTab(), Optional(StrEq("logs")));
}

TEST_F(NotificationManagerTest, UnknownTypeNamesTheProjectAndNoTab)
{
    for (const char *type : {"report_ready", "Decision_Needed", ""}) {
        m_manager.setPendingProjectId(std::nullopt);
        m_manager.setPendingTab("logs");
        open({{"type", userInfoText(type)}, {"project_id", userInfoText("p3")}});
        EXPECT_THAT(m_manager.pendingProjectId(), Optional(StrEq("p3"))) << type;
        EXPECT_EQ(m_manager.pendingTab(), std::nullopt) << type;
    }
}

TEST_F(NotificationManagerTest, ValuesOfOtherKindsCountAsMissing)
{
    m_manager.setPendingProjectId("p1");
    m_manager.setPendingDecisionId("d1");
    open({{"type", userInfoText("decision_needed")},
          {"project_id", {4.0}},
          {"decision_id", {platform::UserInfoValue::List{userInfoText("d7")}}}});
    EXPECT_EQ(m_manager.pendingProjectId(), std::nullopt);
    EXPECT_EQ(m_manager.pendingDecisionId(), std::nullopt);
    EXPECT_THAT(m_manager.pendingTab(), Optional(StrEq("decisions")));

    open({{"type", {true}}, {"project_id", {nullptr}}});
    EXPECT_EQ(m_manager.pendingProjectId(), std::nullopt);
    EXPECT_EQ(m_manager.pendingTab(), std::nullopt);
}

TEST_F(NotificationManagerTest, RoutingWaitsForTheMainQueueAndTheCompletionDoesNot)
{
    bool completed = false;
    std::thread([&] {
        m_center.delegate()->didReceive(
            {{{{"type", userInfoText("dev_error")}, {"project_id", userInfoText("p1")}}}},
            [&] { completed = true; });
    }).join();
    EXPECT_TRUE(completed);
    EXPECT_EQ(m_queue.waiting(), 1U);
    EXPECT_EQ(m_manager.pendingProjectId(), std::nullopt);
    m_queue.run();
    EXPECT_THAT(m_manager.pendingProjectId(), Optional(StrEq("p1")));
}

TEST_F(NotificationManagerTest, ObserversSeeProjectThenDecisionThenTabInOneTurn)
{
    std::vector<std::string> seen;
    const auto pending = [](const std::optional<std::string> &value) {
        return value.value_or("absent");
    };
    const auto note = [&](const char *what) {
        seen.push_back(std::string(what) + " " + pending(m_manager.pendingProjectId()) + " " +
                       pending(m_manager.pendingDecisionId()) + " " +
                       pending(m_manager.pendingTab()));
    };
    QObject::connect(&m_manager, &NotificationManager::pendingProjectIdChanged,
                     [&] { note("project"); });
    QObject::connect(&m_manager, &NotificationManager::pendingDecisionIdChanged,
                     [&] { note("decision"); });
    QObject::connect(&m_manager, &NotificationManager::pendingTabChanged, [&] { note("tab"); });

    m_center.delegate()->didReceive({{{{"type", userInfoText("decision_needed")},
                                       {"project_id", userInfoText("p1")},
                                       {"decision_id", userInfoText("d7")}}}},
                                    [] {});
    EXPECT_EQ(m_queue.waiting(), 1U);
    m_queue.run();
    EXPECT_THAT(seen, ElementsAre("project p1 absent absent", "decision p1 d7 absent",
                                  "tab p1 d7 decisions"));
}

TEST_F(NotificationManagerTest, WritingTheSameValueAgainNotifiesNobody)
{
    open({{"type", userInfoText("dev_error")}, {"project_id", userInfoText("p1")}});
    int notices = 0;
    QObject::connect(&m_manager, &NotificationManager::pendingProjectIdChanged, [&] { ++notices; });
    open({{"type", userInfoText("dev_error")}, {"project_id", userInfoText("p1")}});
    EXPECT_EQ(notices, 0);
    m_manager.setPendingProjectId(std::nullopt);
    open({{"type", userInfoText("dev_error")}, {"project_id", userInfoText("p1")}});
    EXPECT_EQ(notices, 2);
}

TEST_F(NotificationManagerTest, RoutingThatWaitsWhenTheManagerGoesIsDropped)
{
    FakeNotificationCenter center;
    {
        const NotificationManager manager(m_api, center, m_application, m_queue);
        center.delegate()->didReceive({{{{"project_id", userInfoText("p1")}}}}, [] {});
    }
    m_queue.run();
    EXPECT_EQ(m_manager.pendingProjectId(), std::nullopt);
}

} // namespace
} // namespace trellisport::test
