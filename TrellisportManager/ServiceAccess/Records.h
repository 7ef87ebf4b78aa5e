#pragma once

#include "ServiceAccess/RecordField.h"
#include "ServiceAccess/Text.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

/// What the service sends, record by record. Every record is a value whose fields are set once, by
/// decoding or by aggregate initialisation in the order below (AppConfig alone is different). Its
/// `fields` list names the JSON key of each field, in the same order; decoding and encoding
/// (RecordCoding.h) follow that list, and it is the only place where a key stands. Times stay text
/// as the service sends them.
namespace trellisport {

using OptionalInteger = std::optional<std::int64_t>;
using OptionalNumber = std::optional<double>;
using OptionalBoolean = std::optional<bool>;
using OptionalTextList = std::optional<std::vector<Text>>;
using CountMap = std::map<Text, std::int64_t, std::less<>>;
/// The service's configuration, and every reply whose values are all texts.
using TextMap = std::map<std::string, std::string>;

/// A project as listed.
struct Project {
    const Text id;                     ///< the service's identifier, used in every project path
    const OptionalText refNumber = {}; ///< the service's own reference number
    const OptionalInteger freelancerProjectId = {}; ///< the number on the marketplace
    const Text title;
    const OptionalText description = {};
    const OptionalNumber bidAmount = {};   ///< the agent's bid, money without a currency
    const OptionalText bidStatus = {};     ///< the stage in the agent's pipeline, e.g. "bid_placed"
    const OptionalText ownerUsername = {}; ///< the client on the marketplace
    const OptionalText githubRepoUrl = {};
    const OptionalText createdAt = {};
    const OptionalText updatedAt = {};

    static constexpr auto fields = std::tuple{
        field(&Project::id, "id"),
        field(&Project::refNumber, "ref_number"),
        field(&Project::freelancerProjectId, "freelancer_project_id"),
        field(&Project::title, "title"),
        field(&Project::description, "description"),
        field(&Project::bidAmount, "bid_amount"),
        field(&Project::bidStatus, "bid_status"),
        field(&Project::ownerUsername, "owner_username"),
        field(&Project::githubRepoUrl, "github_repo_url"),
        field(&Project::createdAt, "created_at"),
        field(&Project::updatedAt, "updated_at"),
    };
    [[nodiscard]] const Text &identity() const noexcept { return id; }
    friend bool operator==(const Project &, const Project &) = default;
};

/// One project with its working documents.
struct ProjectDetail {
    const Text id;                     ///< the service's identifier, used in every project path
    const OptionalText refNumber = {}; ///< the service's own reference number
    const OptionalInteger freelancerProjectId = {}; ///< the number on the marketplace
    const Text title;
    const OptionalText description = {};
    const OptionalText projectMd = {}; ///< the agent's working document, Markdown-like
    const OptionalText deliveryPlan = {};
    const OptionalText questionnaire = {}; ///< the agent's questions to the client, one text
    const OptionalText ownerAnswers = {};  ///< the client's answers, one text
    const OptionalNumber bidAmount = {};   ///< the agent's bid, money without a currency
    const OptionalText bidStatus = {};     ///< the stage in the agent's pipeline, e.g. "bid_placed"
    const OptionalText ownerUsername = {}; ///< the client on the marketplace
    const OptionalText githubRepoUrl = {};
    const OptionalText createdAt = {};
    const OptionalText updatedAt = {};

    static constexpr auto fields = std::tuple{
        field(&ProjectDetail::id, "id"),
        field(&ProjectDetail::refNumber, "ref_number"),
        field(&ProjectDetail::freelancerProjectId, "freelancer_project_id"),
        field(&ProjectDetail::title, "title"),
        field(&ProjectDetail::description, "description"),
        field(&ProjectDetail::projectMd, "project_md"),
        field(&ProjectDetail::deliveryPlan, "delivery_plan"),
        field(&ProjectDetail::questionnaire, "questionnaire"),
        field(&ProjectDetail::ownerAnswers, "owner_answers"),
        field(&ProjectDetail::bidAmount, "bid_amount"),
        field(&ProjectDetail::bidStatus, "bid_status"),
        field(&ProjectDetail::ownerUsername, "owner_username"),
        field(&ProjectDetail::githubRepoUrl, "github_repo_url"),
        field(&ProjectDetail::createdAt, "created_at"),
        field(&ProjectDetail::updatedAt, "updated_at"),
    };
    friend bool operator==(const ProjectDetail &, const ProjectDetail &) = default;
};

/// One chat message of a project.
struct Message {
    const Text id;
    const Text sender; ///< "agent" for the agent's own
    const Text messageText;
    const OptionalText createdAt = {}; ///< when it was sent

    static constexpr auto fields = std::tuple{
        field(&Message::id, "id"),
        field(&Message::sender, "sender"),
        field(&Message::messageText, "message_text"),
        field(&Message::createdAt, "created_at"),
    };
    [[nodiscard]] const Text &identity() const noexcept { return id; }
    friend bool operator==(const Message &, const Message &) = default;
};

/// A question that the agent puts to its owner.
struct Decision {
    const Text id;
    const Text question;
    const OptionalText answer = {};            ///< once given
    const Text status;                         ///< "pending" while it waits for an answer
    const OptionalInteger timeoutMinutes = {}; ///< how long the agent waits
    const OptionalText notifiedAt = {};
    const OptionalText answeredAt = {};

