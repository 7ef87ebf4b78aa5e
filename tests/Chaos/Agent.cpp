#include "Chaos/Agent.h"

#include "Chaos/Spin.h"
#include "ServiceAccess/RecordCoding.h"

#include <chrono>
#include <future>
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
    const auto tell = [this, event, opened, happened = m_happened,
                       ended = m_ended](const platform::HttpResult &result) {
        const auto *reply = std::get_if<platform::HttpReply>(&result);
        if (reply == nullptr || reply->status != 200) {
            ++*ended;
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
        ++*ended;
    };
    m_exchange = m_platform.ownSession().send({"POST", url, {}, ""}, tell);
}

std::string Agent::ask(const std::string &method, const std::string &url)
{
    auto answer = std::make_shared<std::promise<std::string>>();
    std::future<std::string> body = answer->get_future();
    const auto exchange = m_platform.ownSession().send(
        {method, url, {}, {}}, [answer](const platform::HttpResult &result) {
            const auto *reply = std::get_if<platform::HttpReply>(&result);
            answer->set_value(reply != nullptr && reply->status == 200 ? reply->body
                                                                       : std::string());
        });
    const bool came =
        await([&] { return body.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
    return came ? body.get() : std::string();
}

std::string Agent::endTrouble()
{
    std::string troubles = ask("GET", m_control + "troubles");
    return ask("POST", m_control + "trouble?one_of=0").empty() ? std::string() : troubles;
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
