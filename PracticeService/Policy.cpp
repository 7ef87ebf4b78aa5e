#include "PracticeService/Policy.h"

#include <QString>

namespace trellisport::practice {

namespace {

QString settingOf(const TextMap &config, const char *name)
{
    const auto found = config.find(name);
    return found == config.end() ? QString() : QString::fromStdString(found->second).trimmed();
}

} // namespace

Policy Policy::of(const TextMap &config)
{
    Policy policy;
    if (config.contains("preview_mode"))
        policy.preview = settingOf(config, "preview_mode").toLower() == QLatin1String("true");
    bool valid = false;
    const auto bids = settingOf(config, "max_daily_bids").toLongLong(&valid);
    if (valid && bids >= 0)
        policy.maxDailyBids = bids;
    const auto target = settingOf(config, "daily_revenue_target").toDouble(&valid);
    if (valid && target >= 0)
        policy.dailyRevenueTarget = target;
    const auto projects = settingOf(config, "max_concurrent_projects").toLongLong(&valid);
    if (valid && projects >= 0)
        policy.maxConcurrentProjects = projects;
    return policy;
}

} // namespace trellisport::practice
