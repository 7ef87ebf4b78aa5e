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

// The coroutines below hold all that they need beyond their first wait themselves: the client may
// be gone by then.

QCoro::Task<HttpReply> exchange(std::shared_ptr<platform::HttpSession> session, HttpRequest request,
                                CancellationToken cancellation)
{
    if (cancellation.isCancelled()) {
        throw TransportError(TransportFailure::Cancelled, "The request was cancelled.");
    }
    const Arrival<HttpResult> arrival;
    const auto underWay = session->send(
        std::move(request), [arrival](HttpResult result) { arrival.deliver(std::move(result)); });
    const auto registration = cancellation.onCancel([&underWay] { underWay->cancel(); });
    HttpResult result = co_await arrival;
    if (const auto *error = std::get_if<TransportError>(&result)) {
        throw *error;
    }
    co_return std::get<HttpReply>(std::move(result));
}

template <typename T>
QCoro::Task<T> decodeElsewhere(platform::Executor &executor, std::string body)
{
    using Decoded = std::variant<T, std::exception_ptr>;
    const Arrival<Decoded> arrival;
    // The work is a std::function and so may be copied; a body that it owned would be, too.
    const auto shared = std::make_shared<std::string>(std::move(body));
    executor.run([arrival, shared] {
        try {
            arrival.deliver(Decoded(decode<T>(std::move(*shared))));
        } catch (...) {
            arrival.deliver(Decoded(std::current_exception()));
        }
    });
    Decoded decoded = co_await arrival;
    if (const auto *error = std::get_if<std::exception_ptr>(&decoded)) {
        std::rethrow_exception(*error);
    }
    co_return std::get<T>(std::move(decoded));
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
    if (!isAbsoluteURL(request.url)) {
        throw APIError::invalidURL();
    }
    request.method = std::move(method);
    request.headers.push_back({"Content-Type", "application/json"});
    request.body = std::move(body);

    platform::Executor &executor = m_executor;
    HttpReply reply = co_await exchange(m_session, std::move(request), std::move(cancellation));
    if (reply.status < 200 || reply.status > 299) {
        throw APIError::httpError(reply.status);
    }
    T value = co_await decodeElsewhere<T>(executor, std::move(reply.body));
    co_return std::move(value);
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
