#include "Chaos/Hand.h"

#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTest>

namespace trellisport::chaos {

namespace {
constexpr const char *watched = "chaosWatched";
}

Hand::Hand()
    : m_finger(QTest::createTouchDevice())
{
}

void Hand::tap(QQuickWindow &window, QPointF place)
{
    watch(window.contentItem());
    QTest::touchEvent(&window, m_finger.get(), false).press(0, place.toPoint()).commit(false);
    QTest::touchEvent(&window, m_finger.get(), false).release(0, place.toPoint()).commit(false);
}

void Hand::doubleTap(QQuickWindow &window, QPointF place)
{
    tap(window, place);
    tap(window, place);
}

void Hand::drag(QQuickWindow &window, QPointF from, QPointF to, int steps)
{
    watch(window.contentItem());
    QTest::touchEvent(&window, m_finger.get(), false).press(0, from.toPoint()).commit(false);
    for (int step = 1; step <= steps; ++step) {
        const QPointF at = from + (to - from) * step / steps;
        QTest::touchEvent(&window, m_finger.get(), false).move(0, at.toPoint()).commit(false);
    }
    QTest::touchEvent(&window, m_finger.get(), false).release(0, to.toPoint()).commit(false);
}

void Hand::key(QQuickWindow &window, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    watch(window.contentItem());
    QTest::keyClick(&window, key, modifiers);
}

void Hand::type(QQuickWindow &window, const QString &text)
{
    watch(window.contentItem());
    if (window.activeFocusItem() != nullptr) {
        QKeyEvent event(QEvent::KeyPress, 0, Qt::NoModifier, text);
        QCoreApplication::sendEvent(window.activeFocusItem(), &event);
    }
}

void Hand::replace(QQuickWindow &window, QPointF field, const QString &text)
{
    tap(window, field);
    // A keyboard ends what it composes before it sends other keys; fields take few until then.
    compose({});
    key(window, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty()) {
        key(window, Qt::Key_Backspace);
    } else {
        type(window, text);
    }
}

void Hand::compose(const QString &unfinished)
{
    if (QObject *field = QGuiApplication::focusObject()) {
        QInputMethodEvent event(unfinished, {});
        QCoreApplication::sendEvent(field, &event);
    }
}

void Hand::watch(QQuickItem *item)
{
    const QString name = item->objectName();
    if ((name == QLatin1String("submitButton") || name == QLatin1String("saveButton")) &&
        !item->property(watched).toBool()) {
        item->setProperty(watched, true);
        connect(item, SIGNAL(clicked()), this, SLOT(notePress()));
    }
    for (QQuickItem *child : item->childItems()) {
        watch(child);
    }
}

void Hand::notePress()
{
    const auto *button = qobject_cast<QQuickItem *>(sender());
    const QQuickItem *editor = button->parentItem();
    // What is seen in the field itself: of a card that has gone out of its list, and is seen until
    // the next frame, nothing else follows what is typed.
    const QQuickItem *field = editor->findChild<QQuickItem *>(QStringLiteral("field"));
    m_presses.push_back({button->objectName().toStdString(),
                         editor->property("question").toString().toStdString(),
                         field ? field->property("text").toString().toStdString() : ""});
}

} // namespace trellisport::chaos
