#include "Platform/SessionProbe.h"

#include <chrono>
#include <stdexcept>
#include <utility>
#include <variant>

namespace trellisport::test {

using platform::HttpReply;
using platform::HttpRequest;
using platform::HttpResult;
using platform::TransportError;
using platform::TransportFailure;

SessionProbe::SessionProbe(platform::HttpSession &session, HttpRequest request)
{
    const std::thread::id sender = std::this_thread::get_id();
    m_exchange = session.send(std::move(request), [state = m_state, sender](HttpResult result) {
        const std::lock_guard lock(state->mutex);
        ++state->calls;
        state->thread = std::this_thread::get_id();
        state->wasCalledInSend |= state->isSending && state->thread == sender;
        state->result = std::move(result);
        state->called.notify_all();
    });
    const std::lock_guard lock(m_state->mutex);
    m_state->isSending = false;
}

HttpResult SessionProbe::wait()
{
    std::unique_lock lock(m_state->mutex);
    if (!m_state->called.wait_for(lock, std::chrono::seconds(30),
                                  [this] { return m_state->result.has_value(); })) {
        throw std::runtime_error("the exchange did not end");
    }
    return *m_state->result;
}

HttpReply SessionProbe::waitForReply()
{
    HttpResult result = wait();
    if (const auto *error = std::get_if<TransportError>(&result)) {
        throw *error;
    }
    return std::get<HttpReply>(std::move(result));
}

TransportFailure SessionProbe::waitForFailure()
{
    const HttpResult result = wait();
    if (const auto *reply = std::get_if<HttpReply>(&result)) {
        throw std::runtime_error("there was a reply, with the status " +
                                 std::to_string(reply->status));
    }
    return std::get<TransportError>(result).failure();
}

int SessionProbe::calls() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->calls;
}

bool SessionProbe::wasCalledInSend() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->wasCalledInSend;
}

std::thread::id SessionProbe::thread() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->thread;
}

HttpRequest getRequest(std::string url)
{
    return {"GET", std::move(url), {{"Content-Type", "application/json"}}, {}};
}

HttpRequest postRequest(std::string url, std::string body)
{
    return {"POST", std::move(url), {{"Content-Type", "application/json"}}, std::move(body)};
}

platform::CurlHttpOptions trustingOptions(std::chrono::milliseconds timeout)
{
    platform::CurlHttpOptions options;
    options.timeout = timeout;
    options.authorityFile = ScriptedServer::authorityFile();
    // Reading all the system's authorities for each connection would take most of the tests' time.
    options.systemAuthorities = options.authorityFile;
    return options;
}

} // namespace trellisport::test

namespace trellisport::platform {

void PrintTo(TransportFailure failure, std::ostream *stream)
{
    constexpr const char *names[] = {"Cancelled",
                                     "TimedOut",
                                     "HostNotFound",
                                     "CannotConnect",
                                     "SecureConnectionFailed",
                                     "ConnectionLost",
                                     "ReplyTooLarge",
                                     "Other"};
    *stream << names[static_cast<int>(failure)];
}

} // namespace trellisport::platform
