#pragma once

#include "Platform/Appearance.h"
#include "Platform/Clock.h"
#include "Platform/HttpSession.h"
#include "Platform/LinkOpener.h"
#include "Platform/Linux/CurlHttpSession.h"
#include "Platform/Linux/IcuTextRules.h"
#include "Platform/Linux/LinuxEnvironment.h"
#include "Platform/Linux/ThreadPoolExecutor.h"
#include "Platform/Platform.h"
#include "Platform/Toolkit/MainThreadQueue.h"
#include "Platform/Toolkit/QtClock.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace trellisport::chaos {

/// How much faster than the world's the application's time passes.
constexpr int timeLapse = 20;

/// A PUT or POST that the application handed to its session.
struct SentWrite {
    std::string method;
    std::string url;
    std::string body;
    std::string outcome; ///< "status N", a transport failure's sentence, or empty while under way
    bool mayBeLost = false; ///< it failed before a connection was made, so it may not have arrived
};

/// The real session, watched. Any thread.
class WatchedSession : public platform::HttpSession {
public:
    explicit WatchedSession(std::shared_ptr<platform::HttpSession> session);

    [[nodiscard]] std::unique_ptr<platform::HttpExchange> send(platform::HttpRequest request,
                                                               Completion completion) override;

    [[nodiscard]] int sent() const;
    [[nodiscard]] int underWay() const;
    [[nodiscard]] std::vector<SentWrite> writes() const;

private:
    struct Notes {
        mutable std::mutex mutex;
        int sent = 0;
        int underWay = 0;
        std::vector<SentWrite> writes;
    };

    std::shared_ptr<platform::HttpSession> m_session;
    std::shared_ptr<Notes> m_notes = std::make_shared<Notes>();
};

/// The toolkit's time, faster.
class LapsingClock : public platform::Clock {
public:
    [[nodiscard]] std::unique_ptr<platform::Timer> every(std::chrono::milliseconds interval,
                                                         std::function<void()> tick) override
    {
        return m_clock.every(interval / timeLapse, std::move(tick));
    }
    [[nodiscard]] std::unique_ptr<platform::Timer> after(std::chrono::milliseconds delay,
                                                         std::function<void()> done) override
    {
        return m_clock.after(delay / timeLapse, std::move(done));
    }

private:
    platform::QtClock m_clock;
};

/// Notifications come from the test, on a thread that is not the main one, as from a system.
class PlayedNotificationCenter : public platform::UserNotificationCenter {
public:
    void setDelegate(platform::UserNotificationCenterDelegate *delegate) override;
    void requestAuthorization(platform::AuthorizationOptions options,
                              AuthorizationCompletion completion) override;

    /// A message has come; opened: and was tapped.
    void deliver(platform::UserInfo userInfo, bool opened);
    /// How many were shown, and how many opened.
    [[nodiscard]] int presented() const;
    [[nodiscard]] int opened() const;

private:
    mutable std::mutex m_mutex;
    platform::UserNotificationCenterDelegate *m_delegate = nullptr;
    int m_presented = 0;
    int m_opened = 0;
    platform::ThreadPoolExecutor m_thread;
};

/// Notes the links that would have left the program.
class NotingLinkOpener : public platform::LinkOpener {
public:
    bool open(const std::string & /*url*/) override
    {
        ++m_opened;
        return true;
    }
    [[nodiscard]] int opened() const { return m_opened; }

private:
    int m_opened = 0;
};

/// A phone whose text size somebody changes. Main thread.
class PlayedAppearance : public platform::Appearance {
public:
    [[nodiscard]] double textScale() const override { return m_textScale; }
    [[nodiscard]] bool windowsHaveFrames() const override { return false; }
    [[nodiscard]] Insets safeArea() const override { return {}; }
    [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> changed) override;

    void setTextScale(double scale);

private:
    double m_textScale = 1;
    std::vector<std::weak_ptr<std::function<void()>>> m_observers;
};

/// An application that runs already and is given a device token each time it asks.
class PlayedApplication : public platform::Application {
public:
    int run(int &argc, char **argv, platform::LaunchReason reason,
            const MakeEntry &makeEntry) override;
    [[nodiscard]] bool canShowWindow() const override { return true; }
    void registerForRemoteNotifications() override { m_onRegister(); }
    void setOnRegister(std::function<void()> onRegister) { m_onRegister = std::move(onRegister); }

private:
    std::function<void()> m_onRegister = [] {};
};

/// The system's parts but for time, which is faster, and for what a session would bring.
class ChaosPlatform final : public platform::Platform {
public:
    ChaosPlatform();

    [[nodiscard]] std::optional<std::string> setupProblem() const override { return {}; }
    [[nodiscard]] std::shared_ptr<platform::HttpSession> httpSession() override
    {
        return m_session;
    }
    [[nodiscard]] platform::Executor &executor() override { return m_executor; }
    [[nodiscard]] const platform::TextRules &textRules() override { return m_textRules; }
    [[nodiscard]] const platform::Environment &environment() override { return m_environment; }
    [[nodiscard]] platform::LinkOpener &linkOpener() override { return m_linkOpener; }
    [[nodiscard]] platform::Clock &clock() override { return m_clock; }
    [[nodiscard]] platform::MainQueue &mainQueue() override { return m_mainQueue; }
    [[nodiscard]] platform::UserNotificationCenter &userNotificationCenter() override
    {
        return m_notifications;
    }
    [[nodiscard]] platform::Appearance &appearance() override { return m_appearance; }
    [[nodiscard]] platform::Application &application() override { return m_application; }

    [[nodiscard]] WatchedSession &watchedSession() { return *m_session; }
    [[nodiscard]] PlayedNotificationCenter &notifications() { return m_notifications; }
    [[nodiscard]] PlayedAppearance &playedAppearance() { return m_appearance; }
    [[nodiscard]] PlayedApplication &playedApplication() { return m_application; }
    [[nodiscard]] NotingLinkOpener &links() { return m_linkOpener; }
    [[nodiscard]] platform::MainThreadQueue &queue() { return m_mainQueue; }
    /// A session for the test's own requests to the service.
    [[nodiscard]] platform::HttpSession &ownSession() { return *m_ownSession; }
    /// Ends what is under way; nothing is sent afterwards.
    void end();

private:
    platform::LinuxEnvironment m_environment;
    platform::IcuTextRules m_textRules;
    platform::ThreadPoolExecutor m_executor;
    std::shared_ptr<platform::CurlHttpSession> m_curl;
    std::shared_ptr<WatchedSession> m_session;
    std::shared_ptr<platform::CurlHttpSession> m_ownSession;
    NotingLinkOpener m_linkOpener;
    LapsingClock m_clock;
    platform::MainThreadQueue m_mainQueue;
    PlayedNotificationCenter m_notifications;
    PlayedAppearance m_appearance;
    PlayedApplication m_application;
};

/// The one that Platform::current() gives.
[[nodiscard]] ChaosPlatform &chaosPlatform();

} // namespace trellisport::chaos
