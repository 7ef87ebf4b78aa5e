#pragma once

#include "Platform/Application.h"

#include <QQmlApplicationEngine>

#include <memory>
#include <string>

namespace trellisport {

/// What runs in place of the application when it was set up wrongly: a window with one sentence,
/// for whoever starts the program from a launcher and sees no standard error. Main thread.
class SetupProblemApp : public platform::ApplicationEntry {
public:
    /// problem is the sentence that is shown.
    explicit SetupProblemApp(std::string problem);

    [[nodiscard]] platform::ApplicationDelegate &delegate() override { return m_delegate; }
    bool showWindow() override;
    void closeWindow() override;

private:
    /// Wants nothing: without a service nobody could send a message.
    class Delegate final : public platform::ApplicationDelegate {
    public:
        bool didFinishLaunching() override { return true; }
        void didRegisterForRemoteNotifications(
            const std::vector<std::uint8_t> & /*deviceToken*/) override
        {
        }
    };

    std::string m_problem;
    Delegate m_delegate;
    std::unique_ptr<QQmlApplicationEngine> m_engine; ///< with the window; absent without one
};

} // namespace trellisport
