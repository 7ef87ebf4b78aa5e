#include "PracticeService/Store.h"

#include "PracticeService/Columns.h"
#include "PracticeService/Schema.h"

#include <QStringList>

namespace trellisport::practice {

namespace {

// What stands between the links of a report in its one column.
constexpr char16_t linkSeparator = u'\n';

OptionalTextList linksAt(const QSqlQuery &row, int column)
{
    const QVariant value = row.value(column);
    if (value.isNull())
        return {};
    std::vector<Text> links;
    for (const QString &link : value.toString().split(QChar(linkSeparator), Qt::SkipEmptyParts))
        links.emplace_back(link.toStdString());
    return links;
}

Project listed(const QSqlQuery &row)
{
    return Project{.id = textAt(row, 0),
                   .refNumber = optionalTextAt(row, 1),
                   .freelancerProjectId = optionalIntegerAt(row, 2),
                   .title = textAt(row, 3),
                   .description = optionalTextAt(row, 4),
                   .bidAmount = optionalNumberAt(row, 5),
                   .bidStatus = optionalTextAt(row, 6),
                   .ownerUsername = optionalTextAt(row, 7),
                   .githubRepoUrl = optionalTextAt(row, 8),
                   .createdAt = optionalTextAt(row, 9),
                   .updatedAt = optionalTextAt(row, 10)};
}

} // namespace

Store::Store(const std::filesystem::path &file)
    : m_database(file)
{
    ensureSchema(m_database);
}

bool Store::isFilled()
{
    return m_database.one("SELECT 1 FROM projects LIMIT 1").isValid();
}

DashboardData Store::dashboard()
{
    CountMap counts;
    m_database.each(
        "SELECT bid_status, count(*) FROM projects WHERE bid_status IS NOT NULL"
        " GROUP BY bid_status",
        [&](const QSqlQuery &row) { counts.emplace(textAt(row, 0), row.value(1).toLongLong()); });
    const auto sum = [&](const char *status) {
        return m_database
            .one("SELECT coalesce(sum(bid_amount), 0) FROM projects WHERE bid_status = ?", status)
            .toDouble();
    };
    return DashboardData{
        .statusCounts = counts,
        .bidsPending = sum("bid_placed"),
        .totalEarned = sum("completed"),
        .pendingDecisions =
            m_database.one("SELECT count(*) FROM decisions WHERE status = 'pending'").toLongLong()};
}

std::vector<Project> Store::projects(const std::optional<std::string> &status)
{
    std::vector<Project> projects;
    const auto collect = [&](const QSqlQuery &row) { projects.push_back(listed(row)); };
    if (status) {
        m_database.each("SELECT id, ref_number, freelancer_project_id, title, description,"
                        " bid_amount, bid_status, owner_username, github_repo_url, created_at,"
                        " updated_at FROM projects WHERE bid_status = ?"
                        " ORDER BY updated_at DESC, row DESC",
                        collect, *status);
    } else {
        m_database.each("SELECT id, ref_number, freelancer_project_id, title, description,"
                        " bid_amount, bid_status, owner_username, github_repo_url, created_at,"
                        " updated_at FROM projects ORDER BY updated_at DESC, row DESC",
                        collect);
    }
    return projects;
}

std::optional<ProjectDetail> Store::project(const std::string &id)
{
    std::optional<ProjectDetail> project;
    m_database.each(
        "SELECT id, ref_number, freelancer_project_id, title, description, project_md,"
        " delivery_plan, questionnaire, owner_answers, bid_amount, bid_status, owner_username,"
        " github_repo_url, created_at, updated_at FROM projects WHERE id = ?",
        [&](const QSqlQuery &row) {
            project.emplace(ProjectDetail{.id = textAt(row, 0),
                                          .refNumber = optionalTextAt(row, 1),
                                          .freelancerProjectId = optionalIntegerAt(row, 2),
                                          .title = textAt(row, 3),
                                          .description = optionalTextAt(row, 4),
                                          .projectMd = optionalTextAt(row, 5),
                                          .deliveryPlan = optionalTextAt(row, 6),
                                          .questionnaire = optionalTextAt(row, 7),
                                          .ownerAnswers = optionalTextAt(row, 8),
                                          .bidAmount = optionalNumberAt(row, 9),
                                          .bidStatus = optionalTextAt(row, 10),
                                          .ownerUsername = optionalTextAt(row, 11),
                                          .githubRepoUrl = optionalTextAt(row, 12),
                                          .createdAt = optionalTextAt(row, 13),
                                          .updatedAt = optionalTextAt(row, 14)});
        },
        id);
    return project;
}

/// The records of one project; absent when there is no such project.
template <typename Record, typename Make>
std::optional<std::vector<Record>> Store::listOf(const std::string &project, const char *sql,
                                                 const Make &make)
{
    const QVariant owner = m_database.one("SELECT row FROM projects WHERE id = ?", project);
    if (!owner.isValid())
        return std::nullopt;
    std::vector<Record> records;
    m_database.each(
        sql, [&](const QSqlQuery &row) { records.push_back(make(row)); }, owner.toLongLong());
    return records;
}

std::optional<std::vector<Message>> Store::messages(const std::string &project)
{
    return listOf<Message>(
        project,
        "SELECT id, sender, message_text, created_at FROM messages WHERE project = ? ORDER BY row",
        [](const QSqlQuery &row) {
            return Message{.id = textAt(row, 0),
                           .sender = textAt(row, 1),
                           .messageText = textAt(row, 2),
                           .createdAt = textAt(row, 3)};
        });
}

std::optional<std::vector<Decision>> Store::decisions(const std::string &project)
{
    return listOf<Decision>(project,
                            "SELECT id, question, answer, status, timeout_minutes, notified_at,"
                            " answered_at FROM decisions WHERE project = ? ORDER BY row DESC",
                            [](const QSqlQuery &row) {
                                return Decision{.id = textAt(row, 0),
                                                .question = textAt(row, 1),
                                                .answer = optionalTextAt(row, 2),
                                                .status = textAt(row, 3),
                                                .timeoutMinutes = optionalIntegerAt(row, 4),
                                                .notifiedAt = optionalTextAt(row, 5),
                                                .answeredAt = optionalTextAt(row, 6)};
                            });
}

std::optional<std::vector<BidInfo>> Store::bids(const std::string &project)
{
    return listOf<BidInfo>(
        project,
        "SELECT bidder_id, username, display_name, country, rating, reviews, amount,"
        " period, description, is_ours FROM bids WHERE project = ? ORDER BY row",
        [](const QSqlQuery &row) {
            const QVariant ours = row.value(9);
            return BidInfo{.bidderId = optionalIntegerAt(row, 0),
                           .username = optionalTextAt(row, 1),
                           .displayName = optionalTextAt(row, 2),
                           .country = optionalTextAt(row, 3),
                           .rating = optionalNumberAt(row, 4),
                           .reviews = optionalIntegerAt(row, 5),
                           .amount = optionalNumberAt(row, 6),
                           .period = optionalIntegerAt(row, 7),
                           .description = optionalTextAt(row, 8),
                           .isOurs = ours.isNull() ? OptionalBoolean()
                                                   : OptionalBoolean(ours.toInt() != 0)};
        });
}

std::optional<std::vector<TimelineEvent>> Store::timeline(const std::string &project)
{
    return listOf<TimelineEvent>(
        project, "SELECT time, event, detail, type FROM timeline WHERE project = ? ORDER BY row",
        [](const QSqlQuery &row) {
            return TimelineEvent{.time = optionalTextAt(row, 0),
                                 .event = textAt(row, 1),
                                 .detail = optionalTextAt(row, 2),
                                 .type = optionalTextAt(row, 3)};
        });
}

std::optional<std::vector<DevLog>> Store::logs(const std::string &project)
{
    return listOf<DevLog>(
        project,
        "SELECT id, log_type, content, created_at FROM logs WHERE project = ? ORDER BY row DESC",
        [](const QSqlQuery &row) {
            return DevLog{.id = textAt(row, 0),
                          .logType = textAt(row, 1),
                          .content = textAt(row, 2),
                          .createdAt = optionalTextAt(row, 3)};
        });
}

std::optional<std::vector<Report>> Store::reports(const std::string &project)
{
    return listOf<Report>(
        project,
        "SELECT id, report_date, commit_diff_summary, claude_md_diff, artifact_links,"
        " created_at FROM reports WHERE project = ? ORDER BY row DESC",
        [](const QSqlQuery &row) {
            return Report{.id = textAt(row, 0),
                          .reportDate = optionalTextAt(row, 1),
                          .commitDiffSummary = optionalTextAt(row, 2),
                          .claudeMdDiff = optionalTextAt(row, 3),
                          .artifactLinks = linksAt(row, 4),
                          .createdAt = optionalTextAt(row, 5)};
        });
}

} // namespace trellisport::practice
