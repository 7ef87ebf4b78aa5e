#include "PracticeService/World.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace trellisport::practice {

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;

/// One project's way up to now.
class Past {
public:
    Past(Ledger &ledger, Workflow &workflow, const Story &story, Random random, Moment now)
        : m_ledger(ledger)
        , m_workflow(workflow)
        , m_story(story)
        , m_random(random)
        , m_now(now)
    {
    }

    void unfold(int copy)
    {
        const bool completed = m_story.stage == stage::completed;
        const bool developed = completed || m_story.stage == stage::awarded;
        // A project that is under way has still some of its days before it.
        m_workDays =
            completed ? m_story.days : m_random.between(m_story.days / 2, m_story.days - 1);
        const std::int64_t age = developed
                                     ? m_workDays + 2 + (completed ? m_random.between(1, 12) : 0)
                                 : m_story.stage == stage::rejected ? m_random.between(5, 20)
                                                                    : m_random.between(1, 5);
        m_time = m_now - days(age) - minutes(m_random.between(0, 1000));
        if (m_story.stage.empty())
            m_time = m_now - minutes(m_random.between(3, 50));
        Job job = m_workflow.discover(m_story, copy, m_time);
        if (m_story.stage.empty())
            return;
        bid(job);
        if (m_story.stage == stage::completed ||
            (m_story.stage == stage::awarded && !m_story.waits))
            develop(job);
    }

private:
    void pass(std::int64_t fromMinutes, std::int64_t toMinutes)
    {
        // What lies in the past must not reach the present.
        m_time = std::min(m_time + minutes(m_random.between(fromMinutes, toMinutes)),
                          m_now - minutes(2));
    }

    void rivals(const Job &job, std::int64_t most)
    {
        for (std::int64_t count = m_random.between(0, most); count > 0; --count)
            m_workflow.competitorBids(job, m_time);
    }

    void bid(Job &job)
    {
        struct Stride {
            const char *stage;
            void (Workflow::*take)(Job &, Moment);
        };
        static constexpr std::array<Stride, 5> strides{
            Stride{stage::discovered, &Workflow::analyse},
            Stride{stage::questionsSent, &Workflow::sendQuestions},
            Stride{stage::answersReceived, &Workflow::receiveAnswers},
            Stride{stage::planSent, &Workflow::sendPlan},
            Stride{stage::bidPlaced, &Workflow::placeBid}};
        for (const Stride &stride : strides) {
            pass(20, 320);
            (m_workflow.*stride.take)(job, m_time);
            rivals(job, 3);
            if (m_story.stage == stride.stage) {
                pass(10, 60);
                questions(job);
                return;
            }
        }
        rivals(job, 5);
        pass(200, 1400);
        if (m_story.stage == stage::rejected)
            m_workflow.reject(job, m_time);
        else
            m_workflow.award(job, m_time);
    }

    /// Puts all of the story's questions.
    void questions(Job &job)
    {
        for (const Dilemma &dilemma : m_story.dilemmas)
            question(job, dilemma);
    }

    /// An open question is put only now, so that it can still be answered.
    void question(Job &job, const Dilemma &dilemma)
    {
        const bool open = dilemma.answer.empty() && m_story.stage != stage::completed;
        if (open)
            m_time = std::max(m_time, m_now - minutes(m_random.between(3, 25)));
        const std::string id = m_workflow.ask(job, dilemma, m_time);
        const auto pending = m_ledger.pendingDecision(id);
        if (open || !pending)
            return;
        if (dilemma.answer == "-" || dilemma.answer.empty()) {
            m_time = std::min(m_time + minutes(std::max(dilemma.timeoutMinutes, 30)),
                              m_now - minutes(2));
            m_workflow.giveUpWaiting(job, *pending, m_time);
        } else {
            pass(4, 90);
            m_workflow.takeAnswer(job, *pending, dilemma.answer, m_time);
        }
        if (job.work == work::queued)
            m_workflow.start(job, m_time);
    }

    void develop(Job &job)
    {
        const bool completed = m_story.stage == stage::completed;
        const Moment end = completed ? m_time + days(m_workDays) : m_now - minutes(40);
        pass(20, 200);
        m_workflow.start(job, m_time);
        auto dilemma = m_story.dilemmas.begin();
        while (true) {
            const Moment day = dayOf(m_time);
            workThroughDay(job, end);
            if (dilemma != m_story.dilemmas.end() && !dilemma->answer.empty()) {
                pass(5, 30);
                question(job, *dilemma++);
            }
            if (day < dayOf(m_now))
                m_workflow.report(job, day);
            const Moment nextMorning = day + days(1) + minutes(m_random.between(420, 600));
            if (nextMorning >= end)
                break;
            m_time = std::max(m_time, nextMorning);
        }
        for (; dilemma != m_story.dilemmas.end(); ++dilemma) {
            pass(5, 30);
            question(job, *dilemma);
        }
        if (completed) {
            pass(30, 90);
            m_workflow.complete(job, m_time);
        }
    }

    void workThroughDay(const Job &job, Moment end)
    {
        for (std::int64_t burst = m_random.between(2, 4); burst > 0 && m_time < end; --burst) {
            pass(15, 150);
            m_workflow.develop(job, m_time);
        }
        if (m_random.chance(22)) {
            pass(5, 40);
            m_workflow.stumble(job, m_time);
        }
        if (m_random.chance(55))
            m_workflow.chat(job, m_time);
    }

    Ledger &m_ledger;
    Workflow &m_workflow;
    const Story &m_story;
    Random m_random;
    Moment m_now;
    Moment m_time;
    std::int64_t m_workDays = 0;
};

TextMap initialConfig(std::int64_t placesTaken)
{
    return {{"preview_mode", "false"},
            {"max_daily_bids", "10"},
            {"daily_revenue_target", "10000"},
            {"max_concurrent_projects", std::to_string(placesTaken)},
            // Of the kind that the console passes on without showing it.
            {"proposal_tone", "plain"},
            {"report_hour_utc", "0"}};
}

} // namespace

void populate(Store &store, Ledger &ledger, Workflow &workflow, const Material &material,
              std::uint64_t seed, int scale, Moment now)
{
    Database::Transaction transaction(store.database());
    Random random(seed);
    for (int copy = 0; copy < scale; ++copy) {
        for (const Story &story : material.stories) {
            workflow.setRandom(random.fork(11));
            Past(ledger, workflow, story, random.fork(12), now).unfold(copy);
        }
    }
    store.replaceConfig(
        initialConfig(ledger.countWith(work::active) + ledger.countWith(work::blocked)));
    store.setNote("seed", std::to_string(seed));
    store.setNote("clock", isoText(now));
    store.setNote("reported", dayText(dayOf(now) - days(1)));
    // The past is no news.
    static_cast<void>(workflow.takeAlerts());
    transaction.commit();
}

} // namespace trellisport::practice
