// Up to the award.
#include "PracticeService/Workflow.h"

#include "PracticeService/Names.h"

#include <algorithm>
#include <cmath>

namespace trellisport::practice {

namespace {

std::string firstLine(const std::string &text)
{
    return text.substr(0, text.find('\n'));
}

std::int64_t questionsIn(const std::string &questionnaire)
{
    std::int64_t count = 0;
    bool lineStart = true;
    for (const char character : questionnaire) {
        count += lineStart && character >= '0' && character <= '9' ? 1 : 0;
        lineStart = character == '\n';
    }
    return count;
}

double rounded(double amount)
{
    return std::round(amount / 5.0) * 5.0;
}

} // namespace

Workflow::Workflow(Ledger &ledger, const Material &material, Random random)
    : m_ledger(ledger)
    , m_material(material)
    , m_random(random)
{
}

void Workflow::setRandom(Random random)
{
    m_random = random;
    m_ledger.setRandom(m_random.fork(7));
}

const Story &Workflow::storyOf(const Job &job) const
{
    const Story *story = m_material.story(job.story);
    return story != nullptr ? *story : m_material.stories.front();
}

std::vector<Alert> Workflow::takeAlerts()
{
    return std::exchange(m_alerts, {});
}

void Workflow::sayLine(const Job &job, std::size_t line, Moment now)
{
    const auto &chat = storyOf(job).chat;
    if (line < chat.size())
        m_ledger.say(job, chat[line].byAgent, chat[line].text, now);
}

Job Workflow::discover(const Story &story, int copy, Moment now)
{
    NewProject project{story.title, story.name, story.owner, story.description};
    if (copy > 0) {
        // A few tries for a title that is not there yet; then it is there twice.
        for (int attempt = 0; attempt < 6 && m_ledger.hasTitle(project.title); ++attempt) {
            project.title = expand(m_random.pick(m_material.twists),
                                   {{"title", story.title}, {"n", std::to_string(copy + 1)}});
        }
        project.owner += std::to_string(copy + 1);
    }
    Job job = m_ledger.addProject(project, now);
    m_ledger.addEvent(job, "discovery", "Project discovered",
                      "Found on the marketplace, posted by @" + job.owner, now);
    return job;
}

void Workflow::analyse(Job &job, Moment now)
{
    const Story &story = storyOf(job);
    m_ledger.enterStage(job, stage::discovered, now);
    m_ledger.setDocument(job, Document::ProjectNotes,
                         "# " + job.title + "\n\n## Goal\n" + firstLine(story.description) +
                             "\n\n## Estimate\n- " + std::to_string(story.days) + " days\n- $" +
                             moneyText(story.budget) + "\n\n## Open points\n- " +
                             std::to_string(questionsIn(story.questionnaire)) +
                             " questions for the client\n",
                         now);
    m_ledger.addEvent(job, "analysis", "Fit analysed",
                      "Estimated at " + std::to_string(story.days) + " days", now);
    m_ledger.log(job, "info", "Analysis started for \"" + job.title + "\"", now);
    m_ledger.log(job, "claude_response",
                 "The scope is clear enough to ask. Main risk: " + story.module +
                     " touches data that I have not seen yet. I will put " +
                     std::to_string(questionsIn(story.questionnaire)) +
                     " questions to the client before I plan.",
                 now);
}

void Workflow::sendQuestions(Job &job, Moment now)
{
    const Story &story = storyOf(job);
    m_ledger.enterStage(job, stage::questionsSent, now);
    m_ledger.setDocument(job, Document::Questionnaire, story.questionnaire, now);
    sayLine(job, 0, now);
    m_ledger.addEvent(
        job, "analysis", "Questions sent",
        std::to_string(questionsIn(story.questionnaire)) + " questions to @" + job.owner, now);
    m_ledger.log(job, "info", "Questionnaire sent; waiting for the client", now);
}

void Workflow::receiveAnswers(Job &job, Moment now)
{
    m_ledger.enterStage(job, stage::answersReceived, now);
    m_ledger.setDocument(job, Document::OwnerAnswers, storyOf(job).answers, now);
    sayLine(job, 1, now);
    m_ledger.addEvent(job, "response", "Client answered", firstLine(storyOf(job).answers), now);
    m_ledger.log(job, "info", "Answers received from @" + job.owner, now);
}

void Workflow::sendPlan(Job &job, Moment now)
{
    m_ledger.enterStage(job, stage::planSent, now);
    m_ledger.setDocument(job, Document::DeliveryPlan, storyOf(job).plan, now);
    sayLine(job, 2, now);
    m_ledger.addEvent(job, "plan", "Delivery plan sent", firstLine(storyOf(job).plan), now);
    m_ledger.log(job, "claude_response",
                 "Plan written. I kept a day in reserve for " + storyOf(job).module + ".", now);
}

void Workflow::placeBid(Job &job, Moment now)
{
    const Story &story = storyOf(job);
    const double amount = rounded(story.budget * double(m_random.between(84, 104)) / 100.0);
    m_ledger.enterStage(job, stage::bidPlaced, now);
    m_ledger.setBid(job, amount, now);
    m_ledger.addBid(job,
                    BidInfo{.bidderId = ourBidderId,
                            .username = ourUsername,
                            .displayName = "Trellis Agent",
                            .country = "Iceland",
                            .rating = 4.9,
                            .reviews = 132,
                            .amount = amount,
                            .period = story.days,
                            .description = expand(m_random.pick(m_material.pitches), wordsFor(job)),
                            .isOurs = true},
                    now);
    sayLine(job, 3, now);
    m_ledger.addEvent(job, "bid", "Bid placed",
                      "$" + moneyText(amount) + " in " + std::to_string(story.days) + " days", now);
    m_ledger.log(job, "tool_call",
                 "place_bid(project=\"" + job.id + "\", amount=" + moneyText(amount) +
                     ", days=" + std::to_string(story.days) + ")",
                 now);
    m_ledger.log(job, "tool_result", R"({"accepted": true, "position": 4})", now);
    m_ledger.addHappening(job, "bid", "Bid placed: $" + moneyText(amount), now);
}

void Workflow::withdrawBid(Job &job, const std::string &reason, Moment now)
{
    m_ledger.withdrawBid(job);
    m_ledger.setBid(job, std::nullopt, now);
    m_ledger.enterStage(job, stage::planSent, now);
    m_ledger.addEvent(job, "bid", "Bid withdrawn", reason, now);
    m_ledger.log(job, "info", "Bid withdrawn: " + reason, now);
    m_ledger.addHappening(job, "bid", "Bid withdrawn", now);
}

BidInfo Workflow::competitor(const Job &job)
{
    const Bidder &bidder = m_random.pick(m_material.bidders);
    const Story &story = storyOf(job);
    // The marketplace does not show everything of everyone.
    const auto shown = [&](int percent) { return m_random.chance(percent); };
    const bool rated = shown(80);
    const bool cents = shown(20);
    const double amount =
        rounded(story.budget * double(m_random.between(55, 150)) / 100.0) + (cents ? 0.99 : 0.0);
    return BidInfo{
        .bidderId =
            shown(88) ? OptionalInteger(m_random.between(100'000, 9'000'000)) : OptionalInteger(),
        .username = shown(94) ? OptionalText(bidder.username) : OptionalText(),
        .displayName =
            bidder.displayName.empty() ? OptionalText() : OptionalText(bidder.displayName),
        .country = bidder.country.empty() ? OptionalText() : OptionalText(bidder.country),
        .rating =
            rated ? OptionalNumber(double(m_random.between(28, 50)) / 10.0) : OptionalNumber(),
        .reviews = rated ? OptionalInteger(m_random.between(1, 640)) : OptionalInteger(),
        .amount = shown(90) ? OptionalNumber(amount) : OptionalNumber(),
        .period =
            shown(92) ? OptionalInteger(m_random.between(1, 3L * story.days)) : OptionalInteger(),
        .description = shown(85)
                           ? OptionalText(expand(m_random.pick(m_material.pitches), wordsFor(job)))
                           : OptionalText(),
        .isOurs = shown(70) ? OptionalBoolean(false) : OptionalBoolean()};
}

void Workflow::competitorBids(const Job &job, Moment now)
{
    m_ledger.addBid(job, competitor(job), now);
}

void Workflow::award(Job &job, Moment now)
{
    m_ledger.enterStage(job, stage::awarded, now);
    m_ledger.setRepository(job, "https://git.example.org/trellis-agent/" + storyOf(job).repo, now);
    m_ledger.setWork(job, work::queued);
    for (std::size_t line = 4; line < storyOf(job).chat.size(); ++line)
        sayLine(job, line, now);
    m_ledger.addEvent(job, "awarded", "Project awarded",
                      "@" + job.owner + " accepted $" + moneyText(job.bidAmount), now);
    m_ledger.log(job, "info", "Awarded. Repository created: " + job.repository, now);
    m_ledger.addHappening(job, "awarded", "Awarded: " + job.title, now);
    m_alerts.push_back({"project_awarded", job.id, {}, "Project awarded", job.title});
}

void Workflow::reject(Job &job, Moment now)
{
    const Story &story = storyOf(job);
    m_ledger.enterStage(job, stage::rejected, now);
    m_ledger.say(job, false,
                 story.refusal.empty() ? "Thank you for the offer. We decided for someone else."
                                       : story.refusal,
                 now);
    // A kind of event that the console has no colour for.
    m_ledger.addEvent(job, "rejected", "Bid not taken", "@" + job.owner + " chose another bid",
                      now);
    m_ledger.log(job, "info", "Closed: the client chose another bid", now);
    m_ledger.addHappening(job, "rejected", "Bid not taken: " + job.title, now);
}

} // namespace trellisport::practice
