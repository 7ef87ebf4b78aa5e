// From the award on, and what the owner is asked.
#include "PracticeService/Names.h"
#include "PracticeService/Workflow.h"

#include <algorithm>

namespace trellisport::practice {

namespace {

/// The kind of timeline event that a question belongs to.
const char *kindOf(const Job &job)
{
    return job.status == stage::awarded ? "dev" : "analysis";
}

} // namespace

Workflow::Words Workflow::wordsFor(const Job &job)
{
    const Story &story = storyOf(job);
    return {{"title", job.title},
            {"owner", job.owner},
            {"repo", story.repo},
            {"module", story.module},
            {"days", std::to_string(story.days)},
            {"n", std::to_string(m_random.between(2, 96))},
            {"m", std::to_string(m_random.between(2, 9))},
            {"hash", m_random.hex(7)}};
}

void Workflow::start(Job &job, Moment now)
{
    const bool resumed = job.work != work::queued || m_ledger.countOf(job, "tool_call") > 1;
    m_ledger.setWork(job, work::active);
    m_ledger.addEvent(job, "dev", resumed ? "Development resumed" : "Development started",
                      resumed ? std::string() : "Branch main of " + storyOf(job).repo, now);
    m_ledger.log(job, "info", resumed ? "Resuming where the work stopped" : "Development started",
                 now);
}

void Workflow::pause(Job &job, const std::string &reason, Moment now)
{
    m_ledger.setWork(job, work::paused);
    m_ledger.addEvent(job, "dev", "Development paused", reason, now);
    m_ledger.log(job, "info", "Paused: " + reason, now);
}

std::string Workflow::writeBurst(const Job &job, const std::vector<LogEntry> &burst, Moment now)
{
    const Words words = wordsFor(job);
    const Moment end = now;
    // The last entry is the news; the others led to it.
    now = std::max(now - seconds(4 * (burst.size() - 1)),
                   std::min(now, m_ledger.lastLog(job).value_or(now)));
    std::string text;
    for (const LogEntry &entry : burst) {
        text = expand(entry.text, words);
        m_ledger.log(job, entry.type, text, now);
        now = std::min(now + seconds(4), end);
    }
    return text;
}

void Workflow::develop(const Job &job, Moment now)
{
    writeBurst(job, m_random.pick(m_material.work), now);
}

void Workflow::stumble(const Job &job, Moment now)
{
    const std::string error = writeBurst(job, m_random.pick(m_material.errors), now);
    const std::string firstLine = error.substr(0, error.find('\n'));
    m_ledger.addEvent(job, "dev", "Error in development", firstLine, now);
    m_ledger.addHappening(job, "error", firstLine, now);
    m_alerts.push_back(
        {"dev_error", job.id, {}, "Error in development", job.title + ": " + firstLine});
}

void Workflow::chat(const Job &job, Moment now)
{
    for (const Saying &saying : storyOf(job).later) {
        if (!m_ledger.wasSaid(job, saying.text)) {
            m_ledger.say(job, saying.byAgent, saying.text, now);
            return;
        }
    }
    // A conversation that repeats itself word for word does not convince.
    for (int attempt = 0; attempt < 4; ++attempt) {
        const Saying &saying = m_random.pick(m_material.chatter);
        const std::string text = expand(saying.text, wordsFor(job));
        if (!m_ledger.wasSaid(job, text)) {
            m_ledger.say(job, saying.byAgent, text, now);
            return;
        }
    }
}

void Workflow::complete(Job &job, Moment now)
{
    m_ledger.enterStage(job, stage::completed, now);
    m_ledger.setWork(job, work::none);
    m_ledger.addEvent(job, "complete", "Project completed",
                      "Delivered and paid: $" + moneyText(job.bidAmount), now);
    m_ledger.log(job, "info", "Delivered. Tag v1.0 pushed, invoice closed.", now);
    m_ledger.addHappening(job, "completed", "Completed: " + job.title, now);
}

void Workflow::report(const Job &job, Moment day)
{
    const Words words = wordsFor(job);
    std::string summary;
    for (std::int64_t commit = m_random.between(2, 5); commit > 0; --commit) {
        summary += m_random.hex(7) + "  " +
                   expand(m_random.pick(m_material.commits), wordsFor(job)) + '\n';
    }
    summary += "\n" + std::to_string(m_random.between(2, 19)) + " files changed, " +
               std::to_string(m_random.between(20, 900)) + " insertions(+), " +
               std::to_string(m_random.between(1, 240)) + " deletions(-)";
    OptionalTextList links;
    if (m_random.chance(40)) {
        links.emplace();
        links->emplace_back("https://files.example.org/" + storyOf(job).repo + "/" + dayText(day) +
                            "/build.zip");
    }
    // Now and then a day has commits only, or notes only.
    const OptionalText notes =
        m_random.chance(80) ? OptionalText(expand(m_random.pick(m_material.notesDiffs), words))
                            : OptionalText();
    m_ledger.addReport(job, Report{.id = m_ledger.newId(),
                                   .reportDate = dayText(day),
                                   .commitDiffSummary = notes.has_value() && m_random.chance(10)
                                                            ? OptionalText()
                                                            : OptionalText(summary),
                                   .claudeMdDiff = notes,
                                   .artifactLinks = links,
                                   .createdAt = isoText(day)});
}

std::string Workflow::ask(Job &job, Moment now)
{
    const auto &own = storyOf(job).dilemmas;
    const auto asked = static_cast<std::size_t>(m_ledger.decisionsOf(job));
    if (asked < own.size())
        return ask(job, own[asked], now);
    return ask(job, m_random.pick(m_material.dilemmas), now);
}

std::string Workflow::ask(Job &job, const Dilemma &dilemma, Moment now)
{
    const std::string question = expand(dilemma.question, wordsFor(job));
    std::string id = m_ledger.ask(job, question, dilemma.timeoutMinutes, now);
    m_ledger.addEvent(job, kindOf(job), "Decision requested",
                      question.substr(0, question.find('\n')), now);
    m_ledger.log(job, "info", "Waiting for the owner: " + question, now);
    m_ledger.addHappening(job, "decision", question, now);
    if (job.status == stage::awarded)
        m_ledger.setWork(job, work::blocked);
    m_alerts.push_back({"decision_needed", job.id, id, "Decision needed", question});
    return id;
}

void Workflow::unblock(Job &job)
{
    if (job.work == work::blocked && !m_ledger.hasPendingDecision(job))
        m_ledger.setWork(job, work::queued);
}

void Workflow::takeAnswer(Job &job, const PendingDecision &decision, const std::string &answer,
                          Moment now)
{
    m_ledger.close(decision.id, "answered", answer, now);
    m_ledger.addEvent(job, kindOf(job), "Decision answered", answer, now);
    m_ledger.log(job, "info", "The owner answered: " + answer, now);
    m_ledger.log(job, "claude_response",
                 "Understood. I go on accordingly and note it in the project's document.", now);
    m_ledger.say(job, true, m_random.pick(m_material.thanks), now);
    m_ledger.addHappening(job, "answer", "Answered: " + decision.question, now);
    unblock(job);
}

void Workflow::giveUpWaiting(Job &job, const PendingDecision &decision, Moment now)
{
    m_ledger.close(decision.id, "expired", std::nullopt, now);
    m_ledger.addEvent(job, kindOf(job), "Decision expired", "No answer in time", now);
    m_ledger.log(job, "info",
                 "No answer in time; taking the choice that is easier to undo. The question was: " +
                     decision.question,
                 now);
    m_ledger.addHappening(job, "expired", "Not answered in time: " + decision.question, now);
    unblock(job);
}

} // namespace trellisport::practice
