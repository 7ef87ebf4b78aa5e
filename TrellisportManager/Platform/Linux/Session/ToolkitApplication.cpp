#include "Platform/Linux/Session/ToolkitApplication.h"

#include "Platform/Linux/Session/AppIdentity.h"

#include <QGuiApplication>
#include <QWindow>
#include <QtQuick/private/qtquickglobal_p.h>

#include <algorithm>
#include <utility>

namespace trellisport::platform {

ToolkitApplication::ToolkitApplication(int &argc, char **argv, MainThreadQueue &queue)
    : m_argc(argc)
    , m_argv(argv)
    , m_queue(queue)
    , m_application(std::make_unique<QCoreApplication>(argc, argv))
{
    m_queue.wake();
}

ToolkitApplication::~ToolkitApplication() = default;

bool ToolkitApplication::showsWindow() const
{
    if (!m_isGraphical) {
        return false;
    }
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(),
                       [](const QWindow *window) { return window->isVisible(); });
}

void ToolkitApplication::becomeGraphical(BusThread &bus,
                                         std::function<void(bool isInFront)> stateChanged,
                                         std::function<void()> lastWindowClosed)
{
    QGuiApplication::setDesktopFileName(applicationId());
    QGuiApplication::setApplicationDisplayName(applicationName());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication *graphical = nullptr;
    bus.whileStill([&] {
        m_application.reset();
        auto application = std::make_unique<QGuiApplication>(m_argc, m_argv);
        graphical = application.get();
        m_application = std::move(application);
    });
    m_isGraphical = true;
    QObject::connect(graphical, &QGuiApplication::applicationStateChanged, graphical,
                     [changed = std::move(stateChanged)](Qt::ApplicationState state) {
                         changed(state == Qt::ApplicationActive);
                     });
    QObject::connect(graphical, &QGuiApplication::lastWindowClosed, graphical,
                     std::move(lastWindowClosed));
    // The old application took its event queue along.
    m_queue.wake();
    // And with it went what makes windows accessible, which is installed only once, when the
    // library is loaded.
    QQuick_initializeModule();
}

} // namespace trellisport::platform
