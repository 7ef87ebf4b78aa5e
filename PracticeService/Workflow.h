#pragma once

#include "PracticeService/Ledger.h"
#include "PracticeService/Material.h"

#include <string>
#include <vector>

namespace trellisport::practice {

/// Something that the owner should hear of at once. type: "decision_needed", "project_awarded" or
/// "dev_error"; decisionId only for the first.
struct Alert {
    std::string type;
    std::string projectId;
    std::string decisionId;
    std::string title;
    std::string text;
};

/// The single steps of the agent's business, each leaving all its traces: stage, documents, bids,
/// messages, timeline and log. The past of a new portfolio and the present are made of the same
/// steps. A step takes no care whether it is wise or allowed; that is for who calls.
class Workflow {
public:
    Workflow(Ledger &ledger, const Material &material, Random random);
    void setRandom(Random random);

    /// copy 0 is the story as it stands, others are variations of it.
    Job discover(const Story &story, int copy, Moment now);
    void analyse(Job &job, Moment now);
    void sendQuestions(Job &job, Moment now);
    void receiveAnswers(Job &job, Moment now);
    void sendPlan(Job &job, Moment now);
    void placeBid(Job &job, Moment now);
    void withdrawBid(Job &job, const std::string &reason, Moment now);
    void competitorBids(const Job &job, Moment now);
    /// The work does not start by this; start() does that.
    void award(Job &job, Moment now);
    void reject(Job &job, Moment now);
    void complete(Job &job, Moment now);

    void start(Job &job, Moment now);
    void pause(Job &job, const std::string &reason, Moment now);
    void develop(const Job &job, Moment now);
    void stumble(const Job &job, Moment now);
    void chat(const Job &job, Moment now);
    void report(const Job &job, Moment day);

    /// Gives the decision's identifier; an awarded project is blocked by it.
    std::string ask(Job &job, Moment now);
    std::string ask(Job &job, const Dilemma &dilemma, Moment now);
    /// A blocked project is queued for a free place again.
    void takeAnswer(Job &job, const PendingDecision &decision, const std::string &answer,
                    Moment now);
    void giveUpWaiting(Job &job, const PendingDecision &decision, Moment now);

    /// What has come up since the last call.
    [[nodiscard]] std::vector<Alert> takeAlerts();

    [[nodiscard]] const Story &storyOf(const Job &job) const;

private:
    using Words = std::map<std::string, std::string, std::less<>>;
    [[nodiscard]] Words wordsFor(const Job &job);
    [[nodiscard]] BidInfo competitor(const Job &job);
    void sayLine(const Job &job, std::size_t line, Moment now);
    /// Gives the last entry's text.
    std::string writeBurst(const Job &job, const std::vector<LogEntry> &burst, Moment now);
    void unblock(Job &job);

    Ledger &m_ledger;
    const Material &m_material;
    Random m_random;
    std::vector<Alert> m_alerts;
};

} // namespace trellisport::practice
