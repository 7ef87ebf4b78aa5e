#include "Platform/Linux/Desktop/ScreenKeyboard.h"

#include <QDBusMessage>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodQueryEvent>
#include <QMouseEvent>
#include <private/qguiapplication_p.h>
#include <qpa/qplatforminputcontext.h>
#include <qpa/qplatformintegration.h>

#include <utility>

namespace trellisport::platform {

namespace {

bool takesText(QObject *object)
{
    if (object == nullptr) {
        return false;
    }
    QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImReadOnly);
    QCoreApplication::sendEvent(object, &query);
    return query.value(Qt::ImEnabled).toBool() && !query.value(Qt::ImReadOnly).toBool();
}

} // namespace

ScreenKeyboard::ScreenKeyboard(std::function<void(bool)> setVisible,
                               std::function<bool()> toolkitAsks)
    : m_setVisible(std::move(setVisible))
    , m_toolkitAsks(std::move(toolkitAsks))
{
    // Queued: from one field to the next the focus may be nowhere for a moment.
    connect(qGuiApp, &QGuiApplication::focusObjectChanged, this, &ScreenKeyboard::focusChanged,
            Qt::QueuedConnection);
    qGuiApp->installEventFilter(this);
}

void ScreenKeyboard::focusChanged()
{
    const bool isWanted = takesText(QGuiApplication::focusObject());
    if ((isWanted || m_isWanted) && !m_toolkitAsks()) {
        m_setVisible(isWanted);
    }
    m_isWanted = isWanted;
}

bool ScreenKeyboard::eventFilter(QObject *object, QEvent *event)
{
    if (m_isWanted && object->isWindowType()) {
        if (event->type() == QEvent::MouseButtonRelease) {
            tapped(static_cast<QMouseEvent *>(event)->position());
        } else if (event->type() == QEvent::TouchEnd) {
            tapped(static_cast<QTouchEvent *>(event)->points().constFirst().position());
        }
    }
    return QObject::eventFilter(object, event);
}

void ScreenKeyboard::tapped(QPointF place)
{
    // The user put the keyboard away and wants it back.
    if (QGuiApplication::inputMethod()->inputItemClipRectangle().contains(place) &&
        !m_toolkitAsks()) {
        m_setVisible(true);
    }
}

bool toolkitShowsKeyboard()
{
    const QPlatformInputContext *context =
        QGuiApplicationPrivate::platformIntegration()->inputContext();
    // Others, as the one for dead keys, know nothing of screens.
    return context != nullptr && context->isValid() &&
           context->inherits("QtWaylandClient::QWaylandInputContext");
}

void showShellKeyboard(const QDBusConnection &bus, bool isVisible)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("sm.puri.OSK0"), QStringLiteral("/sm/puri/OSK0"),
        QStringLiteral("sm.puri.OSK0"), QStringLiteral("SetVisible"));
    call.setAutoStartService(false);
    call.setArguments({isVisible});
    bus.send(call);
}

} // namespace trellisport::platform