    static constexpr auto fields = std::tuple{
        field(&Decision::id, "id"),
        field(&Decision::question, "question"),
        field(&Decision::answer, "answer"),
        field(&Decision::status, "status"),
        field(&Decision::timeoutMinutes, "timeout_minutes"),
        field(&Decision::notifiedAt, "notified_at"),
        field(&Decision::answeredAt, "answered_at"),
    };
    [[nodiscard]] const Text &identity() const noexcept { return id; }
    friend bool operator==(const Decision &, const Decision &) = default;
};

/// The summary of the whole agent.
struct DashboardData {
    const CountMap statusCounts; ///< projects for each stage, as in Project::bidStatus
    const double bidsPending;    ///< money in bids not yet decided
    const double totalEarned;    ///< money
    const std::int64_t pendingDecisions;

    static constexpr auto fields = std::tuple{
        field(&DashboardData::statusCounts, "status_counts"),
        field(&DashboardData::bidsPending, "bids_pending"),
        field(&DashboardData::totalEarned, "total_earned"),
        field(&DashboardData::pendingDecisions, "pending_decisions"),
    };
    friend bool operator==(const DashboardData &, const DashboardData &) = default;
};

/// One bid on a project, the agent's or a competitor's.
struct BidInfo {
    const OptionalInteger bidderId = {}; ///< the bidder's number on the marketplace
    const OptionalText username = {};
    const OptionalText displayName = {};
    const OptionalText country = {};
    const OptionalNumber rating = {};
    const OptionalInteger reviews = {};  ///< how many stand behind the rating
    const OptionalNumber amount = {};    ///< money without a currency
    const OptionalInteger period = {};   ///< the offered time, in days
    const OptionalText description = {}; ///< the proposal
    const OptionalBoolean isOurs = {};   ///< true for the agent's own bid

    static constexpr auto fields = std::tuple{
        field(&BidInfo::bidderId, "bidder_id"),
        field(&BidInfo::username, "username"),
        field(&BidInfo::displayName, "display_name"),
        field(&BidInfo::country, "country"),
        field(&BidInfo::rating, "rating"),
        field(&BidInfo::reviews, "reviews"),
        field(&BidInfo::amount, "amount"),
        field(&BidInfo::period, "period"),
        field(&BidInfo::description, "description"),
        field(&BidInfo::isOurs, "is_ours"),
    };
    /// Bidders without a number all share "0".
    [[nodiscard]] Text identity() const;
    friend bool operator==(const BidInfo &, const BidInfo &) = default;
};

/// One event of a project's development.
struct TimelineEvent {
    const OptionalText time = {};
    const Text event;
    const OptionalText detail = {};
    const OptionalText type = {};

    static constexpr auto fields = std::tuple{
        field(&TimelineEvent::time, "time"),
        field(&TimelineEvent::event, "event"),
        field(&TimelineEvent::detail, "detail"),
        field(&TimelineEvent::type, "type"),
    };
    /// The time, "-" and the event; events alike in both share it.
    [[nodiscard]] Text identity() const;
    friend bool operator==(const TimelineEvent &, const TimelineEvent &) = default;
};

/// One entry of a project's development log.
struct DevLog {
    const Text id;
    const Text logType; ///< e.g. "tool_call", "error"
    const Text content;
    const OptionalText createdAt = {};

    static constexpr auto fields = std::tuple{
        field(&DevLog::id, "id"),
        field(&DevLog::logType, "log_type"),
        field(&DevLog::content, "content"),
        field(&DevLog::createdAt, "created_at"),
    };
    [[nodiscard]] const Text &identity() const noexcept { return id; }
    friend bool operator==(const DevLog &, const DevLog &) = default;
};

/// A daily report on a project.
struct Report {
    const Text id;
    const OptionalText reportDate = {};
    const OptionalText commitDiffSummary = {};
    const OptionalText claudeMdDiff = {};
    const OptionalTextList artifactLinks = {}; ///< addresses of what the day produced
    const OptionalText createdAt = {};

    static constexpr auto fields = std::tuple{
        field(&Report::id, "id"),
        field(&Report::reportDate, "report_date"),
        field(&Report::commitDiffSummary, "commit_diff_summary"),
        field(&Report::claudeMdDiff, "claude_md_diff"),
        field(&Report::artifactLinks, "artifact_links"),
        field(&Report::createdAt, "created_at"),
    };
    [[nodiscard]] const Text &identity() const noexcept { return id; }
    friend bool operator==(const Report &, const Report &) = default;
};

/// The typed view of the service's configuration map; every field starts absent.
struct AppConfig {
    OptionalText previewMode; ///< "true" or "false"
    OptionalText maxDailyBids;
    OptionalText dailyRevenueTarget;
    OptionalText maxConcurrentProjects;

    static constexpr auto fields = std::tuple{
        field(&AppConfig::previewMode, "preview_mode"),
        field(&AppConfig::maxDailyBids, "max_daily_bids"),
        field(&AppConfig::dailyRevenueTarget, "daily_revenue_target"),
        field(&AppConfig::maxConcurrentProjects, "max_concurrent_projects"),
    };

    AppConfig() = default;
    /// Takes the four keys that the map holds; its other keys are ignored.
    explicit AppConfig(const TextMap &map);
    /// The fields that are present, under their keys.
    [[nodiscard]] TextMap map() const;
    friend bool operator==(const AppConfig &, const AppConfig &) = default;
};

} // namespace trellisport
