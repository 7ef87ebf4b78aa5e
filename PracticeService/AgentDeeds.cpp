// The single things that the agent does or that happen to it.
#include "PracticeService/Agent.h"

#include <algorithm>
#include <array>

namespace trellisport::practice {

namespace {

// How many projects may wait before a stage; the agent looks for no more than it can handle.
constexpr std::int64_t mostWaiting = 6;

bool isBidding(const Job &job)
{
    return !job.status.empty() && job.status != stage::awarded && job.status != stage::rejected &&
           job.status != stage::completed;
}

} // namespace

/// The wanted project when it is in the stage, or any that is. idle: without an open question.
std::optional<Job> Agent::oneIn(const char *stage, const std::optional<Job> &wanted, bool idle)
{
    std::vector<Job> jobs = wanted ? std::vector<Job>{*wanted} : m_ledger.jobsIn(stage, 50);
    std::erase_if(jobs, [&](const Job &job) {
        return job.status != stage || (idle && m_ledger.hasPendingDecision(job));
    });
    return jobs.empty() ? std::nullopt : std::optional(m_random.pick(jobs));
}

std::optional<Job> Agent::oneAtWork(const std::optional<Job> &wanted)
{
    std::vector<Job> jobs =
        wanted ? std::vector<Job>{*wanted} : m_ledger.jobsWith(work::active, 50);
    std::erase_if(jobs, [](const Job &job) { return job.work != work::active; });
    return jobs.empty() ? std::nullopt : std::optional(m_random.pick(jobs));
}

std::optional<Agent::Done> Agent::discover(const std::optional<Job> & /*wanted*/, Moment now)
{
    if (m_ledger.countIn(stage::discovered) >= 2 * mostWaiting)
        return std::nullopt;
    const Story &story = m_random.pick(m_material.stories);
    Job job = m_workflow.discover(story, static_cast<int>(m_random.between(1, 40)), now);
    m_workflow.analyse(job, now);
    return Done{job.id, {}};
}

std::optional<Agent::Done> Agent::progress(const std::optional<Job> &wanted, Moment now)
{
    struct Stride {
        const char *from;
        const char *to;
        void (Workflow::*take)(Job &, Moment);
    };
    static constexpr std::array<Stride, 3> strides{
        Stride{stage::answersReceived, stage::planSent, &Workflow::sendPlan},
        Stride{stage::questionsSent, stage::answersReceived, &Workflow::receiveAnswers},
        Stride{stage::discovered, stage::questionsSent, &Workflow::sendQuestions}};
    const auto first = static_cast<std::size_t>(wanted ? 0 : m_random.between(0, 2));
    for (std::size_t i = 0; i < strides.size(); ++i) {
        const Stride &stride = strides[(first + i) % strides.size()];
        if (!wanted && m_ledger.countIn(stride.to) >= 2 * mostWaiting)
            continue;
        if (std::optional<Job> job = oneIn(stride.from, wanted, true)) {
            (m_workflow.*stride.take)(*job, now);
            return Done{job->id, {}};
        }
    }
    return std::nullopt;
}

std::optional<Agent::Done> Agent::bid(const std::optional<Job> &wanted, Moment now)
{
    if (!mayBid(now))
        return std::nullopt;
    std::optional<Job> job = oneIn(stage::planSent, wanted, true);
    if (!job)
        return std::nullopt;
    m_workflow.placeBid(*job, now);
    return Done{job->id, {}};
}

std::optional<Agent::Done> Agent::rivalBid(const std::optional<Job> &wanted, Moment now)
{
    static const std::vector<const char *> open{stage::discovered, stage::questionsSent,
                                                stage::answersReceived, stage::planSent,
                                                stage::bidPlaced};
    const std::optional<Job> job =
        oneIn(wanted ? wanted->status.c_str() : m_random.pick(open), wanted);
    if (!job || !isBidding(*job) || m_ledger.bidsOn(*job) >= 40)
        return std::nullopt;
    m_workflow.competitorBids(*job, now);
    return Done{job->id, {}};
}

std::optional<Agent::Done> Agent::award(const std::optional<Job> &wanted, Moment now)
{
    std::optional<Job> job = oneIn(stage::bidPlaced, wanted);
    if (!job)
        return std::nullopt;
    m_workflow.award(*job, now);
    if (placesTaken() < Policy::of(m_store.config()).maxConcurrentProjects)
        m_workflow.start(*job, now);
    return Done{job->id, {}};
}

std::optional<Agent::Done> Agent::reject(const std::optional<Job> &wanted, Moment now)
{
    std::optional<Job> job = oneIn(stage::bidPlaced, wanted);
    if (!job)
        return std::nullopt;
    m_workflow.reject(*job, now);
    return Done{job->id, {}};
}

std::optional<Agent::Done> Agent::complete(const std::optional<Job> &wanted, Moment now)
{
    std::optional<Job> job = oneAtWork(wanted);
    if (!job)
        return std::nullopt;
    m_workflow.complete(*job, now);
    useFreePlaces(now);
    return Done{job->id, {}};
}

std::optional<Agent::Done> Agent::develop(const std::optional<Job> &wanted, Moment now)
{
    const std::optional<Job> job = oneAtWork(wanted);
    if (!job)
        return std::nullopt;
    m_workflow.develop(*job, now);
    return Done{job->id, {}};
}

std::optional<Agent::Done> Agent::stumble(const std::optional<Job> &wanted, Moment now)
{
    const std::optional<Job> job = oneAtWork(wanted);
    if (!job)
        return std::nullopt;
    m_workflow.stumble(*job, now);
    return Done{job->id, {}};
}

std::optional<Agent::Done> Agent::chat(const std::optional<Job> &wanted, Moment now)
{
    const std::optional<Job> job = oneAtWork(wanted);
    if (!job)
        return std::nullopt;
    m_workflow.chat(*job, now);
    return Done{job->id, {}};
}

std::optional<Agent::Done> Agent::ask(const std::optional<Job> &wanted, Moment now)
{
    // An owner who does not answer shall not bring all work to a halt.
    if (!wanted && m_ledger.countWith(work::active) < 2)
        return std::nullopt;
    std::optional<Job> job = wanted && isBidding(*wanted) ? wanted : oneAtWork(wanted);
    if (!job)
        return std::nullopt;
    const std::string decision = m_workflow.ask(*job, now);
    return Done{job->id, decision};
}

std::optional<Agent::Done> Agent::expireOne(const std::optional<Job> &wanted, Moment now)
{
    for (const PendingDecision &decision : m_ledger.pendingDecisions(-1)) {
        std::optional<Job> job = m_ledger.job(decision.project);
        if (!job || (wanted && wanted->row != job->row))
            continue;
        m_workflow.giveUpWaiting(*job, decision, now);
        useFreePlaces(now);
        return Done{job->id, decision.id};
    }
    return std::nullopt;
}

std::optional<Agent::Done> Agent::report(const std::optional<Job> &wanted, Moment now)
{
    const std::optional<Job> job = oneIn(stage::awarded, wanted);
    if (!job)
        return std::nullopt;
    m_workflow.report(*job, dayOf(now));
    return Done{job->id, {}};
}

} // namespace trellisport::practice
