#include "Platform/Web/PageHistory.h"

#include <QGuiApplication>
#include <QWindow>

#include <emscripten/em_macros.h>
#include <qpa/qwindowsysteminterface.h>

extern "C" void trellisport_watch_history(); // Script/History.js

namespace trellisport::platform {

/// Whether there was something to go back from.
extern "C" EMSCRIPTEN_KEEPALIVE bool trellisport_go_back()
{
    const auto windows = QGuiApplication::topLevelWindows();
    if (windows.isEmpty()) {
        return false;
    }
    const bool taken =
        QWindowSystemInterface::handleKeyEvent<QWindowSystemInterface::SynchronousDelivery>(
            windows.first(), QEvent::KeyPress, Qt::Key_Back, Qt::NoModifier);
    QWindowSystemInterface::handleKeyEvent<QWindowSystemInterface::SynchronousDelivery>(
        windows.first(), QEvent::KeyRelease, Qt::Key_Back, Qt::NoModifier);
    return taken;
}

void followPageHistory()
{
    trellisport_watch_history();
}

} // namespace trellisport::platform
