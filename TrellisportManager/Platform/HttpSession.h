#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace trellisport::platform {

struct HttpHeader {
    std::string name;
    std::string value;
};

struct HttpRequest {
    std::string method;              ///< "GET", "POST", "PUT"
    std::string url;                 ///< absolute https URL, valid by RFC 3986; sent as it stands
    std::vector<HttpHeader> headers; ///< sent besides what the protocol itself needs
    std::optional<std::string> body; ///< absent: the request has none
};

struct HttpReply {
    int status = 0; ///< the status code, or 0 when the peer's answer was not HTTP
    std::vector<HttpHeader> headers;
    std::string body; ///< of a status from 200 to 299; of any other it is not awaited, and is empty
};

enum class TransportFailure {
    Cancelled,
    TimedOut,
    HostNotFound,
    CannotConnect,
    SecureConnectionFailed,
    ConnectionLost,
    ReplyTooLarge,
    Other,
};

/// An exchange that ended without a whole reply. what() is a sentence for a person.
class TransportError : public std::runtime_error {
public:
    TransportError(TransportFailure failure, const std::string &description)
        : std::runtime_error(description)
        , m_failure(failure)
    {
    }
    [[nodiscard]] TransportFailure failure() const noexcept { return m_failure; }

private:
    TransportFailure m_failure;
};

using HttpResult = std::variant<HttpReply, TransportError>;

/// One exchange under way. Destroying the handle cancels the exchange.
class HttpExchange {
public:
    HttpExchange() = default;
    HttpExchange(const HttpExchange &) = delete;
    HttpExchange &operator=(const HttpExchange &) = delete;
    virtual ~HttpExchange() = default;

    /// Ends the exchange: its completion is called with TransportFailure::Cancelled, unless it was
    /// already called. Any thread; more than once is harmless.
    virtual void cancel() = 0;
};

/// The platform's HTTP: TLS always verified, redirects not followed, no credentials, no cookies,
/// 60 seconds without progress as the time-out, the protocol's default caching for GET, in memory.
/// A POST or PUT reaches the server at most once. (A browser may keep on disk, and send anew.)
class HttpSession {
public:
    /// Called exactly once for every exchange, on a thread of the session's choosing and never from
    /// within send(); it must return soon.
    using Completion = std::function<void(HttpResult)>;

    HttpSession() = default;
    HttpSession(const HttpSession &) = delete;
    HttpSession &operator=(const HttpSession &) = delete;
    virtual ~HttpSession() = default;

    /// Starts one exchange. Any thread; never blocks.
    [[nodiscard]] virtual std::unique_ptr<HttpExchange> send(HttpRequest request,
                                                             Completion completion) = 0;
};

} // namespace trellisport::platform
