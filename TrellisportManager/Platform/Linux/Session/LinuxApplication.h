#pragma once

#include "Platform/Application.h"
#include "Platform/Linux/Desktop/LinuxAppearance.h"
#include "Platform/Linux/Session/ActivationToken.h"
#include "Platform/Toolkit/MainThreadQueue.h"
#include "Platform/Toolkit/NotificationRelay.h"

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

namespace trellisport::platform {

class BusSession;
class BusThread;
class DesktopSettings;
class ScreenKeyboard;
class ToolkitApplication;

/// The program's life on a desktop or phone with a session bus: one instance, with or without a
/// window, until there is nothing left to do.
class LinuxApplication : public Application {
public:
    /// finish is called at the end of a run, when the window has gone: it waits for what must not
    /// be cut off. Main thread.
    /// All three must outlive it.
    LinuxApplication(MainThreadQueue &queue, NotificationRelay &center, LinuxAppearance &appearance,
                     std::function<void()> finish);
    LinuxApplication(const LinuxApplication &) = delete;
    LinuxApplication &operator=(const LinuxApplication &) = delete;
    ~LinuxApplication() override;

    int run(int &argc, char **argv, LaunchReason reason, const MakeEntry &makeEntry) override;
    [[nodiscard]] bool canShowWindow() const override;
    void registerForRemoteNotifications() override;

private:
    struct Wish {
        ActivationToken token;
        std::function<void(bool isThere)> done;
    };

    void startSession(bool awaitsWindow);
    /// Becomes the one instance. False when another is.
    [[nodiscard]] bool claimName();
    void endSession();
    int live(LaunchReason reason, const ActivationToken &token, const MakeEntry &makeEntry);
    int runEventLoop();
    /// Brings up the window, now or, when the toolkit can't show one yet, between two event loops.
    void bringUp(Wish wish);
    bool show(const ActivationToken &token);
    [[nodiscard]] bool becomeGraphical(const ActivationToken &token);
    void windowClosed();
    /// Follows the desktop's settings and shows the phone's keyboard, as long as there is a bus.
    void followDesktop();
    void serveFields();

    MainThreadQueue &m_queue;
    NotificationRelay &m_center;
    LinuxAppearance &m_appearance;
    std::function<void()> m_finish;
    std::atomic<bool> m_isInFront = false;
    std::unique_ptr<ToolkitApplication> m_toolkit;
    std::unique_ptr<BusThread> m_bus;
    BusSession *m_session = nullptr;       ///< lives on the bus thread; null when there is no bus
    DesktopSettings *m_settings = nullptr; ///< lives there too, from the first window on
    std::unique_ptr<ScreenKeyboard> m_keyboard; ///< from the first window on
    std::unique_ptr<ApplicationEntry> m_entry;
    std::vector<Wish> m_wishes;
    bool m_hasEnded = false; ///< the event loop was told to end for good
};

} // namespace trellisport::platform
