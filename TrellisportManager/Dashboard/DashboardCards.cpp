#include "Dashboard/DashboardCards.h"

#include "Presentation/Colors.h"
#include "Presentation/Money.h"

#include <string>

namespace trellisport {

QList<StatCardData> statCards(const DashboardData &data)
{
    const auto count = [&data](const char *status) {
        const auto found = data.statusCounts.find(status);
        return QString::number(found == data.statusCounts.end() ? 0 : found->second);
    };
    const QColor decisionsColor = data.pendingDecisions >= 1 ? colors::yellow() : colors::gray();
    return {
        {count("discovered"), QStringLiteral("Discovered"), colors::gray()},
        {count("questions_sent"), QStringLiteral("Questions"), colors::yellow()},
        {count("bid_placed"), QStringLiteral("Bids Active"), colors::accent()},
        {count("awarded"), QStringLiteral("Awarded"), colors::green()},
        {QString::number(data.pendingDecisions), QStringLiteral("Decisions"), decisionsColor},
        {count("completed"), QStringLiteral("Completed"), colors::mint()},
    };
}

QList<RevenueCardData> revenueCards(const DashboardData &data)
{
    return {
        {QStringLiteral("Bids Pending"), moneyText(data.bidsPending), colors::accent()},
        {QStringLiteral("Total Earned"), moneyText(data.totalEarned), colors::mint()},
    };
}

} // namespace trellisport
