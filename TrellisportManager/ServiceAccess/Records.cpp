#include "ServiceAccess/Records.h"

namespace trellisport {

Text BidInfo::identity() const
{
    return std::to_string(bidderId.value_or(0));
}

Text TimelineEvent::identity() const
{
    std::string identity(time.value_or({}).view());
    identity += '-';
    identity += event.view();
    return identity;
}

AppConfig::AppConfig(const TextMap &map)
{
    const auto take = [&](const auto &field) {
        if (const auto entry = map.find(std::string(field.key)); entry != map.end()) {
            this->*field.member = entry->second;
        }
    };
    std::apply([&](const auto &...field) { (take(field), ...); }, fields);
}

TextMap AppConfig::map() const
{
    TextMap map;
    const auto put = [&](const auto &field) {
        if (const OptionalText &text = this->*field.member) {
            map.emplace(field.key, text->view());
        }
    };
    std::apply([&](const auto &...field) { (put(field), ...); }, fields);
    return map;
}

} // namespace trellisport
