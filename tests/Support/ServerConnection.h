#pragma once

#include <openssl/ssl.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace trellisport::test {

/// One connection of a ScriptedServer, as its script sees it. The calls block. One thread, but for
/// interrupt().
class ServerConnection {
public:
    /// Takes the socket over. onRequest is told of every request that was read whole.
    ServerConnection(int socket, int number, std::function<void(std::string)> onRequest);
    ServerConnection(const ServerConnection &) = delete;
    ServerConnection &operator=(const ServerConnection &) = delete;
    ~ServerConnection();

    /// From 1, in the order of arrival.
    [[nodiscard]] int number() const { return m_number; }

    /// The server's part of the TLS handshake; false when the client ends it. It must come before
    /// anything below, or what is sent goes out in the clear.
    bool handshake(SSL_CTX *context);
    /// What the handshake agreed on: "h2", "http/1.1" or nothing.
    [[nodiscard]] std::string protocol() const;

    /// Reads one HTTP/1 request with its body; nothing when the client closes first.
    std::optional<std::string> readRequest();
    /// Reads what there is, at least a byte; empty when the client has closed.
    std::string readSome();
    /// Reads exactly this many bytes; fewer when the client closes.
    std::string read(std::size_t count);

    /// False when the client has gone.
    bool send(std::string_view bytes);
    /// Sends byte by byte with a pause after each.
    bool drip(std::string_view bytes, std::chrono::milliseconds pause);

    /// Does nothing until the client closes or the server is destroyed.
    void hold();
    /// Closes as the protocol asks for.
    void close();
    /// Closes without a word of TLS.
    void cut();
    /// Ends the connection with a TCP reset.
    void reset();

    /// Makes every blocking call return. Any thread.
    void interrupt() const;

private:
    struct SslDeleter {
        void operator()(SSL *ssl) const { SSL_free(ssl); }
    };

    int m_socket;
    int m_number;
    std::function<void(std::string)> m_onRequest;
    std::unique_ptr<SSL, SslDeleter> m_ssl;
    std::string m_buffer; ///< read, not yet taken
};

} // namespace trellisport::test
