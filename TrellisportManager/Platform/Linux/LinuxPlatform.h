#pragma once

#include "Platform/Linux/CurlHttpSession.h"
#include "Platform/Linux/Desktop/LinuxAppearance.h"
#include "Platform/Linux/IcuTextRules.h"
#include "Platform/Linux/LinuxEnvironment.h"
#include "Platform/Linux/LinuxLinkOpener.h"
#include "Platform/Linux/Session/LinuxApplication.h"
#include "Platform/Linux/ThreadPoolExecutor.h"
#include "Platform/Linux/UnfinishedWrites.h"
#include "Platform/Platform.h"
#include "Platform/Toolkit/MainThreadQueue.h"
#include "Platform/Toolkit/NotificationRelay.h"
#include "Platform/Toolkit/QtClock.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>

namespace trellisport::platform {

/// How the application's exchanges are made. Any thread.
[[nodiscard]] CurlHttpOptions httpOptions(const Environment &environment);

/// The parts that cost something are made on first use, on whichever thread that is.
class LinuxPlatform final : public Platform {
public:
    /// The file that TRELLISPORT_CA_FILE names must hold certificate authorities.
    [[nodiscard]] std::optional<std::string> setupProblem() const override;
    [[nodiscard]] std::shared_ptr<HttpSession> httpSession() override;
    [[nodiscard]] Executor &executor() override;
    [[nodiscard]] const TextRules &textRules() override;
    [[nodiscard]] const Environment &environment() override { return m_environment; }
    [[nodiscard]] LinkOpener &linkOpener() override { return m_linkOpener; }
    [[nodiscard]] Clock &clock() override { return m_clock; }
    [[nodiscard]] MainQueue &mainQueue() override { return m_mainQueue; }
    [[nodiscard]] UserNotificationCenter &userNotificationCenter() override
    {
        return m_notificationCenter;
    }
    [[nodiscard]] Appearance &appearance() override { return m_appearance; }
    [[nodiscard]] Application &application() override { return m_application; }

private:
    /// Waits for what is being written, and then leaves no reply that could still be decoded while
    /// the libraries are taken down.
    void endExchanges();

    LinuxEnvironment m_environment;
    LinuxAppearance m_appearance{m_environment};
    LinuxLinkOpener m_linkOpener;
    QtClock m_clock;
    MainThreadQueue m_mainQueue;
    NotificationRelay m_notificationCenter;
    /// The answer that was sent as the last thing is still to arrive. A network that has gone is
    /// not waited for much longer than a user would look at a program that does not end.
    static constexpr std::chrono::seconds patienceAtEnd{10};
    std::shared_ptr<UnfinishedWrites> m_writes = std::make_shared<UnfinishedWrites>();
    LinuxApplication m_application{m_mainQueue, m_notificationCenter, m_appearance,
                                   [this] { endExchanges(); }};
    std::weak_ptr<CurlHttpSession> m_session;
    std::once_flag m_executorOnce;
    std::optional<ThreadPoolExecutor> m_executor;
    std::once_flag m_textRulesOnce;
    std::optional<IcuTextRules> m_textRules;
};

} // namespace trellisport::platform
