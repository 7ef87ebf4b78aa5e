#pragma once

#include "PracticeService/Faults.h"
#include "PracticeService/Keeper.h"
#include "PracticeService/ServiceMessages.h"
#include "PracticeService/Trouble.h"

#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace trellisport::practice {

class App;

/// The service's operations as such, without sockets. Replies to everything, also to nonsense: what
/// cannot be done is a 4xx with {"error": "..."}.
class Service {
public:
    /// keeper and app must outlive the service. control: also offer the paths below /control. app:
    /// what is at /app/, or null.
    Service(Keeper &keeper, bool control, App *app = nullptr);

    /// Any thread, any number at a time. Never throws.
    [[nodiscard]] ServiceReply handle(const ServiceRequest &request);
    /// The reply to a request that HTTP itself forbids, with what its path's replies always carry.
    [[nodiscard]] static ServiceReply refuse(const ServiceRequest &request, int status,
                                             const std::string &reason);

    /// Ends the delays that tests asked for. Any thread.
    void endWaiting() { m_faults.endWaiting(); }

private:
    using Segments = std::vector<std::string>;
    [[nodiscard]] ServiceReply attempt(const ServiceRequest &request);
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
    App *m_app;
    Faults m_faults;
    Trouble m_trouble;
    std::mutex m_writesMutex;
    std::vector<std::string> m_writes; ///< as they arrived; kept for tests alone
    bool m_control;
};

} // namespace trellisport::practice
