#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// Whether the console was last operated by keys that move about in it, and not by a finger or a
/// pointer: only then does it help to show what has the keyboard. Main thread.
class KeyboardUse : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// False until such a key is pressed.
    Q_PROPERTY(bool isLast READ isLast NOTIFY isLastChanged)
public:
    KeyboardUse();

    [[nodiscard]] bool isLast() const { return m_isLast; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void isLastChanged();

private:
    void set(bool isLast);

    bool m_isLast = false;
};

} // namespace trellisport
