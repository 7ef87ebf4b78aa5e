#include "PracticeService/Listener.h"

#include <httplib.h>

#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <iostream>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>

namespace trellisport::practice {

namespace {

constexpr const char *host = "127.0.0.1";
constexpr std::size_t largestBody = std::size_t(1024) * 1024;
// Every connection keeps a thread while it lives.
constexpr std::size_t mostConnections = 48;
constexpr std::time_t idleSeconds = 20;
// A browser that compiles what it has got so far may take no more for some seconds.
constexpr std::time_t writeSeconds = 30;

/// The open connections, so that stopping need not wait until idle ones run out. A connection is
/// known from its TLS handshake until its TLS object goes.
class Connections {
public:
    void watch(SSL_CTX *context)
    {
        m_index = SSL_get_ex_new_index(0, nullptr, nullptr, nullptr, &Connections::ended);
        SSL_CTX_set_app_data(context, this);
        SSL_CTX_set_info_callback(context, &Connections::changed);
    }

    void shutDown()
    {
        const std::lock_guard lock(m_mutex);
        m_closing = true;
        for (const int socket : m_sockets)
            ::shutdown(socket, SHUT_RDWR);
    }

    /// Ends the connection whose other side has this port with a TCP reset.
    void reset(int remotePort)
    {
        const std::lock_guard lock(m_mutex);
        for (const int socket : m_sockets) {
            sockaddr_in peer{};
            socklen_t size = sizeof peer;
            if (::getpeername(socket, reinterpret_cast<sockaddr *>(&peer), &size) == 0 &&
                ntohs(peer.sin_port) == remotePort) {
                sockaddr nowhere{};
                nowhere.sa_family = AF_UNSPEC;
                static_cast<void>(::connect(socket, &nowhere, sizeof nowhere));
                return;
            }
        }
    }

private:
    static void changed(const SSL *ssl, int where, int /*result*/)
    {
        auto *self = static_cast<Connections *>(SSL_CTX_get_app_data(SSL_get_SSL_CTX(ssl)));
        if ((where & SSL_CB_HANDSHAKE_START) == 0)
            return;
        const int socket = SSL_get_fd(ssl);
        const std::lock_guard lock(self->m_mutex);
        if (self->m_closing)
            ::shutdown(socket, SHUT_RDWR);
        self->m_sockets.insert(socket);
        SSL_set_ex_data(const_cast<SSL *>(ssl), self->m_index, self);
    }

    static void ended(void *ssl, void *self, CRYPTO_EX_DATA * /*data*/, int /*index*/,
                      long /*number*/, void * /*argument*/)
    {
        if (self == nullptr)
            return;
        auto *connections = static_cast<Connections *>(self);
        const std::lock_guard lock(connections->m_mutex);
        connections->m_sockets.erase(SSL_get_fd(static_cast<SSL *>(ssl)));
    }

