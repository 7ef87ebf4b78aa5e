#include "ProjectDetail/Development/TimelineRows.h"

#include "Presentation/Colors.h"
#include "Presentation/TextPieces.h"
#include "ProjectDetail/TextViews.h"

#include <algorithm>
#include <array>
#include <utility>

namespace trellisport {

QColor timelineColor(std::string_view type)
{
    static const std::array<std::pair<std::string_view, QColor>, 8> table{{
        {"discovery", colors::gray()},
        {"analysis", colors::purple()},
        {"bid", colors::accent()},
        {"response", colors::yellow()},
        {"plan", colors::cyan()},
        {"awarded", colors::green()},
        {"dev", colors::indigo()},
        {"complete", colors::mint()},
    }};
    const auto *row = std::find_if(table.begin(), table.end(),
                                   [type](const auto &entry) { return entry.first == type; });
    return row == table.end() ? colors::gray() : row->second;
}

QHash<int, QByteArray> TimelineRows::roleNames() const
{
    return withCommonRoles({
        {DotColor, "dotColor"},
        {Event, "event"},
        {ShowsEvent, "showsEvent"},
        {Detail, "detail"},
        {ShowsDetail, "showsDetail"},
        {HasTime, "hasTime"},
        {Time, "time"},
    });
}

CardRows::LongTexts TimelineRows::longTexts(std::size_t number) const
{
    return {entry(number).event.view(), viewOf(entry(number).detail)};
}

QVariant TimelineRows::value(const Slice &slice, int role) const
{
    const TimelineEvent &shown = entry(slice.entry);
    switch (role) {
    case DotColor:
        return timelineColor(viewOf(shown.type));
    case Event:
        return piece(slice, 0).shown();
    case ShowsEvent:
        return piece(slice, 0).isShown;
    case Detail:
        return piece(slice, 1).shown();
    case ShowsDetail:
        return !viewOf(shown.detail).empty() && piece(slice, 1).isShown;
    case HasTime:
        return shown.time.has_value();
    case Time:
        return shortTime(viewOf(shown.time), rules());
    default:
        return {};
    }
}

} // namespace trellisport
