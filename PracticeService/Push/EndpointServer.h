#pragma once

#include "PracticeService/Certificates.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

namespace trellisport::practice {

/// The side of the push service that lies on the web: takes what is posted to the endpoints, on
/// 127.0.0.1 only (RFC 8030).
class EndpointServer {
public:
    static constexpr std::size_t largestMessage = 4096;

    struct Events {
        /// Whether there is a client of that path.
        std::function<bool(const QString &path)> knows;
        std::function<void(const QString &path, const QByteArray &message)> deliver;
    };

    /// Takes the port, or any free one when that is taken or 0. Throws std::runtime_error.
    EndpointServer(const CertificateFiles &certificates, int port);
    EndpointServer(const EndpointServer &) = delete;
    EndpointServer &operator=(const EndpointServer &) = delete;
    /// Ends all connections.
    ~EndpointServer();

    [[nodiscard]] int port() const noexcept;
    /// Serves on threads of its own, which call the events.
    void start(Events events);

private:
    class Server;
    std::unique_ptr<Server> m_server;
};

} // namespace trellisport::practice
