#pragma once

#include "Notifications/NotificationManager.h"
#include "Support/CallsEnd.h"
#include "Support/FakeHttpSession.h"
#include "Support/FakeNotifications.h"
#include "Support/InlineExecutor.h"

#include <memory>

namespace trellisport::test {

/// A notification manager with everything around it under the test's control.
struct NotificationsBench {
    std::shared_ptr<FakeHttpSession> session = std::make_shared<FakeHttpSession>();
    TrellisportAPI api{"https://service.example/api/v1", session, InlineExecutor::shared()};
    FakeNotificationCenter center;
    FakeApplication application;
    ManualMainQueue queue;
    NotificationManager manager{api, center, application, queue};
    CallsEnd callsEnd{*session};
};

} // namespace trellisport::test
