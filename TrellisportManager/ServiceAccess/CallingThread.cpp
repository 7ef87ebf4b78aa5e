#include "ServiceAccess/CallingThread.h"

#include <QMutex>
#include <QObject>
#include <QThreadStorage>

#include <utility>

namespace trellisport {

/// Holds the object through which the thread's event loop is reached. Posting and the end of the
/// thread exclude each other, so that nothing is posted to an object that is being destroyed.
struct CallingThread::Mailbox {
    QMutex mutex;
    std::unique_ptr<QObject> object = std::make_unique<QObject>();
};

/// Lives as long as its thread, and takes the object along.
struct CallingThread::Home {
    std::shared_ptr<Mailbox> mailbox = std::make_shared<Mailbox>();

    Home() = default;
    Home(const Home &) = delete;
    Home &operator=(const Home &) = delete;
    ~Home()
    {
        std::unique_ptr<QObject> object;
        const QMutexLocker locker(&mailbox->mutex);
        object.swap(mailbox->object);
    }
};

CallingThread::CallingThread(std::shared_ptr<Mailbox> mailbox)
    : m_mailbox(std::move(mailbox))
{
}

CallingThread CallingThread::current()
{
    static QThreadStorage<Home> homes;
    return CallingThread(homes.localData().mailbox);
}

void CallingThread::post(std::function<void()> work) const
{
    const QMutexLocker locker(&m_mailbox->mutex);
    if (m_mailbox->object) {
        QMetaObject::invokeMethod(m_mailbox->object.get(), std::move(work), Qt::QueuedConnection);
    }
}

} // namespace trellisport
