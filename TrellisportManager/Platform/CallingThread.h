#pragma once

#include <functional>
#include <memory>

namespace trellisport::platform {

/// A thread with an event loop, as the place to which the result of work done elsewhere is brought
/// back. Copies stand for the same thread.
class CallingThread {
public:
    /// The thread that calls.
    [[nodiscard]] static CallingThread current();

    /// Runs the work later, from that thread's event loop. When the thread has ended or ends
    /// before its turn comes, the work is dropped without being run. Any thread; never blocks.
    void post(std::function<void()> work) const;

    /// Runs all that waits for the thread that calls, and what that posts to it; for the end of a
    /// program, when its event loop no longer runs. False when nothing waited.
    static bool runPosted();

private:
    class Mailbox;
    struct Home;

    explicit CallingThread(std::shared_ptr<Mailbox> mailbox);

    std::shared_ptr<Mailbox> m_mailbox;
};

} // namespace trellisport::platform
