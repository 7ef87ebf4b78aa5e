#include "Presentation/KeyboardUse.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace trellisport {

namespace {

/// Not letters and Enter, which keyboards on the screen send, too; and not a phone's way back.
bool movesAbout(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Space:
    case Qt::Key_Escape:
        return true;
    default:
        return false;
    }
}

} // namespace

KeyboardUse::KeyboardUse()
{
    qApp->installEventFilter(this);
}

bool KeyboardUse::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride: // all that there is of a key that a shortcut takes
        if (movesAbout(*static_cast<QKeyEvent *>(event))) {
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
