#include "PracticeService/Service.h"

#include "PracticeService/App/App.h"
#include "PracticeService/RequestBody.h"
#include "PracticeService/StatusPage.h"
#include "ServiceAccess/RecordCoding.h"

#include <algorithm>
#include <iostream>

namespace trellisport::practice {

namespace {

constexpr std::string_view apiRoot = "/api/v1";

std::vector<std::string> segmentsOf(std::string_view path)
{
    std::vector<std::string> segments;
    while (!path.empty()) {
        path.remove_prefix(1); // the slash
        const auto end = std::min(path.find('/'), path.size());
        segments.emplace_back(path.substr(0, end));
        path.remove_prefix(end);
    }
    return segments;
}

ServiceReply json(std::string body)
{
    ServiceReply reply;
    reply.body = std::move(body);
    return reply;
}

ServiceReply done()
{
    return json(R"({"status":"ok"})");
}

ServiceReply unknownProject()
{
    return refusal(404, "There is no such project.");
}

bool isApi(const ServiceRequest &request)
{
    return request.path.starts_with(apiRoot) &&
           request.path.substr(apiRoot.size()).starts_with('/');
}

template <typename Value>
ServiceReply encoded(const Value &value)
{
    return json(encode(value));
}

template <typename Value>
ServiceReply encodedOrUnknown(const std::optional<Value> &value)
{
    return value ? encoded(*value) : unknownProject();
}

/// Gives the reply a tag, or says that the asker has it already.
void makeCacheable(const ServiceRequest &request, ServiceReply &reply)
{
    const std::string tag = entityTagOf(reply.body);
    reply.headers.emplace_back("ETag", tag);
    reply.headers.emplace_back("Cache-Control", "no-cache");
    if (isHeld(request, tag)) {
        reply.status = 304;
        reply.body.clear();
    }
}

ServiceReply dropped()
{
    ServiceReply reply;
    reply.delivery = Delivery::Reset;
    return reply;
}

/// Does to a sound reply what a test wants.
void spoil(ServiceReply &reply, Fault::Kind kind)
{
    switch (kind) {
    case Fault::Kind::Reset:
        reply = dropped();
        break;
    case Fault::Kind::Cut:
        reply.delivery = Delivery::Cut;
        break;
    case Fault::Kind::Slow:
        reply.delivery = Delivery::Slow;
        break;
    case Fault::Kind::Garbage:
        // It begins well, breaks off like a text that was cut, and goes on as noise.
        reply.status = 200;
        reply.headers.clear();
        reply.body.resize(reply.body.size() / 2);
        reply.body += "\x01\xff garbage of a fault";
        break;
    case Fault::Kind::Late:
    case Fault::Kind::Status:
    case Fault::Kind::Drop:
        break;
    }
}

} // namespace

Service::Service(Keeper &keeper, bool control, App *app)
    : m_keeper(keeper)
    , m_app(app)
    , m_control(control)
{
}

ServiceReply Service::handle(const ServiceRequest &request)
{
    ServiceReply reply = attempt(request);
    App::secure(request, reply);
    return reply;
}

ServiceReply Service::refuse(const ServiceRequest &request, int status, const std::string &reason)
{
    ServiceReply reply = refusal(status, reason);
    App::secure(request, reply);
    return reply;
}

ServiceReply Service::attempt(const ServiceRequest &request)
{
    try {
        if (App::isAbout(request))
            return m_app != nullptr ? m_app->handle(request) : unknownPath();
        const std::optional<Fault> fault = m_control ? meet(request) : std::nullopt;
        if (fault) {
            m_faults.wait(fault->delay);
            if (fault->kind == Fault::Kind::Status)
                return refusal(fault->status, "A fault asked for by a test.");
            if (fault->kind == Fault::Kind::Drop)
                return dropped();
        }
        ServiceReply reply = route(request);
        if (isGet(request) && reply.status == 200)
            makeCacheable(request, reply);
        if (fault)
            spoil(reply, fault->kind);
        return reply;
    } catch (const BodyError &error) {
        return refusal(error.status(), error.what());
    } catch (const std::exception &error) {
        std::cerr << request.method << ' ' << request.path << " failed: " << error.what() << '\n';
        return refusal(500, "The practice service failed; its standard error says why.");
    }
}

std::optional<Fault> Service::meet(const ServiceRequest &request)
{
    if (!isApi(request))
        return std::nullopt;
    const std::string path = request.path.substr(apiRoot.size());
    if (!isGet(request)) {
        const std::lock_guard lock(m_writesMutex);
        m_writes.push_back(request.method + ' ' + path + ' ' + request.body);
    }
    if (auto fault = m_faults.take(path))
        return fault;
    return m_trouble.next(request.method, path);
}

ServiceReply Service::route(const ServiceRequest &request)
{
    if (request.path == "/")
        return isGet(request) ? statusPage() : wrongMethod("GET");
    if (isApi(request))
        return routeApi(request, segmentsOf(request.path.substr(apiRoot.size())));
    if (m_control && request.path.starts_with("/control/"))
        return routeControl(request, segmentsOf(request.path));
    return unknownPath();
}

ServiceReply Service::routeApi(const ServiceRequest &request, const Segments &path)
{
    if (path[0] == "projects")
        return routeProjects(request, path);
    if (path.size() != 1)
        return unknownPath();
    if (path[0] == "dashboard") {
        if (!isGet(request))
            return wrongMethod("GET");
        return encoded(m_keeper.ask([](Keeper::Desk &desk) { return desk.store.dashboard(); }));
    }
    if (path[0] == "config") {
        if (isGet(request))
            return encoded(m_keeper.ask([](Keeper::Desk &desk) { return desk.store.config(); }));
        return request.method == "PUT" ? replaceConfig(request) : wrongMethod("GET, PUT");
    }
    if (path[0] == "devices")
        return request.method == "POST" ? registerDevice(request) : wrongMethod("POST");
    return unknownPath();
}

ServiceReply Service::routeProjects(const ServiceRequest &request, const Segments &path)
{
    if (path.size() > 1)
        return routeProject(request, path);
    if (!isGet(request))
        return wrongMethod("GET");
    std::optional<std::string> status;
    // An empty filter filters nothing.
    if (const auto filter = request.query.find("status");
        filter != request.query.end() && !filter->second.empty())
        status = filter->second;
    return encoded(m_keeper.ask([&](Keeper::Desk &desk) { return desk.store.projects(status); }));
}

ServiceReply Service::routeProject(const ServiceRequest &request, const Segments &path)
{
    const std::string &id = path[1];
    const std::string part = path.size() > 2 ? path[2] : std::string();
    if (path.size() == 5 && part == "decisions" && path[4] == "answer") {
        return request.method == "POST" ? answerDecision(request, id, path[3])
                                        : wrongMethod("POST");
    }
    const auto list = [&](auto read) {
        if (!isGet(request))
            return wrongMethod("GET");
        return encodedOrUnknown(
            m_keeper.ask([&](Keeper::Desk &desk) { return (desk.store.*read)(id); }));
    };
    if (path.size() == 2)
        return list(&Store::project);
    if (path.size() > 3)
        return unknownPath();
    if (part == "messages")
        return list(&Store::messages);
    if (part == "decisions")
        return list(&Store::decisions);
    if (part == "bids")
        return list(&Store::bids);
    if (part == "timeline")
        return list(&Store::timeline);
    if (part == "logs")
        return list(&Store::logs);
    if (part == "reports")
        return list(&Store::reports);
    return unknownPath();
}

ServiceReply Service::answerDecision(const ServiceRequest &request, const std::string &project,
                                     const std::string &decision)
{
    const std::string answer = onlyText(request.contentType, request.body, "answer");
    switch (m_keeper.ask([&](Keeper::Desk &desk) {
        return desk.agent.answer(project, decision, answer, desk.clock.now());
    })) {
    case Agent::AnswerOutcome::UnknownProject:
        return unknownProject();
    case Agent::AnswerOutcome::UnknownDecision:
        return refusal(404, "The project has no such decision.");
    case Agent::AnswerOutcome::AlreadyAnswered:
        return refusal(409, "The decision is already answered.");
    case Agent::AnswerOutcome::Expired:
        return refusal(409, "The decision has expired; the agent went on without an answer.");
    case Agent::AnswerOutcome::Taken:
        break;
    }
    return done();
}

ServiceReply Service::replaceConfig(const ServiceRequest &request)
{
    const TextMap config = textMap(request.contentType, request.body);
    m_keeper.ask([&](Keeper::Desk &desk) { desk.agent.replaceConfig(config, desk.clock.now()); });
    return done();
}

ServiceReply Service::registerDevice(const ServiceRequest &request)
{
    const std::string token = onlyText(request.contentType, request.body, "device_token");
    m_keeper.ask([&](Keeper::Desk &desk) { desk.store.addDevice(token, desk.clock.now()); });
    return done();
}

ServiceReply Service::statusPage()
{
    ServiceReply reply;
    reply.contentType = "text/html; charset=utf-8";
    reply.headers.emplace_back("Content-Security-Policy",
                               "default-src 'none'; style-src 'unsafe-inline'");
    reply.body = statusPageOf(m_keeper.ask([](Keeper::Desk &desk) {
        return StatusFacts{desk.store.dashboard(), desk.store.happenings(25),
                           desk.store.openQuestions(20), desk.store.devices().size(),
                           isoText(desk.clock.now())};
    }));
    return reply;
}

} // namespace trellisport::practice
