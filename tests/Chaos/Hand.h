#pragma once

#include <QObject>
#include <QPointF>
#include <QPointingDevice>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace trellisport::chaos {

/// A press of a button that writes, told by the button itself.
struct WritingPress {
    std::string button;   ///< "saveButton" or "submitButton"
    std::string question; ///< what is answered
    std::string text;     ///< what stood in the field
};

/// One finger and a keyboard. Whatever it does is done when a call returns; what follows from it
/// comes with the event loop.
class Hand : public QObject {
    Q_OBJECT
public:
    Hand();

    void tap(QQuickWindow &window, QPointF place);
    /// Twice as fast as it can be.
    void doubleTap(QQuickWindow &window, QPointF place);
    /// steps: in how many movements; few make it a flick.
    void drag(QQuickWindow &window, QPointF from, QPointF to, int steps);
    void key(QQuickWindow &window, Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Into whatever has the keyboard.
    void type(QQuickWindow &window, const QString &text);
    /// The text in place of what stands in the field there; an empty one leaves it empty.
    void replace(QQuickWindow &window, QPointF field, const QString &text);
    /// As an on-screen keyboard does while a word is being put together.
    void compose(const QString &unfinished);

    [[nodiscard]] const std::vector<WritingPress> &presses() const { return m_presses; }

private Q_SLOTS:
    void notePress();

private:
    /// Buttons that write are listened to from before the first event that could press them.
    void watch(QQuickItem *item);

    std::unique_ptr<QPointingDevice> m_finger;
    std::vector<WritingPress> m_presses;
};

} // namespace trellisport::chaos
