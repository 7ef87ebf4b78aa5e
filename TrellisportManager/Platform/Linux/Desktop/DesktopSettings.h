#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariant>

#include <functional>

namespace trellisport::platform {

/// What the desktop's settings, as its portal tells them, say about text. Lives on the thread that
/// made it, which runs an event loop.
class DesktopSettings : public QObject {
    Q_OBJECT
public:
    /// Asks at once. textScaleChanged is told the answer and every later change, on this thread;
    /// never, where there is no portal or it does not know.
    DesktopSettings(QDBusConnection bus, std::function<void(double)> textScaleChanged);

private Q_SLOTS:
    void settingChanged(const QDBusMessage &change);

private:
    void tell(const QVariant &value);

    std::function<void(double)> m_textScaleChanged;
};

} // namespace trellisport::platform
