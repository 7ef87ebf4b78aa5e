#include "PracticeService/Push/EndpointServer.h"

#include <httplib.h>

#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

namespace trellisport::practice {

namespace {

constexpr const char *host = "127.0.0.1";
constexpr int created = 201;
constexpr int notFound = 404;
constexpr int tooLarge = 413;
constexpr int badRequest = 400;

} // namespace

class EndpointServer::Server {
public:
    explicit Server(const CertificateFiles &certificates)
        : http(certificates.server.c_str(), certificates.serverKey.c_str())
    {
    }

    httplib::SSLServer http;
    int port = 0;
    std::thread thread;
};

EndpointServer::EndpointServer(const CertificateFiles &certificates, int port)
    : m_server(std::make_unique<Server>(certificates))
{
    httplib::SSLServer &http = m_server->http;
    if (!http.is_valid()) {
        throw std::runtime_error("Cannot use the certificate " + certificates.server.string() +
                                 ".");
    }
    http.set_payload_max_length(largestMessage);
    http.set_keep_alive_max_count(1); // nobody posts often
    // The library's own choice would let a second server share the port unnoticed.
    http.set_socket_options([](socket_t socket) {
        const int yes = 1;
        ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    m_server->port =
        port != 0 && http.bind_to_port(host, port) ? port : http.bind_to_any_port(host);
    if (m_server->port <= 0) {
        throw std::runtime_error("Cannot listen on " + std::string(host) + ".");
    }
}

EndpointServer::~EndpointServer()
{
    m_server->http.stop();
    if (m_server->thread.joinable()) {
        m_server->thread.join();
    }
}

int EndpointServer::port() const noexcept
{
    return m_server->port;
}

void EndpointServer::start(Events events)
{
    m_server->http.Post(
        "/push/([0-9a-f]{32})",
        [events = std::move(events)](const httplib::Request &request, httplib::Response &response) {
            const QString path = QString::fromStdString(request.matches[1]);
            if (!events.knows(path)) {
                response.status = notFound;
            } else if (request.body.size() > largestMessage) {
                response.status = tooLarge;
            } else if (request.body.empty()) {
                response.status = badRequest;
            } else {
                events.deliver(path, QByteArray::fromStdString(request.body));
                response.status = created;
                response.set_header("TTL", "0"); // delivered now or never
            }
        });
    std::promise<void> begun;
    m_server->thread = std::thread([this, &begun] {
        begun.set_value();
        m_server->http.listen_after_bind();
    });
    begun.get_future().wait();
}

} // namespace trellisport::practice
