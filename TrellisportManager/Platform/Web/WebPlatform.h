#pragma once

#include "Platform/Platform.h"
#include "Platform/Toolkit/MainThreadQueue.h"
#include "Platform/Toolkit/NotificationRelay.h"
#include "Platform/Toolkit/QtClock.h"
#include "Platform/Web/BrowserTextRules.h"
#include "Platform/Web/FetchHttpSession.h"
#include "Platform/Web/InPlaceExecutor.h"
#include "Platform/Web/PageAppearance.h"
#include "Platform/Web/PageLinkOpener.h"
#include "Platform/Web/WebApplication.h"
#include "Platform/Web/WebEnvironment.h"

namespace trellisport::platform {

/// A browser's page. One thread.
class WebPlatform final : public Platform {
public:
    [[nodiscard]] std::optional<std::string> setupProblem() const override { return std::nullopt; }
    [[nodiscard]] std::shared_ptr<HttpSession> httpSession() override { return m_session; }
    [[nodiscard]] Executor &executor() override { return m_executor; }
    [[nodiscard]] const TextRules &textRules() override { return m_textRules; }
    [[nodiscard]] const Environment &environment() override { return m_environment; }
    [[nodiscard]] LinkOpener &linkOpener() override { return m_linkOpener; }
    [[nodiscard]] Clock &clock() override { return m_clock; }
    [[nodiscard]] MainQueue &mainQueue() override { return m_mainQueue; }
    [[nodiscard]] UserNotificationCenter &userNotificationCenter() override
    {
        return m_notificationRelay;
    }
    [[nodiscard]] Appearance &appearance() override { return m_appearance; }
    [[nodiscard]] Application &application() override { return m_application; }

private:
    std::shared_ptr<HttpSession> m_session = std::make_shared<FetchHttpSession>();
    InPlaceExecutor m_executor;
    BrowserTextRules m_textRules;
    WebEnvironment m_environment;
    PageLinkOpener m_linkOpener;
    QtClock m_clock;
    MainThreadQueue m_mainQueue;
    NotificationRelay m_notificationRelay;
    PageAppearance m_appearance;
    WebApplication m_application{m_mainQueue, m_notificationRelay};
};

} // namespace trellisport::platform
