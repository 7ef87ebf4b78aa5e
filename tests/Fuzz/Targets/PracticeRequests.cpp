#include "Fuzz/Targets/Must.h"
#include "PracticeService/Keeper.h"
#include "PracticeService/Service.h"
#include "ServiceAccess/RecordCoding.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

// One request to the practice service, in lines: method, path, content type, query (name=value
// pairs with & between), the tag that the asker has; then the body. "$p" and "$d" in the path stand
// for a project and a decision that there are.

namespace {

using namespace trellisport;
using namespace trellisport::practice;

/// Written texts and events fill the state: a new one from time to time keeps each run short.
constexpr int requestsToAState = 2000;

std::string_view takeLine(std::string_view &input)
{
    const std::size_t end = std::min(input.find('\n'), input.size());
    const std::string_view line = input.substr(0, end);
    input.remove_prefix(std::min(end + 1, input.size()));
    return line;
}

void replace(std::string &text, std::string_view mark, const std::string &by)
{
    for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos; at += by.size()) {
        text.replace(at, mark.size(), by);
    }
}

class Desk {
public:
    Desk()
        : m_keeper({m_folder.filePath(QStringLiteral("state.sqlite")).toStdString(), 1, 1, 0})
        , m_service(m_keeper, true)
    {
        for (const Project &project : read<std::vector<Project>>("/projects")) {
            const std::string id(project.id.view());
            const auto decisions = read<std::vector<Decision>>("/projects/" + id + "/decisions");
            if (!decisions.empty()) {
                m_project = id;
                m_decision = std::string(decisions.front().id.view());
            }
        }
        m_projects = projectCount();
    }

    void handle(std::string_view input)
    {
        ServiceRequest request;
        request.method = takeLine(input);
        request.path = takeLine(input);
        replace(request.path, "$p", m_project);
        replace(request.path, "$d", m_decision);
        request.contentType = takeLine(input);
        std::string_view query = takeLine(input);
        while (!query.empty()) {
            const std::string_view pair = query.substr(0, query.find('&'));
            query.remove_prefix(std::min(pair.size() + 1, query.size()));
            const std::string_view name = pair.substr(0, pair.find('='));
            request.query.emplace(name, pair.substr(std::min(name.size() + 1, pair.size())));
        }
        request.ifNoneMatch = takeLine(input);
        request.body = input;
        if (request.path.starts_with("/control/fault")) {
            return; // an ordered fault is no fault
        }
        const ServiceReply reply = m_service.handle(request);
        endTrouble();
        check(request, reply);
    }

private:
    /// Nor is trouble that was ordered.
    void endTrouble()
    {
        ServiceRequest request;
        request.method = "POST";
        request.path = "/control/trouble";
        request.query.emplace("one_of", "0");
        must(m_service.handle(request).status == 200, "trouble can be ended");
    }
    template <typename T>
    T read(const std::string &path)
    {
        ServiceRequest request;
        request.method = "GET";
        request.path = "/api/v1" + path;
        ServiceReply reply = m_service.handle(request);
        must(reply.status == 200, "what a console reads is there");
        return decode<T>(std::move(reply.body));
    }
    std::size_t projectCount() { return read<std::vector<Project>>("/projects").size(); }

    void check(const ServiceRequest &request, const ServiceReply &reply)
    {
        must(reply.status >= 200 && reply.status < 500, "no request makes the service fail");
        const bool isWrite = request.method == "POST" || request.method == "PUT";
        if (reply.status >= 400) {
            must(decode<TextMap>(reply.body).contains("error"), "a refusal says why");
        } else if (isWrite) {
            must(decode<TextMap>(reply.body).contains("status"), "a write that is taken says so");
        }
        if (reply.status == 200 && request.method == "PUT") {
            must(read<TextMap>("/config") == decode<TextMap>(request.body),
                 "settings are stored whole");
        }
        checkState();
    }

    /// All that a console may ask for about the project can still be read.
    void checkState()
    {
        static constexpr std::array parts{"messages", "decisions", "bids",
                                          "timeline", "logs",      "reports"};
        (void)read<DashboardData>("/dashboard");
        const std::string path = "/projects/" + m_project;
        must(read<ProjectDetail>(path).id == m_project, "the project is still there");
        switch (m_checks++ % parts.size()) {
        case 0:
            (void)read<std::vector<Message>>(path + "/messages");
            break;
        case 1:
            (void)read<std::vector<Decision>>(path + "/decisions");
            break;
        case 2:
            (void)read<std::vector<BidInfo>>(path + "/bids");
            break;
        case 3:
            (void)read<std::vector<TimelineEvent>>(path + "/timeline");
            break;
        case 4:
            (void)read<std::vector<DevLog>>(path + "/logs");
            break;
        default:
            (void)read<std::vector<Report>>(path + "/reports");
            must(projectCount() >= m_projects, "no request takes a project away");
        }
    }

    QTemporaryDir m_folder;
    Keeper m_keeper;
    Service m_service;
    std::string m_project;
    std::string m_decision;
    std::size_t m_projects = 0;
    std::size_t m_checks = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static int argumentCount = 1;
    static std::array<char, 5> name{"fuzz"};
    static char *arguments = name.data();
    static const QCoreApplication application(argumentCount, &arguments);
    // Made at once, so that what the databases need lives longer.
    static auto desk = std::make_unique<Desk>();
    static int requests = 0;
    if (++requests % requestsToAState == 0) {
        desk.reset();
        desk = std::make_unique<Desk>();
    }
    desk->handle({reinterpret_cast<const char *>(data), size});
    return 0;
}
