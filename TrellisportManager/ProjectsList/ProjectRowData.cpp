#include "ProjectsList/ProjectRowData.h"

#include "Presentation/Money.h"

#include <string_view>

namespace trellisport {

namespace {

// More characters than two lines of the widest row can show.
constexpr std::size_t shownCharacters = 600;
// Where a character is sought at most: no sensible one is longer than this many bytes.
constexpr std::size_t shownBytes = shownCharacters * 32;

/// The end of the last whole code point within this many bytes.
std::string_view bytePrefix(std::string_view utf8, std::size_t bytes)
{
    if (utf8.size() <= bytes) {
        return utf8;
    }
    while (bytes > 0 && (static_cast<unsigned char>(utf8[bytes]) & 0xC0U) == 0x80U) {
        --bytes;
    }
    return utf8.substr(0, bytes);
}

QString shownText(std::string_view utf8, const platform::TextRules &rules)
{
    if (utf8.size() <= shownCharacters) {
        return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    }
    return QString::fromStdString(rules.prefix(bytePrefix(utf8, shownBytes), shownCharacters));
}

QString wholeText(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace

ProjectRowData projectRowData(const Project &project, const platform::TextRules &rules)
{
    ProjectRowData row;
    row.id = wholeText(project.id);
    row.hasRefNumber = project.refNumber.has_value();
    if (project.refNumber) {
        row.refNumber = shownText(*project.refNumber, rules);
    }
    row.title = shownText(project.title, rules);
    row.status = shownText(project.bidStatus.value_or("unknown"), rules);
    if (project.bidAmount) {
        row.amount = moneyText(*project.bidAmount, 0);
    }
    if (project.ownerUsername) {
        row.owner = shownText(*project.ownerUsername, rules);
    }
    row.marketplaceNumber =
        QStringLiteral("FL#") + QString::number(project.freelancerProjectId.value_or(0));
    return row;
}

} // namespace trellisport
