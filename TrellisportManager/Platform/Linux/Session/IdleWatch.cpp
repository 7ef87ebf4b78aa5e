#include "Platform/Linux/Session/IdleWatch.h"

#include <utility>

namespace trellisport::platform {

IdleWatch::IdleWatch(std::chrono::milliseconds grace, std::function<void()> idle, QObject *parent)
    : QObject(parent)
    , m_grace(grace)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [idle = std::move(idle)] { idle(); });
    m_timer.start(m_grace);
}

void IdleWatch::touch()
{
    if (!m_isBusy) {
        m_timer.start(m_grace);
    }
}

void IdleWatch::setBusy(bool isBusy)
{
    if (m_isBusy != isBusy) {
        m_isBusy = isBusy;
        if (isBusy) {
            m_timer.stop();
        } else {
            m_timer.start(m_grace);
        }
    }
}

void IdleWatch::finish()
{
    setBusy(false);
    m_timer.start(std::chrono::milliseconds(0));
}

} // namespace trellisport::platform
