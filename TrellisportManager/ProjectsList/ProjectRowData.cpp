#include "ProjectsList/ProjectRowData.h"

#include "Presentation/Money.h"
#include "Presentation/TextPieces.h"

#include <string_view>

namespace trellisport {

namespace {

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
        row.refNumber = labelText(*project.refNumber, rules);
    }
    row.title = labelText(project.title, rules);
    row.status = labelText(project.bidStatus.value_or("unknown"), rules);
    if (project.bidAmount) {
        row.amount = moneyText(*project.bidAmount, 0);
    }
    if (project.ownerUsername) {
        row.owner = labelText(*project.ownerUsername, rules);
    }
    row.marketplaceNumber =
        QStringLiteral("FL#") + QString::number(project.freelancerProjectId.value_or(0));
    return row;
}

} // namespace trellisport
