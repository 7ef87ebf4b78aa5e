#pragma once

#include <QObject>
#include <QTimer>

class QWindow;

namespace trellisport::platform {

/// Keeps elements in the page for screen readers: those that the toolkit would make know few kinds
/// of things, and stay when what they stand for has gone. The whole tree of what can be seen is
/// handed to the page when the screen has come to rest. Main thread; made once, when the toolkit's
/// application is there, and kept.
class PageAccessibility : public QObject {
public:
    /// From now on the toolkit keeps track of what is on the screen.
    PageAccessibility();

    /// window must outlive this.
    void show(QWindow &window);
    /// Something may be elsewhere, or other than before.
    void changed();

private:
    void tell();

    QWindow *m_window = nullptr;
    QTimer m_rest;  ///< runs while the screen changes
    QTimer m_limit; ///< how long it may change before it is told nevertheless
};

} // namespace trellisport::platform
