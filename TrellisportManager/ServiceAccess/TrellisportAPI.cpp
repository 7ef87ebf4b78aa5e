#include "ServiceAccess/TrellisportAPI.h"

#include "Platform/Platform.h"
#include "ServiceAccess/Arrival.h"
#include "ServiceAccess/ConfiguredAddress.h"
#include "ServiceAccess/RecordCoding.h"
#include "ServiceAccess/UrlSyntax.h"

#include <exception>
#include <utility>
#include <variant>

namespace trellisport {

using platform::HttpReply;
using platform::HttpRequest;
using platform::HttpResult;
using platform::TransportError;
using platform::TransportFailure;

namespace {

/// Replies up to this size are decoded where they arrive, in less time than handing them on takes.
constexpr std::size_t smallReply = std::size_t{16} << 10;

template <typename T>
using Outcome = std::variant<T, std::exception_ptr>;

template <typename T>
Outcome<T> outcomeOf(HttpResult result)
{
    try {
        if (const auto *error = std::get_if<TransportError>(&result)) {
            throw *error;
        }
        HttpReply &reply = std::get<HttpReply>(result);
        if (reply.status < 200 || reply.status > 299) {
            throw APIError::httpError(reply.status);
        }
        return decode<T>(std::move(reply.body));
    } catch (...) {
        return std::current_exception();
    }
}

bool isSmall(const HttpResult &result)
{
    const auto *reply = std::get_if<HttpReply>(&result);
    return reply == nullptr || reply->body.size() <= smallReply;
}

/// It holds all that it needs beyond its wait itself: the client may be gone by then.
template <typename T>
QCoro::Task<T> exchange(std::shared_ptr<platform::HttpSession> session,
                        platform::Executor &executor, HttpRequest request,
                        CancellationToken cancellation)
{
    if (!isAbsoluteURL(request.url)) {
        throw APIError::invalidURL();
    }
    if (cancellation.isCancelled()) {
        throw TransportError(TransportFailure::Cancelled, "The request was cancelled.");
    }
    const Arrival<Outcome<T>> arrival;
    const auto underWay =
        session->send(std::move(request), [arrival, &executor](HttpResult result) {
            if (isSmall(result)) {
                arrival.deliver(outcomeOf<T>(std::move(result)));
                return;
            }
            // The work is a std::function and so may be copied; a body it owned would be, too.
            const auto shared = std::make_shared<HttpResult>(std::move(result));
            executor.run([arrival, shared] { arrival.deliver(outcomeOf<T>(std::move(*shared))); });
        });
    const auto registration = cancellation.onCancel([&underWay] { underWay->cancel(); });
    Outcome<T> outcome = co_await arrival;
    if (const auto *error = std::get_if<std::exception_ptr>(&outcome)) {
        std::rethrow_exception(*error);
    }
    co_return std::get<T>(std::move(outcome));
}

} // namespace

TrellisportAPI &TrellisportAPI::shared()
{
    static TrellisportAPI api = [] {
        platform::Platform &platform = platform::Platform::current();
        return TrellisportAPI(configuredServiceAddress(platform.environment()).baseURL,
                              platform.httpSession(), platform.executor());
    }();
    return api;
}

TrellisportAPI::TrellisportAPI(std::string baseURL, std::shared_ptr<platform::HttpSession> session,
                               platform::Executor &executor)
    : m_baseURL(std::move(baseURL))
    , m_session(std::move(session))
    , m_executor(executor)
{
}

template <typename T>
QCoro::Task<T> TrellisportAPI::request(std::string path, CancellationToken cancellation,
                                       std::string method, std::optional<std::string> body) const
{
    HttpRequest request;
    request.url = m_baseURL + path;
    request.method = std::move(method);
    request.headers.push_back({"Content-Type", "application/json"});
    request.body = std::move(body);
    return exchange<T>(m_session, m_executor, std::move(request), std::move(cancellation));
}

QCoro::Task<> TrellisportAPI::write(std::string path, CancellationToken cancellation,
                                    std::string method, TextMap body) const
{
    // The reply must be a map of texts, though nobody reads it.
    co_await request<TextMap>(std::move(path), std::move(cancellation), std::move(method),
                              encode(body));
}

QCoro::Task<DashboardData> TrellisportAPI::getDashboard(CancellationToken cancellation) const
{
    return request<DashboardData>("/dashboard", std::move(cancellation));
}

QCoro::Task<std::vector<Project>> TrellisportAPI::getProjects(std::optional<std::string> status,
                                                              CancellationToken cancellation) const
{
    return request<std::vector<Project>>(status ? "/projects?status=" + *status : "/projects",
                                         std::move(cancellation));
}

QCoro::Task<ProjectDetail> TrellisportAPI::getProject(std::string id,
                                                      CancellationToken cancellation) const
{
    return request<ProjectDetail>("/projects/" + id, std::move(cancellation));
}

QCoro::Task<std::vector<Message>> TrellisportAPI::getMessages(std::string projectId,
                                                              CancellationToken cancellation) const
{
    return request<std::vector<Message>>("/projects/" + projectId + "/messages",
                                         std::move(cancellation));
}

QCoro::Task<std::vector<Decision>>
TrellisportAPI::getDecisions(std::string projectId, CancellationToken cancellation) const
{
    return request<std::vector<Decision>>("/projects/" + projectId + "/decisions",
                                          std::move(cancellation));
}

QCoro::Task<> TrellisportAPI::answerDecision(std::string projectId, std::string decisionId,
                                             std::string answer,
                                             CancellationToken cancellation) const
{
    return write("/projects/" + projectId + "/decisions/" + decisionId + "/answer",
                 std::move(cancellation), "POST", {{"answer", std::move(answer)}});
}

QCoro::Task<std::vector<BidInfo>> TrellisportAPI::getBids(std::string projectId,
                                                          CancellationToken cancellation) const
{
    return request<std::vector<BidInfo>>("/projects/" + projectId + "/bids",
                                         std::move(cancellation));
}

QCoro::Task<std::vector<TimelineEvent>>
TrellisportAPI::getTimeline(std::string projectId, CancellationToken cancellation) const
{
    return request<std::vector<TimelineEvent>>("/projects/" + projectId + "/timeline",
                                               std::move(cancellation));
}

QCoro::Task<std::vector<DevLog>> TrellisportAPI::getLogs(std::string projectId,
                                                         CancellationToken cancellation) const
{
    return request<std::vector<DevLog>>("/projects/" + projectId + "/logs",
                                        std::move(cancellation));
}

QCoro::Task<std::vector<Report>> TrellisportAPI::getReports(std::string projectId,
                                                            CancellationToken cancellation) const
{
    return request<std::vector<Report>>("/projects/" + projectId + "/reports",
                                        std::move(cancellation));
}

QCoro::Task<TextMap> TrellisportAPI::getConfig(CancellationToken cancellation) const
{
    return request<TextMap>("/config", std::move(cancellation));
}

QCoro::Task<> TrellisportAPI::updateConfig(TextMap config, CancellationToken cancellation) const
{
    return write("/config", std::move(cancellation), "PUT", std::move(config));
}

QCoro::Task<> TrellisportAPI::registerDevice(std::string token,
                                             CancellationToken cancellation) const
{
    return write("/devices", std::move(cancellation), "POST", {{"device_token", std::move(token)}});
}

} // namespace trellisport
