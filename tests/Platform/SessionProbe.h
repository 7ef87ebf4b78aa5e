#pragma once

#include "Platform/HttpSession.h"
#include "Platform/Linux/CurlHttpSession.h"
#include "Support/ScriptedServer.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

namespace trellisport::test {

/// One exchange of a session and what its completion was called with. Any thread.
class SessionProbe {
public:
    SessionProbe(platform::HttpSession &session, platform::HttpRequest request);

    /// Waits for the completion; throws std::runtime_error when it does not come.
    [[nodiscard]] platform::HttpResult wait();
    [[nodiscard]] platform::HttpReply waitForReply();
    [[nodiscard]] platform::TransportFailure waitForFailure();

    /// How often the completion was called, and whether ever from within send().
    [[nodiscard]] int calls() const;
    [[nodiscard]] bool wasCalledInSend() const;
    /// The thread that called it.
    [[nodiscard]] std::thread::id thread() const;

    void cancel() { m_exchange->cancel(); }
    void dropHandle() { m_exchange.reset(); }

private:
    struct State {
        mutable std::mutex mutex;
        std::condition_variable called;
        std::optional<platform::HttpResult> result;
        std::thread::id thread;
        int calls = 0;
        bool isSending = true;
        bool wasCalledInSend = false;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
    std::unique_ptr<platform::HttpExchange> m_exchange;
};

[[nodiscard]] platform::HttpRequest getRequest(std::string url);
[[nodiscard]] platform::HttpRequest postRequest(std::string url, std::string body = "{}");

/// A session that trusts the test servers and waits this long for bytes.
[[nodiscard]] platform::CurlHttpOptions
trustingOptions(std::chrono::milliseconds timeout = std::chrono::seconds(20));

} // namespace trellisport::test

namespace trellisport::platform {

void PrintTo(TransportFailure failure, std::ostream *stream);

} // namespace trellisport::platform
