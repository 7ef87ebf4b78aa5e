#include "Support/ScriptedServer.h"

#include <algorithm>
#include <arpa/inet.h>
#include <csignal>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <stdexcept>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace trellisport::test {

namespace {

/// Takes the client's offer of HTTP/2 when the server has it, else its offer of HTTP/1.1.
int chooseProtocol(SSL * /*ssl*/, const unsigned char **chosen, unsigned char *length,
                   const unsigned char *offered, unsigned offeredLength, void *offersHttp2)
{
    const std::string_view own(offersHttp2 != nullptr ? "\x02h2\x08http/1.1" : "\x08http/1.1");
    unsigned char *found = nullptr;
    const int result =
        SSL_select_next_proto(&found, length, reinterpret_cast<const unsigned char *>(own.data()),
                              static_cast<unsigned>(own.size()), offered, offeredLength);
    *chosen = found;
    return result == OPENSSL_NPN_NEGOTIATED ? SSL_TLSEXT_ERR_OK : SSL_TLSEXT_ERR_NOACK;
}

/// Writing to a connection that the client has closed must fail, not end the test; but only here,
/// because the program under test has to cope by itself.
void blockBrokenPipeSignal()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

} // namespace

ScriptedServer::ScriptedServer(Script script, const ServerOptions &options)
    : m_script(std::move(script))
    , m_speaksTls(options.speaksTls)
    , m_context(SSL_CTX_new(TLS_server_method()))
{
    setUpTls(options);
    listen(options.receiveBuffer);
    m_thread = std::thread([this] { acceptAll(); });
}

ScriptedServer::~ScriptedServer()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
        for (const ServerConnection &connection : m_open) {
            connection.interrupt();
        }
    }
    ::shutdown(m_listener, SHUT_RDWR);
    m_thread.join();
    ::close(m_listener);
    // To their very end: what OpenSSL keeps for a thread goes with it, and must not meet the end of
    // the program.
    for (std::thread &thread : m_connectionThreads) {
        thread.join();
    }
}

void ScriptedServer::setUpTls(const ServerOptions &options)
{
    SSL_CTX *context = m_context.get();
    const TestCertificates &certificates =
        options.certificates != nullptr ? *options.certificates : TestCertificates::instance();
    const ServerCredentials credentials = certificates.issue(options.identity);
    SSL_CTX_use_certificate(context, credentials.certificate.get());
    SSL_CTX_use_PrivateKey(context, credentials.key.get());
    SSL_CTX_set_alpn_select_cb(context, chooseProtocol, options.offersHttp2 ? context : nullptr);
    if (options.newestTls != 0) {
        SSL_CTX_set_security_level(context, 0);
        SSL_CTX_set_min_proto_version(context, 0);
        SSL_CTX_set_max_proto_version(context, options.newestTls);
    }
}

void ScriptedServer::listen(int receiveBuffer)
{
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (receiveBuffer != 0) {
        // Before listening, so that every connection starts with it.
        ::setsockopt(m_listener, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    if (::bind(m_listener, generic, size) != 0 || ::listen(m_listener, 256) != 0 ||
        ::getsockname(m_listener, generic, &size) != 0) {
        throw std::runtime_error("the test server can't listen");
    }
    m_port = ntohs(address.sin_port);
}

void ScriptedServer::acceptAll()
{
    for (;;) {
        const int socket = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) {
            return;
        }
        const int atOnce = 1;
        ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &atOnce, sizeof atOnce);
        const std::lock_guard lock(m_mutex);
        if (m_ends) {
            ::close(socket);
            return;
        }
        const auto connection =
            m_open.emplace(m_open.end(), socket, ++m_connections, [this](std::string request) {
                const std::lock_guard requestLock(m_mutex);
                m_requests.push_back(std::move(request));
            });
        m_connectionThreads.emplace_back([this, connection] {
            blockBrokenPipeSignal();
            serve(*connection);
            const std::lock_guard endLock(m_mutex);
            m_open.erase(connection);
        });
    }
}

void ScriptedServer::serve(ServerConnection &connection)
{
    if (m_speaksTls) {
        if (!connection.handshake(m_context.get())) {
            return;
        }
        const std::lock_guard lock(m_mutex);
        ++m_handshakes;
    }
    m_script(connection);
}

ScriptedServer::Script
ScriptedServer::answering(std::function<std::string(const std::string &request)> answer)
{
    return [answer = std::move(answer)](ServerConnection &connection) {
        while (const std::optional<std::string> request = connection.readRequest()) {
            const std::string reply = answer(*request);
            if (reply.empty() || !connection.send(reply)) {
                break;
            }
        }
        connection.close();
    };
}

std::string ScriptedServer::replyBytes(int status, std::string_view body, std::string_view headers)
{
    std::string bytes = "HTTP/1.1 " + std::to_string(status) + " Status\r\n";
    bytes.append(headers);
    bytes += "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n";
    bytes.append(body);
    return bytes;
}

std::string ScriptedServer::origin() const
{
    return "https://localhost:" + std::to_string(m_port);
}

const std::string &ScriptedServer::authorityFile()
{
    return TestCertificates::instance().authorityFile();
}

int ScriptedServer::connections() const
{
    const std::lock_guard lock(m_mutex);
    return m_connections;
}

int ScriptedServer::handshakes() const
{
    const std::lock_guard lock(m_mutex);
    return m_handshakes;
}

int ScriptedServer::openConnections() const
{
    const std::lock_guard lock(m_mutex);
    return static_cast<int>(m_open.size());
}

std::vector<std::string> ScriptedServer::requests() const
{
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

int ScriptedServer::requestCount(std::string_view start) const
{
    const std::lock_guard lock(m_mutex);
    return static_cast<int>(
        std::count_if(m_requests.begin(), m_requests.end(),
                      [&](const std::string &request) { return request.starts_with(start); }));
}

} // namespace trellisport::test
