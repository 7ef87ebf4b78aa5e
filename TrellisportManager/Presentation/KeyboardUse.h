#pragma once

#include <QObject>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// Whether keys were what a window was last operated with, and not a finger or a pointer: only then
/// does it help to show what has the keyboard.
class KeyboardUse : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// What is watched; null while there is none yet.
    Q_PROPERTY(QQuickWindow *window MEMBER m_window WRITE watch NOTIFY windowChanged)
    /// False until a key is pressed.
    Q_PROPERTY(bool isLast READ isLast NOTIFY isLastChanged)
public:
    using QObject::QObject;

    void watch(QQuickWindow *window);
    [[nodiscard]] bool isLast() const { return m_isLast; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void windowChanged();
    void isLastChanged();

private:
    void set(bool isLast);

    QQuickWindow *m_window = nullptr;
    bool m_isLast = false;
};

} // namespace trellisport
