#include "PracticeService/Material.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <stdexcept>

static void initialiseResources()
{
    Q_INIT_RESOURCE(practice_material);
}

namespace trellisport::practice {

namespace {

const QString root = QStringLiteral(":/practice/Material/");

std::string fileText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("Missing material: " + path.toStdString());
    return file.readAll().toStdString();
}

std::string_view trimmed(std::string_view text)
{
    const auto start = text.find_first_not_of(" \n");
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(" \n") - start + 1);
}

std::vector<std::string_view> linesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// Entries that a line of its own with the mark stands before; what comes before the first mark is
/// the first part. Each part: the rest of the mark's line, and the text below it.
std::vector<std::pair<std::string, std::string>> partsAt(std::string_view text,
                                                         std::string_view mark)
{
    std::vector<std::pair<std::string, std::string>> parts(1);
    for (const std::string_view line : linesOf(text)) {
        if (line.starts_with(mark))
            parts.emplace_back(std::string(trimmed(line.substr(mark.size()))), std::string());
        else
            (parts.back().second += line) += '\n';
    }
    for (auto &[head, body] : parts)
        body = std::string(trimmed(body));
    return parts;
}

std::vector<std::string> entriesOf(std::string_view text)
{
    std::vector<std::string> entries;
    for (auto &[head, body] : partsAt(text, "---")) {
        if (!body.empty())
            entries.push_back(std::move(body));
    }
    return entries;
}

std::vector<Saying> sayingsOf(std::string_view text)
{
    std::vector<Saying> sayings;
    for (auto &[speaker, words] : partsAt(text, "> ")) {
        if (!words.empty())
            sayings.push_back({speaker == "agent", std::move(words)});
    }
    return sayings;
}

std::vector<Dilemma> dilemmasOf(std::string_view text)
{
    std::vector<Dilemma> dilemmas;
    for (auto &[minutes, body] : partsAt(text, "? ")) {
        if (body.empty())
            continue;
        auto halves = partsAt(body, "= ");
        Dilemma dilemma{std::stoi(minutes), std::move(halves.front().second), {}};
        if (halves.size() > 1)
            dilemma.answer = std::move(halves[1].first);
        dilemmas.push_back(std::move(dilemma));
    }
    return dilemmas;
}

std::vector<std::vector<LogEntry>> burstsOf(std::string_view text)
{
    std::vector<std::vector<LogEntry>> bursts;
    for (const std::string &entry : entriesOf(text)) {
        std::vector<LogEntry> burst;
        for (auto &[type, words] : partsAt(entry, "@ ")) {
            if (!words.empty())
                burst.push_back({type, std::move(words)});
        }
        bursts.push_back(std::move(burst));
    }
    return bursts;
}

std::vector<Bidder> biddersOf(std::string_view text)
{
    std::vector<Bidder> bidders;
    for (const std::string_view line : linesOf(text)) {
        if (line.empty())
            continue;
        const auto first = line.find('|');
        const auto second = line.find('|', first + 1);
        if (second == std::string_view::npos)
            throw std::runtime_error("A bidder without two bars: " + std::string(line));
        bidders.push_back({std::string(trimmed(line.substr(0, first))),
                           std::string(trimmed(line.substr(first + 1, second - first - 1))),
                           std::string(trimmed(line.substr(second + 1)))});
    }
    return bidders;
}

std::map<std::string, std::string> headerOf(const std::string &name, std::string_view text)
{
    std::map<std::string, std::string> header;
    for (const std::string_view line : linesOf(text)) {
        const auto colon = line.find(':');
        if (colon == std::string_view::npos)
            throw std::runtime_error("Story " + name + ": not a header: " + std::string(line));
        header.emplace(line.substr(0, colon), trimmed(line.substr(colon + 1)));
    }
    return header;
}

} // namespace

Story parseStory(const std::string &name, std::string_view text)
{
    const auto parts = partsAt(text, "== ");
    auto header = headerOf(name, parts.front().second);
    std::map<std::string, std::string> sections(parts.begin() + 1, parts.end());
    Story story;
    story.name = name;
    story.title = header["title"];
    story.owner = header["owner"];
    story.stage = header["stage"];
    story.waits = header.contains("waits");
    story.repo = header["repo"];
    story.module = header["module"];
    story.budget = std::stod(header["budget"]);
    story.days = std::stoi(header["days"]);
    story.description = sections["description"];
    story.questionnaire = sections["questionnaire"];
    story.answers = sections["answers"];
    story.plan = sections["plan"];
    story.refusal = sections["refusal"];
    story.chat = sayingsOf(sections["chat"]);
    story.later = sayingsOf(sections["later"]);
    story.dilemmas = dilemmasOf(sections["decisions"]);
    if (story.title.empty() || story.repo.empty() || story.module.empty() || story.chat.empty())
        throw std::runtime_error("Story " + name + " is incomplete");
    return story;
}

Material Material::load()
{
    initialiseResources();
    Material material;
    const QDir stories(root + QStringLiteral("stories"));
    for (const QString &file : stories.entryList(QDir::Files, QDir::Name)) {
        material.stories.push_back(
            parseStory(file.section(u'.', 0, 0).toStdString(), fileText(stories.filePath(file))));
    }
    const auto pool = [](const char *name) {
        return fileText(root + QStringLiteral("pools/") + QString::fromLatin1(name));
    };
    material.bidders = biddersOf(pool("bidders.txt"));
    material.pitches = entriesOf(pool("pitches.txt"));
    material.work = burstsOf(pool("work.txt"));
    material.errors = burstsOf(pool("errors.txt"));
    material.chatter = sayingsOf(pool("chatter.txt"));
    material.thanks = entriesOf(pool("thanks.txt"));
    material.commits = entriesOf(pool("commits.txt"));
    material.notesDiffs = entriesOf(pool("notes-diffs.txt"));
    material.dilemmas = dilemmasOf(pool("dilemmas.txt"));
    material.twists = entriesOf(pool("twists.txt"));
    return material;
}

const Story *Material::story(std::string_view name) const
{
    const auto found = std::find_if(stories.begin(), stories.end(),
                                    [&](const Story &story) { return story.name == name; });
    return found == stories.end() ? nullptr : &*found;
}

std::string expand(std::string_view text,
                   const std::map<std::string, std::string, std::less<>> &values)
{
    std::string result;
    while (true) {
        const auto open = text.find('{');
        result += text.substr(0, open);
        if (open == std::string_view::npos)
            return result;
        text.remove_prefix(open);
        const auto close = text.find('}');
        const auto value =
            close == std::string_view::npos ? values.end() : values.find(text.substr(1, close - 1));
        if (value == values.end()) {
            result += '{';
            text.remove_prefix(1);
        } else {
            result += value->second;
            text.remove_prefix(close + 1);
        }
    }
}

} // namespace trellisport::practice
