#include "PushEndpoint.h"

#include "Platform/Linux/Push/PushEndpoint.h"
#include "Platform/Linux/Push/PushKeys.h"
#include "Support/Waiting.h"

#include <httplib.h>

#include <QByteArray>
#include <QString>

#include <thread>

namespace trellisport::practice {

class PushEndpoint::Server {
public:
    explicit Server(const std::string &folder)
        : http((folder + "/server.pem").c_str(), (folder + "/server-key.pem").c_str())
    {
    }
    httplib::SSLServer http;
    int port = 0;
    std::thread thread;
};

PushEndpoint::PushEndpoint(const std::string &folder, int status)
    : m_server(std::make_unique<Server>(folder))
{
    httplib::SSLServer &http = m_server->http;
    http.set_keep_alive_max_count(1);
    http.Post("/send/here",
              [this, status](const httplib::Request &request, httplib::Response &response) {
                  response.status = status;
                  const std::lock_guard lock(m_mutex);
                  m_posts.push_back({request.get_header_value("Authorization"),
                                     request.get_header_value("Content-Encoding"),
                                     request.get_header_value("TTL"), request.body});
                  m_changed.notify_all();
              });
    m_server->port = http.bind_to_any_port("127.0.0.1");
    m_server->thread = std::thread([&http] { http.listen_after_bind(); });
    // Stopping a server that does not run yet would go unnoticed.
    while (!http.is_running())
        std::this_thread::yield();
}

PushEndpoint::~PushEndpoint()
{
    m_server->http.stop();
    m_server->thread.join();
}

std::string PushEndpoint::origin() const
{
    return "https://127.0.0.1:" + std::to_string(m_server->port);
}

std::string PushEndpoint::deviceToken() const
{
    const auto token = platform::deviceToken(QString::fromStdString(origin() + "/send/here"),
                                             platform::PushKeys::generate().value());
    return QByteArray(reinterpret_cast<const char *>(token.data()),
                      static_cast<qsizetype>(token.size()))
        .toHex()
        .toStdString();
}

std::vector<PushEndpoint::Post> PushEndpoint::posts(std::size_t count)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, test::patience, [&] { return m_posts.size() >= count; });
    return m_posts;
}

} // namespace trellisport::practice
