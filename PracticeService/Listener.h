#pragma once

#include "PracticeService/Certificates.h"
#include "PracticeService/Service.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace trellisport::practice {

class ListenError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The HTTPS side: sockets, TLS and HTTP, on 127.0.0.1 only.
class Listener {
public:
    /// Takes the port, 0 for any free one, so that clients may connect; they are served from
    /// start() on. Throws ListenError.
    Listener(const CertificateFiles &certificates, int port);
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;
    /// Stops.
    ~Listener();

    [[nodiscard]] int port() const noexcept;

    /// Serves on threads of its own. service must stay until stop(). verbose: each request is named
    /// on standard error.
    void start(Service &service, bool verbose);

    /// Ends all connections and comes back when no request is under way any more. Once only.
    void stop();

private:
    class Server;
    std::unique_ptr<Server> m_server;
};

} // namespace trellisport::practice
