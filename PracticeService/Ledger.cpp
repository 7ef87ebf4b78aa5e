#include "PracticeService/Ledger.h"

#include "PracticeService/Columns.h"

namespace trellisport::practice {

namespace {

// A log that only grows would make the service slower by the day.
constexpr int keptLogs = 600;

const char *statementFor(Document document)
{
    switch (document) {
    case Document::ProjectNotes:
        return "UPDATE projects SET project_md = ?, updated_at = ? WHERE row = ?";
    case Document::Questionnaire:
        return "UPDATE projects SET questionnaire = ?, updated_at = ? WHERE row = ?";
    case Document::OwnerAnswers:
        return "UPDATE projects SET owner_answers = ?, updated_at = ? WHERE row = ?";
    case Document::DeliveryPlan:
        break;
    }
    return "UPDATE projects SET delivery_plan = ?, updated_at = ? WHERE row = ?";
}

} // namespace

Ledger::Ledger(Database &database, Random random)
    : m_database(database)
    , m_random(random)
{
}

Job Ledger::addProject(const NewProject &project, Moment now)
{
    const std::int64_t number = m_database.one("SELECT count(*) FROM projects").toLongLong() + 1;
    std::string reference = std::to_string(number);
    reference.insert(0, reference.size() < 4 ? 4 - reference.size() : 0, '0');
    Job job;
    job.id = newId();
    job.title = project.title;
    job.story = project.story;
    job.work = work::none;
    job.owner = project.owner;
    job.stageSince = now;
    m_database.run("INSERT INTO projects (id, ref_number, freelancer_project_id, title,"
                   " description, owner_username, created_at, updated_at, story, work, stage_since)"
                   " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                   job.id, "TP-" + reference, 38'000'000 + number * 1013 + m_random.between(0, 999),
                   job.title, project.description, job.owner, isoText(now), isoText(now), job.story,
                   job.work, isoText(now));
    job.row = m_database.lastRow();
    return job;
}

void Ledger::enterStage(Job &job, const char *stage, Moment now)
{
    job.status = stage;
    job.stageSince = now;
    m_database.run("UPDATE projects SET bid_status = ?, stage_since = ?, updated_at = ?"
                   " WHERE row = ?",
                   stage, isoText(now), isoText(now), job.row);
}

void Ledger::setWork(Job &job, const char *work)
{
    job.work = work;
    m_database.run("UPDATE projects SET work = ? WHERE row = ?", work, job.row);
}

void Ledger::setDocument(const Job &job, Document document, const std::string &text, Moment now)
{
    m_database.run(statementFor(document), text, isoText(now), job.row);
}

void Ledger::setBid(Job &job, std::optional<double> amount, Moment now)
{
    job.bidAmount = amount.value_or(0);
    m_database.run("UPDATE projects SET bid_amount = ?, updated_at = ? WHERE row = ?", amount,
                   isoText(now), job.row);
}

void Ledger::setRepository(Job &job, const std::string &url, Moment now)
{
    job.repository = url;
    m_database.run("UPDATE projects SET github_repo_url = ?, updated_at = ? WHERE row = ?", url,
                   isoText(now), job.row);
}

void Ledger::say(const Job &job, bool byAgent, const std::string &text, Moment now)
{
    m_database.run("INSERT INTO messages (project, id, sender, message_text, created_at)"
                   " VALUES (?, ?, ?, ?, ?)",
                   job.row, newId(), byAgent ? "agent" : "client", text, isoText(now));
}

void Ledger::addEvent(const Job &job, const char *type, const std::string &event,
                      const std::string &detail, Moment now)
{
    m_database.run("INSERT INTO timeline (project, time, event, detail, type)"
                   " VALUES (?, ?, ?, ?, ?)",
                   job.row, isoText(now), event,
                   detail.empty() ? std::optional<std::string>() : detail, type);
    m_database.run("UPDATE projects SET updated_at = ? WHERE row = ?", isoText(now), job.row);
}

void Ledger::log(const Job &job, const std::string &type, const std::string &content, Moment now)
{
    m_database.run("INSERT INTO logs (project, id, log_type, content, created_at)"
                   " VALUES (?, ?, ?, ?, ?)",
                   job.row, newId(), type, content, isoText(now));
    // Looked at now and then only; counting costs more than a few rows too many.
    if (m_random.chance(2)) {
        m_database.run("DELETE FROM logs WHERE project = ? AND row <= (SELECT row FROM logs"
                       " WHERE project = ? ORDER BY row DESC LIMIT 1 OFFSET ?)",
                       job.row, job.row, keptLogs);
    }
}

void Ledger::addBid(const Job &job, const BidInfo &bid, Moment now)
{
    m_database.run("INSERT INTO bids (project, bidder_id, username, display_name, country, rating,"
                   " reviews, amount, period, description, is_ours, placed_at)"
                   " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                   job.row, bid.bidderId, bid.username, bid.displayName, bid.country, bid.rating,
                   bid.reviews, bid.amount, bid.period, bid.description, bid.isOurs, isoText(now));
}

void Ledger::withdrawBid(const Job &job)
{
    m_database.run("DELETE FROM bids WHERE project = ? AND is_ours = 1", job.row);
}

void Ledger::addReport(const Job &job, const Report &report)
{
    std::optional<std::string> links;
    if (report.artifactLinks) {
        links.emplace();
        for (const Text &link : *report.artifactLinks)
            (*links += link.view()) += '\n';
    }
    m_database.run("INSERT INTO reports (project, id, report_date, commit_diff_summary,"
                   " claude_md_diff, artifact_links, created_at) VALUES (?, ?, ?, ?, ?, ?, ?)",
                   job.row, report.id, report.reportDate, report.commitDiffSummary,
                   report.claudeMdDiff, links, report.createdAt);
}

std::string Ledger::ask(const Job &job, const std::string &question, int minutes, Moment now)
{
    std::string id = newId();
    m_database.run("INSERT INTO decisions (project, id, question, status, timeout_minutes,"
                   " notified_at) VALUES (?, ?, ?, 'pending', ?, ?)",
                   job.row, id, question, minutes == 0 ? std::optional<int>() : minutes,
                   isoText(now));
    return id;
}

void Ledger::close(const std::string &decision, const char *status,
                   const std::optional<std::string> &answer, Moment now)
{
    m_database.run("UPDATE decisions SET status = ?, answer = ?, answered_at = ? WHERE id = ?",
                   status, answer, answer ? std::optional(isoText(now)) : std::nullopt, decision);
}

void Ledger::addHappening(const Job &job, const std::string &type, const std::string &text,
                          Moment now)
{
    m_database.run("INSERT INTO happenings (time, type, project_id, text) VALUES (?, ?, ?, ?)",
                   isoText(now), type, job.id, text);
    m_database.run("DELETE FROM happenings WHERE row <= last_insert_rowid() - 200");
}

} // namespace trellisport::practice
