#pragma once

#include "Support/ServerConnection.h"
#include "Support/TestCertificates.h"

#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace trellisport::test {

struct ServerOptions {
    Identity identity = Identity::Trusted;
    bool offersHttp2 = false;
    bool speaksTls = true; ///< false: whatever is sent goes out in the clear
    int receiveBuffer = 0; ///< what the system takes in before the script reads; 0: as usual
    int newestTls = 0;     ///< e.g. TLS1_1_VERSION; 0: the newest that OpenSSL has
    const TestCertificates *certificates = nullptr; ///< who issues its own; null: instance()
};

/// An HTTPS server on a free port of 127.0.0.1 that does to each connection what the test's script
/// says, byte by byte, and counts what reaches it. Every connection has a thread of its own; the
/// script runs there once the handshake is done.
class ScriptedServer {
public:
    using Script = std::function<void(ServerConnection &)>;

    explicit ScriptedServer(Script script, const ServerOptions &options = {});
    ScriptedServer(const ScriptedServer &) = delete;
    ScriptedServer &operator=(const ScriptedServer &) = delete;
    /// Interrupts the scripts and waits for them.
    ~ScriptedServer();

    /// A script that answers every request of every connection the same way: answer gets the raw
    /// request and gives the raw reply; an empty one closes the connection.
    [[nodiscard]] static Script
    answering(std::function<std::string(const std::string &request)> answer);
    /// The raw bytes of a reply with a Content-Length. headers: whole lines, each with its end.
    [[nodiscard]] static std::string replyBytes(int status, std::string_view body,
                                                std::string_view headers = {});

    [[nodiscard]] int port() const { return m_port; }
    /// "https://localhost:" and the port.
    [[nodiscard]] std::string origin() const;
    /// The authority that vouches for the trusted identities.
    [[nodiscard]] static const std::string &authorityFile();

    /// How many connections were accepted, and how many of them finished the handshake.
    [[nodiscard]] int connections() const;
    [[nodiscard]] int handshakes() const;
    /// How many connections are open still: their scripts have not ended.
    [[nodiscard]] int openConnections() const;
    /// Every HTTP/1 request that a script read whole, byte for byte, in order of arrival.
    [[nodiscard]] std::vector<std::string> requests() const;
    /// How many of them start with this text, such as "POST ".
    [[nodiscard]] int requestCount(std::string_view start = {}) const;

private:
    struct ContextDeleter {
        void operator()(SSL_CTX *context) const { SSL_CTX_free(context); }
    };

    void setUpTls(const ServerOptions &options);
    void listen(int receiveBuffer);
    void acceptAll();
    void serve(ServerConnection &connection);

    Script m_script;
    bool m_speaksTls;
    std::unique_ptr<SSL_CTX, ContextDeleter> m_context;
    int m_listener = -1;
    int m_port = 0;

    mutable std::mutex m_mutex;
    std::list<ServerConnection> m_open;
    std::vector<std::string> m_requests;
    int m_connections = 0;
    int m_handshakes = 0;
    bool m_ends = false;

    std::thread m_thread;
    std::list<std::thread> m_connectionThreads; ///< the accepting thread's, until that has ended
};

} // namespace trellisport::test
