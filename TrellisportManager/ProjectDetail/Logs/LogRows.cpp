#include "ProjectDetail/Logs/LogRows.h"

#include "Presentation/TextPieces.h"
#include "ProjectDetail/TextViews.h"

namespace trellisport {

QHash<int, QByteArray> LogRows::roleNames() const
{
    return withCommonRoles(
        {{LogType, "logType"}, {HasTime, "hasTime"}, {Time, "time"}, {Body, "body"}});
}

CardRows::LongTexts LogRows::longTexts(std::size_t number) const
{
    return {entry(number).content.view()};
}

QVariant LogRows::value(const Slice &slice, int role) const
{
    const DevLog &shown = entry(slice.entry);
    switch (role) {
    case LogType:
        return labelText(shown.logType, rules());
    case HasTime:
        return shown.createdAt.has_value();
    case Time:
        return shortTime(viewOf(shown.createdAt), rules());
    case Body:
        return piece(slice, 0).shown();
    default:
        return {};
    }
}

} // namespace trellisport
