#pragma once

#include "Platform/HttpSession.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <thread>

namespace trellisport::platform {

class CurlInbox;

struct CurlHttpOptions {
    /// How long an exchange may go without a byte sent or received; connecting counts.
    std::chrono::milliseconds timeout = std::chrono::seconds(60);
    /// The largest reply taken, in bytes of its body; its headers may be 256 KiB at most.
    std::size_t replyLimit = std::size_t{256} << 20;
    /// A file of certificate authorities (PEM) trusted besides the system's; empty for none.
    std::string authorityFile = {};
    /// A file, or a folder as the system's is, in place of the system's authorities; empty for
    /// those.
    std::string systemAuthorities = {};
};

/// HTTP with libcurl, on one thread of its own, which lives as long as the session. Destroying the
/// session cancels what is under way and waits for that thread; never destroy it from within a
/// completion. The exchanges may outlive it.
class CurlHttpSession final : public HttpSession {
public:
    explicit CurlHttpSession(CurlHttpOptions options = {});
    CurlHttpSession(const CurlHttpSession &) = delete;
    CurlHttpSession &operator=(const CurlHttpSession &) = delete;
    ~CurlHttpSession() override;

    [[nodiscard]] std::unique_ptr<HttpExchange> send(HttpRequest request,
                                                     Completion completion) override;

    /// Cancels what is under way and waits for the thread, as destroying it does. Nothing that is
    /// sent afterwards is answered. On one thread; more than once is harmless.
    void stop();

private:
    std::shared_ptr<CurlInbox> m_inbox;
    std::thread m_thread;
};

} // namespace trellisport::platform
