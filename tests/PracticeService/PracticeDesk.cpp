#include "PracticeDesk.h"

namespace trellisport::practice {

PracticeDesk::PracticeDesk(double speed, int scale)
    : m_speed(speed)
    , m_scale(scale)
{
    open();
}

void PracticeDesk::open()
{
    Keeper::Setup setup;
    setup.file = m_folder.filePath(QStringLiteral("state.sqlite")).toStdString();
    setup.speed = m_speed;
    setup.scale = m_scale;
    setup.alerts = [this](const Alert &alert) { m_alerts.push_back(alert); };
    m_keeper = std::make_unique<Keeper>(std::move(setup));
    m_service = std::make_unique<Service>(*m_keeper, true);
}

void PracticeDesk::restart()
{
    m_service.reset();
    m_keeper.reset();
    open();
}

ServiceReply PracticeDesk::handle(const ServiceRequest &request)
{
    return m_service->handle(request);
}

ServiceReply PracticeDesk::send(const std::string &method, const std::string &path,
                                const std::string &body, const std::string &contentType)
{
    ServiceRequest request;
    request.method = method;
    request.path = path.substr(0, path.find('?'));
    request.contentType = contentType;
    request.body = body;
    std::string query = path.find('?') == std::string::npos ? "" : path.substr(path.find('?') + 1);
    while (!query.empty()) {
        const std::string pair = query.substr(0, query.find('&'));
        request.query.emplace(pair.substr(0, pair.find('=')), pair.substr(pair.find('=') + 1));
        query.erase(0, pair.size() + 1);
    }
    return handle(request);
}

PracticeDesk::Done PracticeDesk::happen(const std::string &event, const std::string &project)
{
    const ServiceReply reply = send("POST", "/control/tick?event=" + event +
                                                (project.empty() ? "" : "&project=" + project));
    if (reply.status != 200)
        return {};
    const auto told = decode<TextMap>(reply.body);
    return {told.at("project_id"), told.at("decision_id")};
}

std::vector<Project> PracticeDesk::inStage(const std::string &status)
{
    return read<std::vector<Project>>("/projects?status=" + status);
}

std::vector<PracticeDesk::Done> PracticeDesk::openDecisions()
{
    std::vector<Done> open;
    for (const Project &project : read<std::vector<Project>>("/projects")) {
        const std::string id(project.id.view());
        for (const Decision &decision :
             read<std::vector<Decision>>("/projects/" + id + "/decisions")) {
            if (decision.status == "pending") {
                open.push_back({id, std::string(decision.id.view())});
                break;
            }
        }
    }
    return open;
}

ServiceReply PracticeDesk::answer(const Done &decision, const std::string &text)
{
    return send("POST",
                "/api/v1/projects/" + decision.project + "/decisions/" + decision.decision +
                    "/answer",
                encode(TextMap{{"answer", text}}));
}

ServiceReply PracticeDesk::configure(const TextMap &changes)
{
    auto config = read<TextMap>("/config");
    for (const auto &[key, value] : changes)
        config[key] = value;
    return send("PUT", "/api/v1/config", encode(config));
}

std::vector<Alert> PracticeDesk::alerts()
{
    return m_keeper->ask([this](Keeper::Desk &) { return std::exchange(m_alerts, {}); });
}

} // namespace trellisport::practice