    std::mutex m_mutex;
    std::set<int> m_sockets;
    bool m_closing = false;
    int m_index = -1;
};

/// A header's value; the values, when it came several times.
std::string headerOf(const httplib::Request &from, const char *name)
{
    std::string value;
    const auto [begin, end] = from.headers.equal_range(name);
    for (auto header = begin; header != end; ++header)
        value += (header == begin ? "" : ", ") + header->second;
    return value;
}

ServiceRequest requestOf(const httplib::Request &from)
{
    ServiceRequest request;
    request.method = from.method;
    request.path = from.path;
    request.query = from.params;
    request.contentType = from.get_header_value("Content-Type");
    request.acceptEncoding = headerOf(from, "Accept-Encoding");
    request.ifNoneMatch = headerOf(from, "If-None-Match");
    request.body = from.body;
    return request;
}

/// How many pieces a slow body has, and how long it rests after each.
constexpr std::size_t slowPieces = 20;
constexpr std::chrono::milliseconds slowRest{25};

/// Sends a body a little at a time.
bool sendSlowly(const std::string &body, std::size_t offset, const httplib::DataSink &sink)
{
    const std::size_t piece = std::max<std::size_t>(1, body.size() / slowPieces);
    const bool sent = sink.write(body.data() + offset, std::min(piece, body.size() - offset));
    std::this_thread::sleep_for(slowRest);
    return sent;
}

/// The most that goes out at a time of what many replies share.
constexpr std::size_t sharedPiece = std::size_t(64) * 1024;

/// Sends what many replies share, without copying it. A piece goes at a time, so that a reader who
/// takes its time need only take some of it in time.
void share(httplib::Response &response, const ServiceReply &reply)
{
    response.set_content_provider(reply.content->size(), reply.contentType,
                                  [content = reply.content](std::size_t offset, std::size_t length,
                                                            const httplib::DataSink &sink) {
                                      return sink.write(content->data() + offset,
                                                        std::min(sharedPiece, length));
                                  });
}

void fill(httplib::Response &response, const ServiceReply &reply)
{
    response.status = reply.status;
    for (const auto &[name, value] : reply.headers)
        response.set_header(name, value);
    if (reply.content && !reply.content->empty()) {
        share(response, reply);
        return;
    }
    if (reply.body.empty())
        return;
    switch (reply.delivery) {
    case Delivery::Whole:
    case Delivery::Reset:
        response.set_content(reply.body, reply.contentType);
        break;
    case Delivery::Slow:
        response.set_content_provider(
            reply.body.size(), reply.contentType,
            [body = reply.body](std::size_t offset, std::size_t, const httplib::DataSink &sink) {
                return sendSlowly(body, offset, sink);
            });
        break;
    case Delivery::Cut:
        response.set_content_provider(
            reply.body.size(), reply.contentType,
            [body = reply.body](std::size_t, std::size_t, const httplib::DataSink &sink) {
                sink.write(body.data(), body.size() / 2);
                return false;
            });
        break;
    }
}

/// Takes away what would make the library change a reply afterwards: it cuts ranges without looking
/// at their bounds, and compresses with settings that take seconds for a long list. A service may
/// ignore both wishes. The request is the library's own, which it made without const.
void forgetWishes(const httplib::Request &from)
{
    auto &request = const_cast<httplib::Request &>(from);
    request.ranges.clear();
    request.headers.erase("Accept-Encoding");
}

} // namespace

class Listener::Server {
public:
    explicit Server(const CertificateFiles &certificates)
        : http(certificates.server.c_str(), certificates.serverKey.c_str())
    {
    }

    Connections connections; // outlives the TLS context that points to it
    httplib::SSLServer http;
    int port = 0;
    std::thread thread;
};

Listener::Listener(const CertificateFiles &certificates, int port)
    : m_server(std::make_unique<Server>(certificates))
{
    httplib::SSLServer &http = m_server->http;
    if (!http.is_valid())
        throw ListenError("Cannot use the certificate " + certificates.server.string() + ".");
    m_server->connections.watch(http.ssl_context());
    http.new_task_queue = [] { return new httplib::ThreadPool(mostConnections); };
    http.set_tcp_nodelay(true);
    http.set_keep_alive_max_count(100'000);
    http.set_keep_alive_timeout(idleSeconds);
    http.set_write_timeout(writeSeconds);
    http.set_payload_max_length(largestBody);
    // The library's own choice would let a second service share the port unnoticed.
    http.set_socket_options([](socket_t socket) {
        const int yes = 1;
        ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    errno = 0;
    const bool bound =
        port == 0 ? (port = http.bind_to_any_port(host)) > 0 : http.bind_to_port(host, port);
    if (!bound) {
        throw ListenError("Cannot listen on " + std::string(host) + " port " +
                          std::to_string(port) + ": " + std::generic_category().message(errno) +
                          ".");
    }
    m_server->port = port;
}

Listener::~Listener()
{
    stop();
}

int Listener::port() const noexcept
{
    return m_server->port;
}

void Listener::start(Service &service, bool verbose)
{
    httplib::SSLServer &http = m_server->http;
    // The library gets no routes: it matches them with regular expressions whose recursion a long
    // path drives through the stack. Without routes every request that is sound arrives here as a
    // 404, its body read; what the library refuses by itself arrives with its own status.
    http.set_error_handler([this, &service, verbose](const httplib::Request &from,
                                                     httplib::Response &response) {
        const ServiceRequest request = requestOf(from);
        forgetWishes(from);
        const ServiceReply reply =
            response.status == 404
                ? service.handle(request)
                : Service::refuse(request, response.status,
                                  response.status == 413
                                      ? "The body is too large."
                                      : "The request is not understood; a body needs its length.");
        if (reply.delivery == Delivery::Reset)
            m_server->connections.reset(from.remote_port);
        fill(response, reply);
        if (verbose) {
            std::cerr << from.method + ' ' + from.target + ' ' + std::to_string(reply.status) +
                             '\n';
        }
    });
    m_server->thread = std::thread([&http] { http.listen_after_bind(); });
    // Stopping a server that does not run yet would go unnoticed.
    while (!http.is_running())
        std::this_thread::yield();
}

void Listener::stop()
{
    if (!m_server->thread.joinable())
        return;
    m_server->http.stop();
    m_server->connections.shutDown();
    m_server->thread.join();
}

} // namespace trellisport::practice
