#include "Platform/Linux/Session/BusThread.h"

#include <QSemaphore>

#include <openssl/crypto.h>

#include <utility>

namespace trellisport::platform {

BusThread::BusThread()
{
    m_thread.setObjectName(QStringLiteral("session bus"));
    m_home.moveToThread(&m_thread);
    // The keys of pushes leave the cryptographic library a state of this thread, which it frees
    // when the system's thread ends. That is after the toolkit's has, whose end is waited for, and
    // could be while the process takes the library down.
    QObject::connect(
        &m_thread, &QThread::finished, &m_thread, [] { OPENSSL_thread_stop(); },
        Qt::DirectConnection);
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
