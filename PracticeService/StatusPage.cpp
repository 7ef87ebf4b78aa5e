#include "PracticeService/StatusPage.h"

#include "PracticeService/Ledger.h"
#include "PracticeService/Material.h"
#include "PracticeService/Names.h"

#include <QFile>
#include <QString>

#include <algorithm>
#include <array>

namespace trellisport::practice {

namespace {

std::string escaped(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))
        .toHtmlEscaped()
        .toStdString();
}

std::string tile(std::string_view value, std::string_view label)
{
    return "<div class=\"tile\"><b>" + escaped(value) + "</b><span>" + escaped(label) +
           "</span></div>\n";
}

std::string tilesOf(const StatusFacts &facts)
{
    static constexpr std::array stages{
        stage::discovered, stage::questionsSent, stage::answersReceived, stage::planSent,
        stage::bidPlaced,  stage::awarded,       stage::rejected,        stage::completed};
    std::string tiles;
    for (const char *stage : stages) {
        const auto count = facts.dashboard.statusCounts.find(std::string_view(stage));
        std::string label(stage);
        std::replace(label.begin(), label.end(), '_', ' ');
        tiles += tile(
            std::to_string(count == facts.dashboard.statusCounts.end() ? 0 : count->second), label);
    }
    tiles += tile(std::to_string(facts.dashboard.pendingDecisions), "decisions");
    tiles += tile("$" + moneyText(facts.dashboard.bidsPending), "bids pending");
    tiles += tile("$" + moneyText(facts.dashboard.totalEarned), "earned");
    tiles += tile(std::to_string(facts.devices), "devices");
    return tiles;
}

std::string row(const std::string &time, const std::string &head, const std::string &text)
{
    // A blank between date and time reads better.
    std::string shown = time.substr(0, 19);
    std::replace(shown.begin(), shown.end(), 'T', ' ');
    return "<li><small>" + escaped(shown) + " &middot; " + escaped(head) +
           "</small><p dir=\"auto\">" + escaped(text) + "</p></li>\n";
}

} // namespace

std::string statusPageOf(const StatusFacts &facts)
{
    QFile file(QStringLiteral(":/practice/Material/status.html"));
    if (!file.open(QIODevice::ReadOnly))
        return "<!DOCTYPE html><title>Trellisport practice service</title>";
    std::string questions;
    for (const OpenQuestion &question : facts.questions)
        questions += row(question.notifiedAt, question.projectTitle, question.question);
    std::string happenings;
    for (const Happening &happening : facts.happenings)
        happenings += row(happening.time, happening.type, happening.text);
    const std::string nothing = "<li><p>Nothing yet</p></li>\n";
    return expand(file.readAll().toStdString(),
                  {{"tiles", tilesOf(facts)},
                   {"questions", questions.empty() ? nothing : questions},
                   {"happenings", happenings.empty() ? nothing : happenings},
                   {"now", escaped(facts.now)}});
}

} // namespace trellisport::practice
