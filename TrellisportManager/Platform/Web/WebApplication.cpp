#include "Platform/Web/WebApplication.h"

#include "Platform/Web/Fonts.h"
#include "Platform/Web/PageHistory.h"

#include <QQuickWindow>
#include <QWindow>

#include <private/qtquickglobal_p.h>

extern "C" void trellisport_show_page(); // Script/Page.js

namespace trellisport::platform {

WebApplication::WebApplication(MainThreadQueue &queue, NotificationRelay &relay)
    : m_queue(queue)
    , m_push(relay, {[this](std::vector<std::uint8_t> deviceToken) {
                         if (m_entry) {
                             m_entry->delegate().didRegisterForRemoteNotifications(deviceToken);
                         }
                     },
                     [this](const std::string &reason) {
                         if (m_entry) {
                             m_entry->delegate().didFailToRegisterForRemoteNotifications(reason);
                         }
                     }})
{
}

int WebApplication::run(int &argc, char **argv, LaunchReason /*reason*/, const MakeEntry &makeEntry)
{
    m_toolkit = std::make_unique<QGuiApplication>(argc, argv);
    loadFonts();
    // The application object that read the command line took it along when it went.
    QQuick_initializeModule();
    m_accessibility.emplace();
    m_field.emplace();
    m_queue.wake();
    m_entry = makeEntry();
    if (!m_entry->delegate().didFinishLaunching() || !m_entry->showWindow()) {
        return 1;
    }
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        window->showFullScreen();
        m_accessibility->show(*window);
        if (auto *scene = qobject_cast<QQuickWindow *>(window)) {
            QObject::connect(
                scene, &QQuickWindow::frameSwapped, scene, [] { trellisport_show_page(); },
                Qt::SingleShotConnection);
        }
    }
    followPageHistory();
    m_push.receiveMessages();
    return QGuiApplication::exec();
}

void WebApplication::registerForRemoteNotifications()
{
    m_push.registerDevice();
}

} // namespace trellisport::platform
