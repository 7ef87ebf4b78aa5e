#include "Support/Bodies.h"

#include <array>
#include <cstdint>
#include <random>

namespace trellisport::bench {

namespace {

constexpr std::array words{
    "the",    "report",   "client", "invoice", "scan",  "payment",  "build", "tests", "passed",
    "parser", "schedule", "route",  "catalog", "fixed", "delivery", "größe", "for",   "with",
    "small",  "mobile",   "shop",   "deploy",  "error", "retry",    "naïve", "queue", "of",
};
constexpr std::array logTypes{"tool_call", "tool_result", "claude_response", "error", "info"};
constexpr std::array stages{"discovered", "questions_sent", "answers_received", "plan_sent",
                            "bid_placed", "awarded",        "rejected",         "completed"};
constexpr std::size_t decodingRoom = 64;

/// Writes the members of JSON objects; the texts are made of words drawn by chance.
class Writer {
public:
    explicit Writer(std::size_t expectedSize) { m_json.reserve(expectedSize + decodingRoom); }

    void raw(std::string_view json) { m_json += json; }
    void key(std::string_view key)
    {
        if (m_json.back() != '{') {
            m_json += ',';
        }
        m_json.append("\"").append(key).append("\":");
    }
    void member(std::string_view name, std::string_view text)
    {
        key(name);
        m_json.append("\"").append(text).append("\"");
    }
    void number(std::string_view name, std::size_t value)
    {
        key(name);
        m_json += std::to_string(value);
    }
    /// A text of about so many bytes; every few words a line ends when it has lines.
    void words(std::string_view name, std::size_t bytes, bool hasLines)
    {
        key(name);
        m_json += '"';
        const std::size_t end = m_json.size() + bytes;
        for (std::size_t count = 1; m_json.size() < end; ++count) {
            m_json += bench::words.at(draw(bench::words.size()));
            m_json += hasLines && count % 9 == 0 ? "\\n" : count % 31 == 0 ? " \\\"it\\\" " : " ";
        }
        m_json += "end\"";
    }
    void time(std::string_view name, std::size_t number)
    {
        const auto two = [](std::size_t value) {
            return std::string(value < 10 ? "0" : "") + std::to_string(value);
        };
        member(name, "2026-03-" + two(1 + number / 86400 % 28) + "T" + two(number / 3600 % 24) +
                         ":" + two(number / 60 % 60) + ":" + two(number % 60) + ".123456Z");
    }
    /// As many objects as wanted, each written by write(number).
    template <typename Write>
    void list(std::size_t count, const Write &write)
    {
        raw("[");
        for (std::size_t number = 0; number < count; ++number) {
            raw(number == 0 ? "{" : ",{");
            write(number);
            raw("}");
        }
        raw("]");
    }
    [[nodiscard]] std::size_t draw(std::size_t below) { return m_random() % below; }
    [[nodiscard]] std::string take() { return std::move(m_json); }

private:
    std::string m_json;
    std::mt19937 m_random{20260301}; // NOLINT(cert-msc51-cpp): the same in every run
};

std::string logs(std::size_t count, std::size_t contentBytes)
{
    Writer json(count * (contentBytes + 180) + 2);
    json.list(count, [&](std::size_t number) {
        json.member("id", "log-" + std::to_string(100000 + number));
        json.member("log_type", logTypes.at(number % logTypes.size()));
        json.words("content", contentBytes / 2 + json.draw(contentBytes), contentBytes > 1000);
        json.time("created_at", number * 7);
    });
    return json.take();
}

void writeProject(Writer &json, std::size_t number)
{
    json.member("id", "project-" + std::to_string(number));
    json.member("ref_number", "TR-" + std::to_string(10000 + number));
    json.number("freelancer_project_id", 38000000 + number);
    json.words("title", 20 + json.draw(50), false);
    json.words("description", 80 + json.draw(80), false);
    json.number("bid_amount", 100 + json.draw(4000));
    json.member("bid_status", stages.at(json.draw(stages.size())));
    json.member("owner_username", "client_" + std::to_string(number % 977));
    json.time("created_at", number * 61);
    json.time("updated_at", number * 61 + 900);
}

std::string numberedLines(std::size_t count, std::string_view line)
{
    std::string text;
    for (std::size_t number = 1; number <= count; ++number) {
        text.append(std::to_string(number)).append(". ").append(line).append("\n");
    }
    return text;
}

} // namespace

std::string shortLogs(std::size_t count)
{
    return logs(count, 95);
}

std::string longLogs(std::size_t count)
{
    return logs(count, 1640);
}

std::string oneLog(std::size_t bytes)
{
    Writer json(bytes + 1024);
    json.list(1, [&](std::size_t /*number*/) {
        json.member("id", "log-1");
        json.member("log_type", "tool_result");
        json.words("content", bytes, true);
        json.time("created_at", 1);
    });
    return json.take();
}

std::string projects(std::size_t count)
{
    Writer json(count * 420 + 2);
    json.list(count, [&](std::size_t number) { writeProject(json, number); });
    return json.take();
}

std::string messages(std::size_t count)
{
    Writer json(count * 360 + 2);
    json.list(count, [&](std::size_t number) {
        json.member("id", "message-" + std::to_string(number));
        json.member("sender", number % 2 == 0 ? "agent" : "client_7");
        json.words("message_text", 20 + json.draw(380), false);
        json.time("created_at", number * 600);
    });
    return json.take();
}

std::string oneReport(std::size_t bytes)
{
    Writer json(bytes + 1024);
    json.list(1, [&](std::size_t /*number*/) {
        json.member("id", "report-1");
        json.member("report_date", "2026-03-01");
        json.words("commit_diff_summary", 300, true);
        json.words("claude_md_diff", bytes, true);
        json.time("created_at", 1);
    });
    return json.take();
}

std::string project()
{
    Writer json(1024);
    json.raw("{");
    writeProject(json, 1);
    json.raw("}");
    return json.take();
}

std::string dashboard()
{
    return R"({"status_counts":{"discovered":31,"questions_sent":4,"answers_received":3,)"
           R"("plan_sent":2,"bid_placed":7,"awarded":3,"rejected":12,"completed":9},)"
           R"("bids_pending":4350.0,"total_earned":18240.5,"pending_decisions":2})";
}

std::string questions(std::size_t count)
{
    return numberedLines(count, "Which of the two layouts should the small shop's report follow?");
}

std::string answers(std::size_t count)
{
    return numberedLines(count, "The first one, please.\nIt is what our clients know.");
}

std::string received(std::string_view body)
{
    std::string copy;
    copy.reserve(body.size() + decodingRoom);
    copy += body;
    return copy;
}

} // namespace trellisport::bench
