#include "Support/ServerConnection.h"

#include <algorithm>
#include <array>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace trellisport::test {

namespace {

/// The number behind "Content-Length:"; 0 when there is none.
std::size_t contentLength(std::string_view head)
{
    constexpr std::string_view name = "\r\ncontent-length:";
    const auto found =
        std::search(head.begin(), head.end(), name.begin(), name.end(),
                    [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + 32 : a) == b; });
    if (found == head.end()) {
        return 0;
    }
    return std::stoul(std::string(found + static_cast<std::ptrdiff_t>(name.size()), head.end()));
}

} // namespace

ServerConnection::ServerConnection(int socket, int number,
                                   std::function<void(std::string)> onRequest)
    : m_socket(socket)
    , m_number(number)
    , m_onRequest(std::move(onRequest))
{
}

ServerConnection::~ServerConnection()
{
    m_ssl.reset();
    ::close(m_socket);
}

bool ServerConnection::handshake(SSL_CTX *context)
{
    m_ssl.reset(SSL_new(context));
    SSL_set_fd(m_ssl.get(), m_socket);
    return SSL_accept(m_ssl.get()) == 1;
}

std::string ServerConnection::protocol() const
{
    const unsigned char *name = nullptr;
    unsigned length = 0;
    if (m_ssl) {
        SSL_get0_alpn_selected(m_ssl.get(), &name, &length);
    }
    return {name, name + length};
}

std::optional<std::string> ServerConnection::readRequest()
{
    constexpr std::string_view end = "\r\n\r\n";
    std::string request;
    std::size_t found = std::string::npos;
    while (found == std::string::npos) {
        const std::string piece = readSome();
        if (piece.empty()) {
            return {};
        }
        const std::size_t searched = request.size() - std::min(request.size(), end.size());
        request += piece;
        found = request.find(end, searched);
    }
    const std::size_t head = found + end.size();
    const std::size_t length = head + contentLength(std::string_view(request).substr(0, head));
    if (request.size() < length) {
        request += read(length - request.size());
    } else {
        m_buffer = request.substr(length);
        request.resize(length);
    }
    if (request.size() < length) {
        return {};
    }
    m_onRequest(request);
    return request;
}

std::string ServerConnection::readSome()
{
    if (!m_buffer.empty()) {
        return std::exchange(m_buffer, {});
    }
    std::array<char, 16384> piece{};
    const auto count = m_ssl ? SSL_read(m_ssl.get(), piece.data(), static_cast<int>(piece.size()))
                             : static_cast<int>(::recv(m_socket, piece.data(), piece.size(), 0));
    return {piece.data(), static_cast<std::size_t>(std::max(count, 0))};
}

std::string ServerConnection::read(std::size_t count)
{
    std::string bytes;
    while (bytes.size() < count) {
        const std::string piece = readSome();
        if (piece.empty()) {
            break;
        }
        bytes += piece;
    }
    if (bytes.size() > count) {
        m_buffer = bytes.substr(count);
        bytes.resize(count);
    }
    return bytes;
}

bool ServerConnection::send(std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto length = static_cast<int>(std::min<std::size_t>(bytes.size(), 1 << 20));
        const auto count =
            m_ssl ? SSL_write(m_ssl.get(), bytes.data(), length)
                  : static_cast<int>(::send(m_socket, bytes.data(),
                                            static_cast<std::size_t>(length), MSG_NOSIGNAL));
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool ServerConnection::drip(std::string_view bytes, std::chrono::milliseconds pause)
{
    for (const char byte : bytes) {
        if (!send({&byte, 1})) {
            return false;
        }
        std::this_thread::sleep_for(pause);
    }
    return true;
}

void ServerConnection::hold()
{
    while (!readSome().empty()) {
    }
}

void ServerConnection::close()
{
    if (m_ssl) {
        SSL_shutdown(m_ssl.get());
    }
    cut();
}

void ServerConnection::cut()
{
    ::shutdown(m_socket, SHUT_RDWR);
}

void ServerConnection::reset()
{
    sockaddr nowhere{};
    nowhere.sa_family = AF_UNSPEC;
    static_cast<void>(::connect(m_socket, &nowhere, sizeof nowhere));
}

void ServerConnection::interrupt() const
{
    ::shutdown(m_socket, SHUT_RDWR);
}

} // namespace trellisport::test
