#pragma once

#include "PracticeService/Database.h"
#include "PracticeService/Moment.h"
#include "PracticeService/Random.h"
#include "ServiceAccess/Records.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace trellisport::practice {

/// The stages of a project, as the console knows them.
namespace stage {
inline constexpr const char *discovered = "discovered";
inline constexpr const char *questionsSent = "questions_sent";
inline constexpr const char *answersReceived = "answers_received";
inline constexpr const char *planSent = "plan_sent";
inline constexpr const char *bidPlaced = "bid_placed";
inline constexpr const char *awarded = "awarded";
inline constexpr const char *rejected = "rejected";
inline constexpr const char *completed = "completed";
} // namespace stage

/// What the agent does about an awarded project; "none" in all other stages.
namespace work {
inline constexpr const char *none = "none";
inline constexpr const char *queued = "queued";   ///< waits for its first free place
inline constexpr const char *active = "active";   ///< being developed
inline constexpr const char *blocked = "blocked"; ///< waits for the owner's answer
inline constexpr const char *paused = "paused";   ///< gave its place up
} // namespace work

/// A project as the agent sees it.
struct Job {
    std::int64_t row = 0;
    std::string id;
    std::string title;
    std::string status; ///< empty: the agent has not looked at it yet
    std::string story;
    std::string work;
    std::string owner;
    std::string repository;
    double bidAmount = 0;
    Moment stageSince;
};

struct NewProject {
    std::string title;
    std::string story;
    std::string owner;
    std::string description;
};

/// The project's texts that the agent fills one after the other.
enum class Document { ProjectNotes, Questionnaire, OwnerAnswers, DeliveryPlan };

struct PendingDecision {
    std::string id;
    std::int64_t project = 0;
    std::string question;
    std::optional<Moment> expires;
};

/// What the agent writes down and looks up. Same thread and errors as the database.
class Ledger {
public:
    /// random: where identifiers come from.
    Ledger(Database &database, Random random);

    [[nodiscard]] Database &database() noexcept { return m_database; }
    void setRandom(Random random) noexcept { m_random = random; }

    /// A project not looked at yet.
    [[nodiscard]] Job addProject(const NewProject &project, Moment now);
    void enterStage(Job &job, const char *stage, Moment now);
    void setWork(Job &job, const char *work);
    void setDocument(const Job &job, Document document, const std::string &text, Moment now);
    /// No amount: the bid is withdrawn.
    void setBid(Job &job, std::optional<double> amount, Moment now);
    void setRepository(Job &job, const std::string &url, Moment now);

    void say(const Job &job, bool byAgent, const std::string &text, Moment now);
    /// Also counts as a change of the project.
    void addEvent(const Job &job, const char *type, const std::string &event,
                  const std::string &detail, Moment now);
    void log(const Job &job, const std::string &type, const std::string &content, Moment now);
    void addBid(const Job &job, const BidInfo &bid, Moment now);
    void withdrawBid(const Job &job);
    void addReport(const Job &job, const Report &report);
    /// Gives the new decision's identifier. minutes 0: it never expires.
    std::string ask(const Job &job, const std::string &question, int minutes, Moment now);
    void close(const std::string &decision, const char *status,
               const std::optional<std::string> &answer, Moment now);
    void addHappening(const Job &job, const std::string &type, const std::string &text, Moment now);

    [[nodiscard]] std::optional<Job> job(std::int64_t row);
    [[nodiscard]] std::optional<Job> job(const std::string &id);
    /// Longest in the stage first. limit -1: all of them.
    [[nodiscard]] std::vector<Job> jobsIn(const char *stage, int limit);
    [[nodiscard]] std::vector<Job> jobsWith(const char *work, int limit);
    [[nodiscard]] std::int64_t countIn(const char *stage);
    [[nodiscard]] std::int64_t countWith(const char *work);
    [[nodiscard]] std::int64_t bidsOn(const Job &job);
    [[nodiscard]] std::optional<PendingDecision> pendingDecision(const std::string &id);
    [[nodiscard]] std::vector<PendingDecision> pendingDecisions(int limit);
    [[nodiscard]] bool hasPendingDecision(const Job &job);
    [[nodiscard]] std::int64_t decisionsOf(const Job &job);
    [[nodiscard]] std::optional<Moment> lastLog(const Job &job);
    [[nodiscard]] bool hasTitle(const std::string &title);
    [[nodiscard]] bool wasSaid(const Job &job, const std::string &text);
    [[nodiscard]] std::optional<std::string> statusOfDecision(const Job &job,
                                                              const std::string &decision);
    [[nodiscard]] std::int64_t ourBidsSince(Moment start);
    [[nodiscard]] double earnedSince(Moment start);
    [[nodiscard]] bool hasReport(const Job &job, const std::string &day);
    [[nodiscard]] std::int64_t countOf(const Job &job, const char *logType);
    [[nodiscard]] std::string newId() { return m_random.hex(12); }

private:
    template <typename Value>
    std::vector<Job> jobsWhere(const char *sql, const Value &value, int limit);

    Database &m_database;
    Random m_random;
};

} // namespace trellisport::practice
