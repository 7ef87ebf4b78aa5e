#include "PracticeService/Agent.h"

#include <algorithm>

namespace trellisport::practice {

namespace {

// More than this at once would keep the readers waiting; time that runs faster skips the rest.
constexpr int mostDeedsAtOnce = 40;
constexpr seconds checkInterval(20);

} // namespace

/// Runs the action in one transaction, with chance that depends on the seed and on how many steps
/// there were, then tells who listens.
template <typename Action>
auto Agent::step(Moment now, const Action &action)
{
    static_cast<void>(m_workflow.takeAlerts()); // of a step that failed
    Database::Transaction transaction(m_store.database());
    ++m_step;
    m_random = Random(m_seed).fork(m_step);
    m_workflow.setRandom(m_random.fork(1));
    m_store.setNote("step", std::to_string(m_step));
    m_store.setNote("clock", isoText(now));
    auto result = action();
    transaction.commit();
    m_settled = now;
    for (const Alert &alert : m_workflow.takeAlerts())
        m_sink(alert);
    return result;
}

Agent::Agent(Store &store, Ledger &ledger, Workflow &workflow, const Material &material,
             std::uint64_t seed, AlertSink sink)
    : m_store(store)
    , m_ledger(ledger)
    , m_workflow(workflow)
    , m_material(material)
    , m_sink(std::move(sink))
    , m_seed(seed)
    , m_random(seed)
{
    if (const auto step = m_store.note("step"))
        m_step = std::stoull(*step);
}

const std::vector<Agent::Activity> &Agent::activities()
{
    static const std::vector<Activity> all{
        {"work", 45, &Agent::develop},        {"message", 1100, &Agent::chat},
        {"rival", 150, &Agent::rivalBid},     {"discover", 900, &Agent::discover},
        {"progress", 320, &Agent::progress},  {"bid", 700, &Agent::bid},
        {"award", 2700, &Agent::award},       {"reject", 3600, &Agent::reject},
        {"complete", 7200, &Agent::complete}, {"error", 1500, &Agent::stumble},
        {"decision", 1800, &Agent::ask},      {"expire", 0, &Agent::expireOne},
        {"report", 0, &Agent::report},
    };
    return all;
}

bool Agent::isEvent(std::string_view name)
{
    return std::any_of(activities().begin(), activities().end(),
                       [&](const Activity &activity) { return activity.name == name; });
}

Moment Agent::drawNext(const Activity &activity, Moment now)
{
    return now + seconds(m_random.between(activity.meanSeconds / 4, activity.meanSeconds * 7 / 4));
}

void Agent::advance(Moment now)
{
    if (m_schedule.empty()) {
        m_random = Random(m_seed).fork(m_step);
        for (const Activity &activity : activities()) {
            if (activity.meanSeconds > 0)
                m_schedule.push_back({&activity, drawNext(activity, now)});
        }
    }
    const bool anythingDue = std::any_of(m_schedule.begin(), m_schedule.end(),
                                         [&](const Due &due) { return due.when <= now; });
    const bool checkDue = now - m_checked >= checkInterval;
    if (!anythingDue && !checkDue)
        return;
    step(now, [&] {
        Moment latest;
        for (int deeds = 0; deeds < mostDeedsAtOnce; ++deeds) {
            const auto next = std::min_element(
                m_schedule.begin(), m_schedule.end(),
                [](const Due &one, const Due &other) { return one.when < other.when; });
            if (next->when > now)
                break;
            latest = std::max({latest, next->when, m_settled});
            (this->*next->activity->deed)(std::nullopt, latest);
            next->when = drawNext(*next->activity, next->when);
        }
        // What is still due now has been missed for good.
        for (Due &due : m_schedule) {
            if (due.when <= now)
                due.when = drawNext(*due.activity, now);
        }
        if (checkDue) {
            m_checked = now;
            expireDue(now);
            closeDay(now);
            useFreePlaces(now);
        }
        return 0;
    });
}

Agent::AnswerOutcome Agent::answer(const std::string &project, const std::string &decision,
                                   const std::string &text, Moment now)
{
    return step(now, [&] {
        std::optional<Job> job = m_ledger.job(project);
        if (!job)
            return AnswerOutcome::UnknownProject;
        const auto status = m_ledger.statusOfDecision(*job, decision);
        if (!status)
            return AnswerOutcome::UnknownDecision;
        const auto pending = m_ledger.pendingDecision(decision);
        if (!pending) {
            return *status == "expired" ? AnswerOutcome::Expired : AnswerOutcome::AlreadyAnswered;
        }
        m_workflow.takeAnswer(*job, *pending, text, now);
        // Its place was kept for it.
        if (job->work == work::queued &&
            placesTaken() < Policy::of(m_store.config()).maxConcurrentProjects)
            m_workflow.start(*job, now);
        return AnswerOutcome::Taken;
    });
}

void Agent::replaceConfig(const TextMap &config, Moment now)
{
    step(now, [&] {
        m_store.replaceConfig(config);
        const Policy policy = Policy::of(config);
        if (policy.preview) {
            std::vector<Job> bids = m_ledger.jobsIn(stage::bidPlaced, -1);
            for (std::size_t i = 0; i + 1 < bids.size(); ++i)
                m_workflow.withdrawBid(bids[i], "Preview mode allows one active bid", now);
        }
        std::vector<Job> active = m_ledger.jobsWith(work::active, -1);
        for (auto taken = placesTaken(); taken > policy.maxConcurrentProjects && !active.empty();
             --taken) {
            m_workflow.pause(active.back(),
                             "The settings allow " + std::to_string(policy.maxConcurrentProjects) +
                                 " projects at once",
                             now);
            active.pop_back();
        }
        useFreePlaces(now);
        return 0;
    });
}

std::optional<Agent::Done> Agent::perform(std::string_view event,
                                          const std::optional<std::string> &project, Moment now)
{
    const auto activity = std::find_if(activities().begin(), activities().end(),
                                       [&](const Activity &known) { return known.name == event; });
    if (activity == activities().end())
        return std::nullopt;
    return step(now, [&]() -> std::optional<Done> {
        std::optional<Job> wanted;
        if (project) {
            wanted = m_ledger.job(*project);
            if (!wanted)
                return std::nullopt;
        }
        return (this->*activity->deed)(wanted, now);
    });
}

std::int64_t Agent::placesTaken()
{
    return m_ledger.countWith(work::active) + m_ledger.countWith(work::blocked);
}

void Agent::useFreePlaces(Moment now)
{
    auto free = Policy::of(m_store.config()).maxConcurrentProjects - placesTaken();
    for (const char *waiting : {work::paused, work::queued}) {
        if (free <= 0)
            return;
        for (Job &job :
             m_ledger.jobsWith(waiting, static_cast<int>(std::min<std::int64_t>(free, 100'000)))) {
            m_workflow.start(job, now);
            --free;
        }
    }
}

bool Agent::mayBid(Moment now)
{
    const Policy policy = Policy::of(m_store.config());
    return (!policy.preview || m_ledger.countIn(stage::bidPlaced) == 0) &&
           m_ledger.ourBidsSince(dayOf(now)) < policy.maxDailyBids &&
           m_ledger.earnedSince(dayOf(now)) < policy.dailyRevenueTarget;
}

void Agent::expireDue(Moment now)
{
    for (const PendingDecision &decision : m_ledger.pendingDecisions(-1)) {
        if (!decision.expires || *decision.expires > now)
            continue;
        if (std::optional<Job> job = m_ledger.job(decision.project))
            m_workflow.giveUpWaiting(*job, decision, now);
    }
}

void Agent::closeDay(Moment now)
{
    const Moment yesterday = dayOf(now) - std::chrono::days(1);
    if (m_store.note("reported") == dayText(yesterday))
        return;
    for (const Job &job : m_ledger.jobsIn(stage::awarded, -1)) {
        if (job.work != work::queued && job.stageSince < dayOf(now) &&
            !m_ledger.hasReport(job, dayText(yesterday)))
            m_workflow.report(job, yesterday);
    }
    m_store.setNote("reported", dayText(yesterday));
}

} // namespace trellisport::practice
