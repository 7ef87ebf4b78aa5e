// The ledger's look-ups.
#include "PracticeService/Columns.h"
#include "PracticeService/Ledger.h"

namespace trellisport::practice {

namespace {

Job jobOf(const QSqlQuery &row)
{
    Job job;
    job.row = row.value(0).toLongLong();
    job.id = textAt(row, 1);
    job.title = textAt(row, 2);
    job.status = textAt(row, 3);
    job.story = textAt(row, 4);
    job.work = textAt(row, 5);
    job.owner = textAt(row, 6);
    job.repository = textAt(row, 7);
    job.bidAmount = row.value(8).toDouble();
    job.stageSince = momentOf(textAt(row, 9)).value_or(Moment());
    return job;
}

PendingDecision pendingOf(const QSqlQuery &row)
{
    PendingDecision decision;
    decision.id = textAt(row, 0);
    decision.project = row.value(1).toLongLong();
    decision.question = textAt(row, 2);
    const auto asked = momentOf(textAt(row, 4));
    if (asked && !row.value(3).isNull())
        decision.expires = *asked + std::chrono::minutes(row.value(3).toLongLong());
    return decision;
}

} // namespace

template <typename Value>
std::vector<Job> Ledger::jobsWhere(const char *sql, const Value &value, int limit)
{
    std::vector<Job> jobs;
    m_database.each(
        sql, [&](const QSqlQuery &row) { jobs.push_back(jobOf(row)); }, value, limit);
    return jobs;
}

std::vector<Job> Ledger::jobsIn(const char *stage, int limit)
{
    return jobsWhere("SELECT row, id, title, bid_status, story, work, owner_username,"
                     " github_repo_url, bid_amount, stage_since FROM projects"
                     " WHERE bid_status = ? ORDER BY stage_since, row LIMIT ?",
                     stage, limit);
}

std::vector<Job> Ledger::jobsWith(const char *work, int limit)
{
    return jobsWhere("SELECT row, id, title, bid_status, story, work, owner_username,"
                     " github_repo_url, bid_amount, stage_since FROM projects"
                     " WHERE work = ? ORDER BY stage_since, row LIMIT ?",
                     work, limit);
}

std::optional<Job> Ledger::job(std::int64_t row)
{
    const auto found = jobsWhere("SELECT row, id, title, bid_status, story, work, owner_username,"
                                 " github_repo_url, bid_amount, stage_since FROM projects"
                                 " WHERE row = ? LIMIT ?",
                                 row, 1);
    return found.empty() ? std::nullopt : std::optional(found.front());
}

std::optional<Job> Ledger::job(const std::string &id)
{
    const auto found = jobsWhere("SELECT row, id, title, bid_status, story, work, owner_username,"
                                 " github_repo_url, bid_amount, stage_since FROM projects"
                                 " WHERE id = ? LIMIT ?",
                                 id, 1);
    return found.empty() ? std::nullopt : std::optional(found.front());
}

std::int64_t Ledger::countIn(const char *stage)
{
    return m_database.one("SELECT count(*) FROM projects WHERE bid_status = ?", stage).toLongLong();
}

std::int64_t Ledger::countWith(const char *work)
{
    return m_database.one("SELECT count(*) FROM projects WHERE work = ?", work).toLongLong();
}

std::int64_t Ledger::bidsOn(const Job &job)
{
    return m_database.one("SELECT count(*) FROM bids WHERE project = ?", job.row).toLongLong();
}

std::optional<PendingDecision> Ledger::pendingDecision(const std::string &id)
{
    std::optional<PendingDecision> found;
    m_database.each(
        "SELECT id, project, question, timeout_minutes, notified_at FROM decisions"
        " WHERE id = ? AND status = 'pending'",
        [&](const QSqlQuery &row) { found = pendingOf(row); }, id);
    return found;
}

std::vector<PendingDecision> Ledger::pendingDecisions(int limit)
{
    std::vector<PendingDecision> decisions;
    m_database.each(
        "SELECT id, project, question, timeout_minutes, notified_at FROM decisions"
        " WHERE status = 'pending' ORDER BY row LIMIT ?",
        [&](const QSqlQuery &row) { decisions.push_back(pendingOf(row)); }, limit);
    return decisions;
}

bool Ledger::hasPendingDecision(const Job &job)
{
    return m_database
        .one("SELECT 1 FROM decisions WHERE project = ? AND status = 'pending' LIMIT 1", job.row)
        .isValid();
}

std::optional<Moment> Ledger::lastLog(const Job &job)
{
    return momentOf(
        m_database
            .one("SELECT created_at FROM logs WHERE project = ? ORDER BY row DESC LIMIT 1", job.row)
            .toString()
            .toStdString());
}

bool Ledger::hasTitle(const std::string &title)
{
    return m_database.one("SELECT 1 FROM projects WHERE title = ?", title).isValid();
}

bool Ledger::wasSaid(const Job &job, const std::string &text)
{
    return m_database
        .one("SELECT 1 FROM messages WHERE project = ? AND message_text = ?", job.row, text)
        .isValid();
}

std::int64_t Ledger::decisionsOf(const Job &job)
{
    return m_database.one("SELECT count(*) FROM decisions WHERE project = ?", job.row).toLongLong();
}

std::optional<std::string> Ledger::statusOfDecision(const Job &job, const std::string &decision)
{
    const QVariant status = m_database.one(
        "SELECT status FROM decisions WHERE project = ? AND id = ?", job.row, decision);
    return status.isValid() ? std::optional(status.toString().toStdString()) : std::nullopt;
}

std::int64_t Ledger::ourBidsSince(Moment start)
{
    return m_database
        .one("SELECT count(*) FROM bids WHERE is_ours = 1 AND placed_at >= ?", isoText(start))
        .toLongLong();
}

double Ledger::earnedSince(Moment start)
{
    return m_database
        .one("SELECT coalesce(sum(bid_amount), 0) FROM projects"
             " WHERE bid_status = 'completed' AND stage_since >= ?",
             isoText(start))
        .toDouble();
}

bool Ledger::hasReport(const Job &job, const std::string &day)
{
    return m_database
        .one("SELECT 1 FROM reports WHERE project = ? AND report_date = ?", job.row, day)
        .isValid();
}

std::int64_t Ledger::countOf(const Job &job, const char *logType)
{
    return m_database
        .one("SELECT count(*) FROM logs WHERE project = ? AND log_type = ?", job.row, logType)
        .toLongLong();
}

} // namespace trellisport::practice
