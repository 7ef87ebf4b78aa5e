#include "Presentation/KeyboardUse.h"

#include <QKeyEvent>

namespace trellisport {

void KeyboardUse::watch(QQuickWindow *window)
{
    if (m_window == window) {
        return;
    }
    if (m_window != nullptr) {
        m_window->removeEventFilter(this);
    }
    m_window = window;
    if (m_window != nullptr) {
        m_window->installEventFilter(this);
    }
    Q_EMIT windowChanged();
}

bool KeyboardUse::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        // A phone's way back comes as a key, and no keyboard is in use for it.
        if (static_cast<QKeyEvent *>(event)->key() != Qt::Key_Back) {
            set(true);
        }
        break;
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
        set(false);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void KeyboardUse::set(bool isLast)
{
    if (m_isLast != isLast) {
        m_isLast = isLast;
        Q_EMIT isLastChanged();
    }
}

} // namespace trellisport
