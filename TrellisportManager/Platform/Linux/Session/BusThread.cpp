#include "Platform/Linux/Session/BusThread.h"

#include <QSemaphore>

#include <utility>

namespace trellisport::platform {

BusThread::BusThread()
{
    m_thread.setObjectName(QStringLiteral("session bus"));
    m_home.moveToThread(&m_thread);
    m_thread.start();
}

BusThread::~BusThread()
{
    m_thread.quit();
    m_thread.wait();
}

void BusThread::run(std::function<void()> work)
{
    QMetaObject::invokeMethod(&m_home, std::move(work), Qt::QueuedConnection);
}

void BusThread::runAndWait(std::function<void()> work)
{
    QMetaObject::invokeMethod(&m_home, std::move(work), Qt::BlockingQueuedConnection);
}

void BusThread::whileStill(const std::function<void()> &work)
{
    QSemaphore isStill;
    QSemaphore goOn;
    run([&] {
        isStill.release();
        goOn.acquire();
    });
    isStill.acquire();
    work();
    goOn.release();
    // Both semaphores are on this stack: the thread must have left them.
    runAndWait([] {});
}

} // namespace trellisport::platform
