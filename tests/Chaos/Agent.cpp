#include "Chaos/Agent.h"

#include "ServiceAccess/RecordCoding.h"

#include <exception>
#include <variant>

namespace trellisport::chaos {

namespace {

platform::UserInfoValue text(std::string value)
{
    return {std::move(value)};
}

/// The notification that goes with an event; empty when none does.
std::string notificationType(const std::string &event)
{
    if (event == "decision") {
        return "decision_needed";
    }
    if (event == "award") {
        return "project_awarded";
    }
    return event == "error" ? "dev_error" : std::string();
}

} // namespace

Agent::Agent(ChaosPlatform &platform)
    : m_platform(platform)
{
    const std::string base = platform.environment().variable("TRELLISPORT_BASE_URL").value_or("");
    m_control = base.substr(0, base.find("/api/v1")) + "/control/";
}

void Agent::happen(const std::string &event, const std::string &project, bool opened)
{
    std::string url = m_control + "tick?event=" + event;
    if (!project.empty()) {
        url += "&project=" + project;
    }
    const auto tell = [this, event, opened,
                       happened = m_happened](const platform::HttpResult &result) {
        const auto *reply = std::get_if<platform::HttpReply>(&result);
        if (reply == nullptr || reply->status != 200) {
            return; // nothing of the kind can happen now
        }
        const auto done = decode<TextMap>(reply->body);
        ++*happened;
        const std::string type = notificationType(event);
        if (!type.empty()) {
            m_platform.notifications().deliver({{"type", text(type)},
                                                {"project_id", text(done.at("project_id"))},
                                                {"decision_id", text(done.at("decision_id"))}},
                                               opened);
        }
    };
    m_exchange = m_platform.ownSession().send({"POST", url, {}, ""}, tell);
}

void Agent::deliverNonsense(unsigned kind, bool opened)
{
    platform::UserInfo info;
    switch (kind % 5) {
    case 0:
        break;
    case 1:
        info = {{"type", {42.0}}, {"project_id", {true}}};
        break;
    case 2:
        info = {{"type", text("decision_needed")}, {"project_id", text("nobody/../?#")}};
        break;
    case 3:
        info = {{"type", text(std::string(100'000, 'x'))}, {"project_id", text("\xff\xfe")}};
        break;
    default:
        info = {{"type", text("dev_error")}};
        break;
    }
    m_platform.notifications().deliver(std::move(info), opened);
}

} // namespace trellisport::chaos
