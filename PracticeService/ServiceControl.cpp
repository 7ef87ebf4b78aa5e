// The paths for tests.
#include "PracticeService/Service.h"

#include "ServiceAccess/RecordCoding.h"

#include <charconv>
#include <optional>
#include <set>

namespace trellisport::practice {

namespace {

std::optional<std::string> queryText(const ServiceRequest &request, const char *key)
{
    const auto found = request.query.find(key);
    return found == request.query.end() ? std::nullopt : std::optional(found->second);
}

/// The query's number, or the fallback when the key is missing; nothing when it is no number.
std::optional<int> queryNumber(const ServiceRequest &request, const char *key, int fallback,
                               int low, int high)
{
    const auto text = queryText(request, key);
    if (!text)
        return fallback;
    int number = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
    if (error != std::errc() || end != text->data() + text->size() || number < low || number > high)
        return std::nullopt;
    return number;
}

ServiceReply texts(const TextMap &map)
{
    ServiceReply reply;
    reply.body = encode(map);
    return reply;
}

} // namespace

ServiceReply Service::routeControl(const ServiceRequest &request, const Segments &path)
{
    static const std::set<std::string, std::less<>> known{"devices", "tick", "advance", "fault"};
    if (path.size() != 2 || !known.contains(path[1]))
        return refusal(404, "There is nothing under this path.");
    const std::string method = path[1] == "devices" ? "GET" : "POST";
    if (request.method != method)
        return refusal(405, "Only " + method + " is possible here.");
    if (path[1] == "devices") {
        TextMap tokens;
        for (const std::string &token :
             m_keeper.ask([](Keeper::Desk &desk) { return desk.store.devices(); }))
            tokens.emplace(std::to_string(tokens.size()), token);
        return texts(tokens);
    }
    if (path[1] == "tick")
        return tick(request);
    if (path[1] == "advance") {
        const auto by = queryNumber(request, "seconds", 0, 1, 1'000'000);
        if (!by)
            return refusal(422, "seconds must be a number from 1 to 1000000.");
        m_keeper.ask([&](Keeper::Desk &desk) {
            desk.clock.advance(seconds(*by));
            desk.agent.advance(desk.clock.now());
        });
        return texts({{"status", "ok"}});
    }
    const auto target = queryText(request, "path");
    const auto status = queryNumber(request, "status", 0, 200, 599);
    const auto delay = queryNumber(request, "delay_ms", 0, 0, 120'000);
    const auto times = queryNumber(request, "times", 1, 1, 1'000'000);
    if (!target || !status || !delay || !times)
        return refusal(422, "A fault needs a path, and numbers that make sense.");
    m_faults.add({*target, *status, std::chrono::milliseconds(*delay), *times});
    return texts({{"status", "ok"}});
}

ServiceReply Service::tick(const ServiceRequest &request)
{
    const std::string event = queryText(request, "event").value_or(std::string());
    if (!Agent::isEvent(event))
        return refusal(422, "There is no such event.");
    const auto done = m_keeper.ask([&](Keeper::Desk &desk) {
        return desk.agent.perform(event, queryText(request, "project"), desk.clock.now());
    });
    if (!done)
        return refusal(409, "No project is in a state for this, or the settings forbid it.");
    return texts(
        {{"status", "ok"}, {"project_id", done->projectId}, {"decision_id", done->decisionId}});
}

} // namespace trellisport::practice
