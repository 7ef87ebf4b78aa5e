#pragma once

#include "PracticeService/Policy.h"
#include "PracticeService/Store.h"
#include "PracticeService/Workflow.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellisport::practice {

/// Decides what happens and when, within the owner's settings. Each of its functions is one
/// transaction: it happens whole or not at all. Same thread and errors as the store.
class Agent {
public:
    /// Called after an event of interest has been stored, on the store's thread.
    using AlertSink = std::function<void(const Alert &)>;

    Agent(Store &store, Ledger &ledger, Workflow &workflow, const Material &material,
          std::uint64_t seed, AlertSink sink);

    /// Does what is due by now.
    void advance(Moment now);

    enum class AnswerOutcome { Taken, UnknownProject, UnknownDecision, AlreadyAnswered, Expired };
    AnswerOutcome answer(const std::string &project, const std::string &decision,
                         const std::string &text, Moment now);

    /// Stores the settings and acts on them: bids beyond the allowed are withdrawn, work beyond the
    /// allowed rests, work that has a place again goes on.
    void replaceConfig(const TextMap &config, Moment now);

    /// Where something happened.
    struct Done {
        std::string projectId;
        std::string decisionId;
    };
    [[nodiscard]] static bool isEvent(std::string_view name);
    /// Makes one event happen now, to the project of that identifier or to one that it can happen
    /// to. Nothing when there is none, or the settings do not allow it.
    std::optional<Done> perform(std::string_view event, const std::optional<std::string> &project,
                                Moment now);

private:
    using Deed = std::optional<Done> (Agent::*)(const std::optional<Job> &wanted, Moment now);
    struct Activity {
        std::string_view name;
        int meanSeconds; ///< 0: only on request
        Deed deed;
    };
    struct Due {
        const Activity *activity;
        Moment when;
    };
    static const std::vector<Activity> &activities();

    template <typename Action>
    auto step(Moment now, const Action &action);
    [[nodiscard]] Moment drawNext(const Activity &activity, Moment now);

    std::optional<Done> discover(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> progress(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> bid(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> rivalBid(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> award(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> reject(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> complete(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> develop(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> stumble(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> chat(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> ask(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> expireOne(const std::optional<Job> &wanted, Moment now);
    std::optional<Done> report(const std::optional<Job> &wanted, Moment now);

    void expireDue(Moment now);
    void closeDay(Moment now);
    void useFreePlaces(Moment now);
    [[nodiscard]] std::int64_t placesTaken();
    [[nodiscard]] bool mayBid(Moment now);
    [[nodiscard]] std::optional<Job> oneIn(const char *stage, const std::optional<Job> &wanted,
                                           bool idle = false);
    [[nodiscard]] std::optional<Job> oneAtWork(const std::optional<Job> &wanted);

    Store &m_store;
    Ledger &m_ledger;
    Workflow &m_workflow;
    const Material &m_material;
    AlertSink m_sink;
    Random m_seed;
    Random m_random;
    std::uint64_t m_step = 0;
    std::vector<Due> m_schedule;
    Moment m_checked;
    Moment m_settled; ///< nothing may happen before it any more
};

} // namespace trellisport::practice
