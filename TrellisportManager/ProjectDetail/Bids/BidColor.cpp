#include "ProjectDetail/Bids/BidColor.h"

#include "Presentation/Colors.h"

namespace trellisport {

QColor bidColor(OptionalNumber amount, OptionalNumber ourAmount)
{
    if (!amount || !ourAmount) {
        return colors::white();
    }
    if (*amount < *ourAmount) {
        return colors::red();
    }
    return *amount > *ourAmount ? colors::green() : colors::white();
}

} // namespace trellisport
