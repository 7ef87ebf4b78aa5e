#pragma once

#include "Platform/HttpSession.h"

#include <chrono>
#include <cstddef>
#include <memory>

namespace trellisport::platform {

struct FetchHttpOptions {
    /// How long an exchange may go without anything received.
    std::chrono::milliseconds timeout = std::chrono::seconds(60);
    /// The largest reply taken, in bytes of its body.
    std::size_t replyLimit = std::size_t{256} << 20;
};

/// HTTP by the browser's fetch, with its connections, its cache and its rules. A browser tells less
/// than a connection of one's own would: a redirect has the status 0, and a connection that failed
/// does not say how. It may also send a request once more, of its own accord, when a kept-alive
/// connection turns out dead before any reply. An address that it would write otherwise than it
/// stands is not sent: TransportFailure::Other. A write goes on when its page is left, as long as
/// all that are under way hold less than 60,000 bytes.
class FetchHttpSession final : public HttpSession {
public:
    explicit FetchHttpSession(FetchHttpOptions options = {});

    [[nodiscard]] std::unique_ptr<HttpExchange> send(HttpRequest request,
                                                     Completion completion) override;

private:
    FetchHttpOptions m_options;
};

} // namespace trellisport::platform
