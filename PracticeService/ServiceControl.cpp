// The paths for tests.
#include "PracticeService/Service.h"

#include "ServiceAccess/RecordCoding.h"

#include <QString>

#include <charconv>
#include <map>
#include <optional>

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

/// What a fault is to be; nothing when there is no such kind. Without a kind, a status decides.
std::optional<Fault::Kind> faultKind(const std::optional<std::string> &name, int status)
{
    static const std::map<std::string, Fault::Kind, std::less<>> kinds{
        {"drop", Fault::Kind::Drop},
        {"reset", Fault::Kind::Reset},
        {"cut", Fault::Kind::Cut},
        {"slow", Fault::Kind::Slow},
        {"garbage", Fault::Kind::Garbage}};
    if (!name)
        return status == 0 ? Fault::Kind::Late : Fault::Kind::Status;
    const auto found = kinds.find(*name);
    return found == kinds.end() ? std::nullopt : std::optional(found->second);
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
    static const std::map<std::string, std::string, std::less<>> methods{
        {"devices", "GET"},  {"writes", "GET"}, {"troubles", "GET"}, {"tick", "POST"},
        {"advance", "POST"}, {"fault", "POST"}, {"trouble", "POST"}};
    const auto known = path.size() == 2 ? methods.find(path[1]) : methods.end();
    if (known == methods.end())
        return refusal(404, "There is nothing under this path.");
    if (request.method != known->second)
        return refusal(405, "Only " + known->second + " is possible here.");
    if (path[1] == "devices") {
        TextMap tokens;
        for (const std::string &token :
             m_keeper.ask([](Keeper::Desk &desk) { return desk.store.devices(); }))
            tokens.emplace(std::to_string(tokens.size()), token);
        return texts(tokens);
    }
    if (path[1] == "tick")
        return tick(request);
    if (path[1] == "advance")
        return advance(request);
    if (path[1] == "trouble")
        return beginTrouble(request);
    if (path[1] == "troubles")
        return texts(m_trouble.counts());
    return path[1] == "writes" ? writes() : addFault(request);
}

ServiceReply Service::advance(const ServiceRequest &request)
{
    const auto by = queryNumber(request, "seconds", 0, 1, 1'000'000);
    if (!by)
        return refusal(422, "seconds must be a number from 1 to 1000000.");
    m_keeper.ask([&](Keeper::Desk &desk) {
        desk.clock.advance(seconds(*by));
        desk.agent.advance(desk.clock.now());
    });
    return texts({{"status", "ok"}});
}

ServiceReply Service::addFault(const ServiceRequest &request)
{
    const auto target = queryText(request, "path");
    const auto status = queryNumber(request, "status", 0, 200, 599);
    const auto delay = queryNumber(request, "delay_ms", 0, 0, 120'000);
    const auto times = queryNumber(request, "times", 1, 1, 1'000'000);
    const auto kind = faultKind(queryText(request, "kind"), status.value_or(0));
    if (!target || !status || !delay || !times || !kind)
        return refusal(422,
                       "A fault needs a path, a kind that exists, and numbers that make sense.");
    m_faults.add({*target, *kind, *status, std::chrono::milliseconds(*delay), *times});
    return texts({{"status", "ok"}});
}

ServiceReply Service::beginTrouble(const ServiceRequest &request)
{
    const auto seed = queryNumber(request, "seed", 1, 0, 1'000'000'000);
    const auto oneOf = queryNumber(request, "one_of", 5, 0, 1'000'000);
    const auto silence = queryNumber(request, "silence_ms", 60'000, 0, 120'000);
    if (!seed || !oneOf || !silence)
        return refusal(422, "Trouble needs numbers that make sense.");
    m_trouble.begin(static_cast<std::uint64_t>(*seed), *oneOf, std::chrono::milliseconds(*silence));
    return texts({{"status", "ok"}});
}

ServiceReply Service::writes()
{
    const std::lock_guard lock(m_writesMutex);
    TextMap map;
    for (const std::string &write : m_writes) {
        // A body may hold anything; what is no UTF-8 is told by replacement characters.
        map.emplace(std::to_string(map.size()), QString::fromStdString(write).toStdString());
    }
    return texts(map);
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
