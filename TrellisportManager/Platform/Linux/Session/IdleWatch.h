#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

namespace trellisport::platform {

/// Tells when a run without a window has nothing left to do: it was not busy and nothing happened
/// for a while. One thread, which runs an event loop.
class IdleWatch : public QObject {
    Q_OBJECT
public:
    /// idle is called once for each time that it becomes so.
    IdleWatch(std::chrono::milliseconds grace, std::function<void()> idle,
              QObject *parent = nullptr);

    /// Something happened that more may follow: the while begins anew.
    void touch();
    void setBusy(bool isBusy);
    [[nodiscard]] bool isBusy() const { return m_isBusy; }
    /// Not busy any more, and nothing is to be waited for.
    void finish();

private:
    std::chrono::milliseconds m_grace;
    QTimer m_timer;
    bool m_isBusy = false;
};

} // namespace trellisport::platform
