#pragma once

#include "Platform/Application.h"
#include "Platform/MainQueue.h"
#include "Platform/UserNotificationCenter.h"

#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace trellisport::test {

/// A main queue that runs its work when a test says so.
class ManualMainQueue : public platform::MainQueue {
public:
    void async(std::function<void()> work) override
    {
        const std::lock_guard lock(m_mutex);
        m_work.push_back(std::move(work));
    }
    [[nodiscard]] std::size_t waiting() const
    {
        const std::lock_guard lock(m_mutex);
        return m_work.size();
    }
    /// Runs what waits and what is queued meanwhile.
    void run()
    {
        for (;;) {
            std::function<void()> work;
            {
                const std::lock_guard lock(m_mutex);
                if (m_work.empty()) {
                    return;
                }
                work = std::move(m_work.front());
                m_work.pop_front();
            }
            work();
        }
    }

private:
    mutable std::mutex m_mutex;
    std::deque<std::function<void()>> m_work;
};

/// A notification centre that a test plays.
class FakeNotificationCenter : public platform::UserNotificationCenter {
public:
    void setDelegate(platform::UserNotificationCenterDelegate *delegate) override
    {
        m_delegate = delegate;
    }
    void requestAuthorization(platform::AuthorizationOptions options,
                              AuthorizationCompletion completion) override
    {
        ++m_requests;
        m_options = options;
        m_completion = std::move(completion);
    }

    [[nodiscard]] platform::UserNotificationCenterDelegate *delegate() const { return m_delegate; }
    [[nodiscard]] int requests() const { return m_requests; }
    [[nodiscard]] std::optional<platform::AuthorizationOptions> options() const
    {
        return m_options;
    }
    void answer(bool granted, const std::optional<std::string> &error = {}) const
    {
        m_completion(granted, error);
    }

private:
    platform::UserNotificationCenterDelegate *m_delegate = nullptr;
    int m_requests = 0;
    std::optional<platform::AuthorizationOptions> m_options;
    AuthorizationCompletion m_completion;
};

/// Counts what it is asked for; runs nothing.
class FakeApplication : public platform::Application {
public:
    int run(int & /*argc*/, char ** /*argv*/, platform::LaunchReason /*reason*/,
            const MakeEntry & /*makeEntry*/) override
    {
        return 0;
    }
    [[nodiscard]] bool canShowWindow() const override { return true; }
    void registerForRemoteNotifications() override { ++m_registrations; }

    [[nodiscard]] int registrations() const { return m_registrations; }

private:
    int m_registrations = 0;
};

/// A text as a payload's value.
[[nodiscard]] inline platform::UserInfoValue userInfoText(std::string text)
{
    return {std::move(text)};
}

} // namespace trellisport::test
