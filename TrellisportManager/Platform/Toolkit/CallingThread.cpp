#include "Platform/CallingThread.h"

#include <QCoreApplication>
#include <QObject>

#include <deque>
#include <mutex>
#include <utility>

namespace trellisport::platform {

/// What waits for a thread, and the object through which its event loop is reached. Posting and the
/// end of the thread exclude each other, so that nothing is posted to an object that is being
/// destroyed.
class CallingThread::Mailbox : public std::enable_shared_from_this<Mailbox> {
public:
    void post(std::function<void()> work)
    {
        const std::scoped_lock lock(m_mutex);
        if (m_object) {
            m_work.push_back(std::move(work));
            wake();
        }
    }
    /// False when nothing waits.
    bool runOne()
    {
        std::function<void()> work;
        {
            const std::scoped_lock lock(m_mutex);
            if (m_work.empty()) {
                return false; // for an event: one too many, after wakeForAll()
            }
            work = std::move(m_work.front());
            m_work.pop_front();
        }
        work();
        return true;
    }
    /// The event loop dropped its events: they are posted once more.
    void wakeForAll()
    {
        const std::scoped_lock lock(m_mutex);
        for (std::size_t count = 0; m_object && count < m_work.size(); ++count) {
            wake();
        }
    }
    void close()
    {
        std::unique_ptr<QObject> object;
        std::deque<std::function<void()>> work;
        const std::scoped_lock lock(m_mutex);
        // The analyzer sees a thread's variable destroyed before it was made.
        object.swap(m_object); // NOLINT(clang-analyzer-core.NonNullParamChecker)
        work.swap(m_work);
    }

private:
    void wake()
    {
        QMetaObject::invokeMethod(
            m_object.get(), [self = shared_from_this()] { self->runOne(); }, Qt::QueuedConnection);
    }

    std::mutex m_mutex;
    std::unique_ptr<QObject> m_object = std::make_unique<QObject>();
    std::deque<std::function<void()>> m_work;
};

/// Lives as long as its thread, and closes the mailbox with it.
struct CallingThread::Home {
    std::shared_ptr<Mailbox> mailbox = std::make_shared<Mailbox>();

    Home() = default;
    Home(const Home &) = delete;
    Home &operator=(const Home &) = delete;
    ~Home() { mailbox->close(); }

    /// Not the toolkit's own storage for threads: the main thread's goes with the toolkit's
    /// application object, which may be exchanged for another.
    static Home &ofThisThread()
    {
        thread_local Home home;
        return home;
    }
    static void wakeForAll() { ofThisThread().mailbox->wakeForAll(); }
};

CallingThread::CallingThread(std::shared_ptr<Mailbox> mailbox)
    : m_mailbox(std::move(mailbox))
{
}

CallingThread CallingThread::current()
{
    // For each application object that is made, on the main thread.
    static const bool once = [] {
        qAddPreRoutine(&Home::wakeForAll);
        return true;
    }();
    static_cast<void>(once);
    return CallingThread(Home::ofThisThread().mailbox);
}

bool CallingThread::runPosted()
{
    Mailbox &mailbox = *Home::ofThisThread().mailbox;
    bool hasRun = false;
    while (mailbox.runOne()) {
        hasRun = true;
    }
    return hasRun;
}

void CallingThread::post(std::function<void()> work) const
{
    m_mailbox->post(std::move(work));
}

} // namespace trellisport::platform
