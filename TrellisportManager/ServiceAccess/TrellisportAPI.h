#pragma once

#include "Platform/Executor.h"
#include "Platform/HttpSession.h"
#include "ServiceAccess/APIError.h"
#include "ServiceAccess/CancellationToken.h"
#include "ServiceAccess/Records.h"

#include <QCoroTask>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trellisport {

/// The one gateway to the service: one HTTP exchange a call, no retries, no state of its own.
///
/// The operations may be called on any thread that runs an event loop, any number at a time. The
/// network and the decoding run elsewhere; the result or the error arrives on the calling thread.
/// They throw APIError (a status outside 200...299, a URL that cannot be), platform::TransportError
/// (no whole reply; also when the token is cancelled), DecodingError (the reply is not what was
/// promised) and EncodingError (a text that is not UTF-8; nothing was sent). Identifiers and the
/// status filter enter the URL as given, nothing is escaped.
///
/// A call starts at once and runs to its end whether or not its task is kept. It holds what it
/// needs, so the client may go while calls are under way. When the calling thread ends first, the
/// call never returns, and what its coroutine holds stays allocated.
class TrellisportAPI {
public:
    /// The instance that the application uses, made on first access, whichever thread that is, with
    /// the configured address (ConfiguredAddress.h). Throws std::invalid_argument when that address
    /// can't be used; a program that starts with such a one says so before it gets here.
    [[nodiscard]] static TrellisportAPI &shared();

    /// Made for a service at baseURL (https, path /api/v1, no trailing slash). executor must
    /// outlive the client and every call.
    TrellisportAPI(std::string baseURL, std::shared_ptr<platform::HttpSession> session,
                   platform::Executor &executor);

    [[nodiscard]] const std::string &baseURL() const noexcept { return m_baseURL; }

    QCoro::Task<DashboardData> getDashboard(CancellationToken cancellation = {}) const;
    QCoro::Task<std::vector<Project>> getProjects(std::optional<std::string> status = {},
                                                  CancellationToken cancellation = {}) const;
    QCoro::Task<ProjectDetail> getProject(std::string id,
                                          CancellationToken cancellation = {}) const;
    QCoro::Task<std::vector<Message>> getMessages(std::string projectId,
                                                  CancellationToken cancellation = {}) const;
    QCoro::Task<std::vector<Decision>> getDecisions(std::string projectId,
                                                    CancellationToken cancellation = {}) const;
    QCoro::Task<> answerDecision(std::string projectId, std::string decisionId, std::string answer,
                                 CancellationToken cancellation = {}) const;
    QCoro::Task<std::vector<BidInfo>> getBids(std::string projectId,
                                              CancellationToken cancellation = {}) const;
    QCoro::Task<std::vector<TimelineEvent>> getTimeline(std::string projectId,
                                                        CancellationToken cancellation = {}) const;
    QCoro::Task<std::vector<DevLog>> getLogs(std::string projectId,
                                             CancellationToken cancellation = {}) const;
    QCoro::Task<std::vector<Report>> getReports(std::string projectId,
                                                CancellationToken cancellation = {}) const;
    QCoro::Task<std::map<std::string, std::string>>
    getConfig(CancellationToken cancellation = {}) const;
    QCoro::Task<> updateConfig(std::map<std::string, std::string> config,
                               CancellationToken cancellation = {}) const;
    QCoro::Task<> registerDevice(std::string token, CancellationToken cancellation = {}) const;

private:
    template <typename T>
    QCoro::Task<T> request(std::string path, CancellationToken cancellation,
                           std::string method = "GET", std::optional<std::string> body = {}) const;
    QCoro::Task<> write(std::string path, CancellationToken cancellation, std::string method,
                        TextMap body) const;

    std::string m_baseURL;
    std::shared_ptr<platform::HttpSession> m_session;
    platform::Executor &m_executor;
};

} // namespace trellisport
