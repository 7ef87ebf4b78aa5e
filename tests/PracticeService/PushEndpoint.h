#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace trellisport::practice {

/// A push service on 127.0.0.1 that keeps what is posted to it.
class PushEndpoint {
public:
    struct Post {
        std::string authorization;
        std::string encoding;
        std::string timeToLive;
        std::string body;
    };

    /// With the certificate that a practice service keeps in the folder. status: its answer.
    explicit PushEndpoint(const std::string &folder, int status = 201);
    PushEndpoint(const PushEndpoint &) = delete;
    PushEndpoint &operator=(const PushEndpoint &) = delete;
    ~PushEndpoint();

    [[nodiscard]] std::string origin() const;
    /// A device token of which messages are posted here.
    [[nodiscard]] std::string deviceToken() const;
    /// Waits until so many have been posted; gives what there is then.
    [[nodiscard]] std::vector<Post> posts(std::size_t count);

private:
    class Server;
    std::unique_ptr<Server> m_server;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Post> m_posts;
};

} // namespace trellisport::practice
