#include "Shell/AppDelegate.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/FakeNotifications.h"
#include "Support/InlineExecutor.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

namespace trellisport::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Optional;

class AppDelegateTest : public ::testing::Test {
protected:
    std::shared_ptr<FakeHttpSession> m_session = std::make_shared<FakeHttpSession>();
    InlineExecutor m_executor;
    TrellisportAPI m_api{"https://service.test/api/v1", m_session, m_executor};
    FakeNotificationCenter m_center;
    FakeApplication m_application;
    ManualMainQueue m_queue;
    NotificationManager m_notifications{m_api, m_center, m_application, m_queue};
    AppDelegate m_delegate{m_notifications};
    CallsEnd m_callsEnd{*m_session};
};

TEST_F(AppDelegateTest, LaunchAsksForPermissionAndAlwaysSucceeds)
{
    EXPECT_TRUE(m_delegate.didFinishLaunching());
    EXPECT_EQ(m_center.requests(), 1);
}

TEST_F(AppDelegateTest, ADeviceTokenGoesToTheServiceUnchanged)
{
    m_delegate.didRegisterForRemoteNotifications({0x00, 0xAB, 0x10});
    ASSERT_TRUE(waitUntil([&] { return m_session->requestCount() == 1; }));
    EXPECT_THAT(m_session->requests().front().body, Optional(HasSubstr("\"00ab10\"")));
}

TEST_F(AppDelegateTest, AFailedRegistrationIsNotHandled)
{
    platform::ApplicationDelegate &delegate = m_delegate;
    delegate.didFailToRegisterForRemoteNotifications("no push service");
    EXPECT_EQ(m_session->requestCount(), 0U);
    EXPECT_EQ(m_queue.waiting(), 0U);
    EXPECT_EQ(m_application.registrations(), 0);
}

} // namespace
} // namespace trellisport::test
