#include "Platform/Toolkit/TextChange.h"

#include <algorithm>

namespace trellisport::platform {

TextChange changeBetween(QStringView before, QStringView after)
{
    const qsizetype shorter = std::min(before.size(), after.size());
    qsizetype start = 0;
    while (start < shorter && before[start] == after[start]) {
        ++start;
    }
    if (start > 0 && before[start - 1].isHighSurrogate()) {
        --start;
    }
    qsizetype end = 0;
    while (end < shorter - start &&
           before[before.size() - 1 - end] == after[after.size() - 1 - end]) {
        ++end;
    }
    if (end > 0 && before[before.size() - end].isLowSurrogate()) {
        --end;
    }
    return {.from = start,
            .removed = before.size() - start - end,
            .inserted = after.sliced(start, after.size() - start - end).toString()};
}

} // namespace trellisport::platform
