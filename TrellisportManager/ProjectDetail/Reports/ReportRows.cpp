#include "ProjectDetail/Reports/ReportRows.h"

#include "ProjectDetail/TextViews.h"

namespace trellisport {

namespace {

std::string_view dateText(const Report &report)
{
    return report.reportDate ? report.reportDate->view() : "Unknown date";
}

} // namespace

QHash<int, QByteArray> ReportRows::roleNames() const
{
    return withCommonRoles({
        {Date, "date"},
        {ShowsDate, "showsDate"},
        {Commits, "commits"},
        {ShowsCommits, "showsCommits"},
        {CommitsStart, "commitsStart"},
        {Changes, "changes"},
        {ShowsChanges, "showsChanges"},
        {ChangesStart, "changesStart"},
    });
}

CardRows::LongTexts ReportRows::longTexts(std::size_t number) const
{
    const Report &report = entry(number);
    return {dateText(report), viewOf(report.commitDiffSummary), viewOf(report.claudeMdDiff)};
}

QVariant ReportRows::value(const Slice &slice, int role) const
{
    const auto isEmpty = [&](std::size_t number) {
        return longTexts(slice.entry).at(number).empty();
    };
    switch (role) {
    case Date:
        return piece(slice, 0).shown();
    case ShowsDate:
        return piece(slice, 0).isShown;
    case Commits:
        return piece(slice, 1).shown();
    case ShowsCommits:
        return !isEmpty(1) && piece(slice, 1).isShown;
    case CommitsStart:
        return !isEmpty(1) && piece(slice, 1).starts;
    case Changes:
        return piece(slice, 2).shown();
    case ShowsChanges:
        return !isEmpty(2) && piece(slice, 2).isShown;
    case ChangesStart:
        return !isEmpty(2) && piece(slice, 2).starts;
    default:
        return {};
    }
}

} // namespace trellisport
