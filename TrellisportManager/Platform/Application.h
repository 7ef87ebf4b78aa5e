#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace trellisport::platform {

/// What the platform tells the application in the course of its life. Main thread.
class ApplicationDelegate {
public:
    ApplicationDelegate() = default;
    ApplicationDelegate(const ApplicationDelegate &) = delete;
    ApplicationDelegate &operator=(const ApplicationDelegate &) = delete;
    virtual ~ApplicationDelegate() = default;

    /// The program is up; its window may not be there yet, and in a start for a message alone none
    /// follows. False ends the program.
    virtual bool didFinishLaunching() = 0;
    /// The device can be reached under this token: bytes that only the service understands. Comes
    /// after registerForRemoteNotifications() and again whenever the token has changed.
    virtual void
    didRegisterForRemoteNotifications(const std::vector<std::uint8_t> &deviceToken) = 0;
    /// The device can't be reached. error is a sentence for a developer.
    virtual void didFailToRegisterForRemoteNotifications(const std::string & /*error*/) {}
};

/// The program's entry, made by the platform when the toolkit is up. Main thread.
class ApplicationEntry {
public:
    ApplicationEntry() = default;
    ApplicationEntry(const ApplicationEntry &) = delete;
    ApplicationEntry &operator=(const ApplicationEntry &) = delete;
    virtual ~ApplicationEntry() = default;

    /// Lives as long as the entry.
    [[nodiscard]] virtual ApplicationDelegate &delegate() = 0;
    /// Makes the window when there is none, and brings it to the front. False when it could not be
    /// made; what went wrong is on standard error.
    virtual bool showWindow() = 0;
    /// Takes the window away with all that it held; showWindow() makes a new one.
    virtual void closeWindow() = 0;
};

enum class LaunchReason {
    User,    ///< somebody wants the window
    Message, ///< a message for us has to be received; nobody wants a window
};

/// The running program.
class Application {
public:
    using MakeEntry = std::function<std::unique_ptr<ApplicationEntry>()>;

    Application() = default;
    Application(const Application &) = delete;
    Application &operator=(const Application &) = delete;
    virtual ~Application() = default;

    /// The whole life of the program, called by main() and only there, while there is no toolkit
    /// application: makes the entry, tells its delegate of the launch, shows the window when the
    /// user wants it, and runs the event loop. Gives the exit status. Where it runs already, that
    /// one comes to the front and this one ends; a browser may have it in several tabs.
    virtual int run(int &argc, char **argv, LaunchReason reason, const MakeEntry &makeEntry) = 0;

    /// Whether a window would be seen by somebody. Any time, before run() too; main thread.
    [[nodiscard]] virtual bool canShowWindow() const = 0;

    /// Asks for a device token, which the delegate is given later. Main thread; returns at once.
    virtual void registerForRemoteNotifications() = 0;
};

} // namespace trellisport::platform
