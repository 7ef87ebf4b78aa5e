#pragma once

#include "Platform/Linux/Session/BusThread.h"
#include "Platform/Toolkit/MainThreadQueue.h"

#include <QCoreApplication>

#include <functional>
#include <memory>

namespace trellisport::platform {

/// The toolkit's application object. A start without a window has one that needs no display; when a
/// window is wanted, it is exchanged for one that can show it. Main thread.
class ToolkitApplication {
public:
    /// argc and argv must outlive it.
    ToolkitApplication(int &argc, char **argv, MainThreadQueue &queue);
    ToolkitApplication(const ToolkitApplication &) = delete;
    ToolkitApplication &operator=(const ToolkitApplication &) = delete;
    ~ToolkitApplication();

    [[nodiscard]] bool isGraphical() const { return m_isGraphical; }
    /// Whether any window is on the screen.
    [[nodiscard]] bool showsWindow() const;
    /// Not from within the event loop, and only with a display that can be reached: without one the
    /// toolkit ends the program. stateChanged is told whether the application is in front of the
    /// user, lastWindowClosed of just that.
    void becomeGraphical(BusThread &bus, std::function<void(bool isInFront)> stateChanged,
                         std::function<void()> lastWindowClosed);

private:
    int &m_argc;
    char **m_argv;
    MainThreadQueue &m_queue;
    std::unique_ptr<QCoreApplication> m_application;
    bool m_isGraphical = false;
};

} // namespace trellisport::platform
