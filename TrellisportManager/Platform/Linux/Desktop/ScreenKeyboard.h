#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QPointF>

#include <functional>

namespace trellisport::platform {

/// Shows the phone shell's keyboard while a text field has the focus, and hides it when none has
/// any longer: where the toolkit can't ask the compositor for it. Main thread; needs the toolkit's
/// application, and goes before it.
class ScreenKeyboard : public QObject {
    Q_OBJECT
public:
    /// setVisible is called with what is wanted, also when it is so already: the user may have put
    /// the keyboard away. toolkitAsks: whether the toolkit does it all by itself.
    ScreenKeyboard(std::function<void(bool)> setVisible, std::function<bool()> toolkitAsks);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void focusChanged();
    void tapped(QPointF place);

    std::function<void(bool)> m_setVisible;
    std::function<bool()> m_toolkitAsks;
    bool m_isWanted = false;
};

/// Whether the toolkit's input method reaches a keyboard on the screen.
[[nodiscard]] bool toolkitShowsKeyboard();

/// Asks the phone shell for its keyboard, or to put it away; does nothing where there is none. The
/// connection's thread; returns at once.
void showShellKeyboard(const QDBusConnection &bus, bool isVisible);

} // namespace trellisport::platform
