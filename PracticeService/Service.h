#pragma once

#include "PracticeService/Faults.h"
#include "PracticeService/Keeper.h"
#include "PracticeService/Trouble.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace trellisport::practice {

struct ServiceRequest {
    std::string method;
    std::string path; ///< decoded, without the query
    std::multimap<std::string, std::string> query;
    std::string contentType;
    std::string ifNoneMatch;
    std::string body;
};

/// How a reply goes out.
enum class Delivery {
    Whole,
    Slow,  ///< its body in small pieces
    Cut,   ///< the connection ends within the body
    Reset, ///< the connection is reset, and nothing goes out
};

struct ServiceReply {
    int status = 200;
    std::string contentType = "application/json";
    std::string body;
    std::vector<std::pair<std::string, std::string>> headers;
    Delivery delivery = Delivery::Whole;
};

/// The service's operations as such, without sockets. Replies to everything, also to nonsense: what
/// cannot be done is a 4xx with {"error": "..."}.
class Service {
public:
    /// keeper must outlive the service. control: also offer the paths below /control.
    Service(Keeper &keeper, bool control);

    /// Any thread, any number at a time. Never throws.
    [[nodiscard]] ServiceReply handle(const ServiceRequest &request);

    /// Ends the delays that tests asked for. Any thread.
    void endWaiting() { m_faults.endWaiting(); }

private:
    using Segments = std::vector<std::string>;
    [[nodiscard]] ServiceReply route(const ServiceRequest &request);
    [[nodiscard]] ServiceReply routeApi(const ServiceRequest &request, const Segments &path);
    [[nodiscard]] ServiceReply routeProjects(const ServiceRequest &request, const Segments &path);
    [[nodiscard]] ServiceReply routeProject(const ServiceRequest &request, const Segments &path);
    [[nodiscard]] ServiceReply routeControl(const ServiceRequest &request, const Segments &path);
    [[nodiscard]] ServiceReply tick(const ServiceRequest &request);
    [[nodiscard]] ServiceReply advance(const ServiceRequest &request);
    [[nodiscard]] ServiceReply addFault(const ServiceRequest &request);
    [[nodiscard]] ServiceReply beginTrouble(const ServiceRequest &request);
    [[nodiscard]] ServiceReply writes();
    /// Notes what arrived, and gives the fault that it meets.
    [[nodiscard]] std::optional<Fault> meet(const ServiceRequest &request);
    [[nodiscard]] ServiceReply answerDecision(const ServiceRequest &request,
                                              const std::string &project,
                                              const std::string &decision);
    [[nodiscard]] ServiceReply replaceConfig(const ServiceRequest &request);
    [[nodiscard]] ServiceReply registerDevice(const ServiceRequest &request);
    [[nodiscard]] ServiceReply statusPage();

    Keeper &m_keeper;
    Faults m_faults;
    Trouble m_trouble;
    std::mutex m_writesMutex;
    std::vector<std::string> m_writes; ///< as they arrived; kept for tests alone
    bool m_control;
};

/// A reply that says no.
[[nodiscard]] ServiceReply refusal(int status, const std::string &reason);

} // namespace trellisport::practice
