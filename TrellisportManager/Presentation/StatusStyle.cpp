#include "Presentation/StatusStyle.h"

#include "Platform/Platform.h"
#include "Presentation/Colors.h"

#include <algorithm>
#include <array>
#include <utility>

namespace trellisport {

QColor statusColor(std::string_view status)
{
    static const std::array<std::pair<std::string_view, QColor>, 8> table{{
        {"discovered", colors::gray()},
        {"questions_sent", colors::yellow()},
        {"answers_received", colors::orange()},
        {"plan_sent", colors::purple()},
        {"bid_placed", colors::accent()},
        {"awarded", colors::green()},
        {"rejected", colors::red()},
        {"completed", colors::mint()},
    }};
    const auto *row = std::find_if(table.begin(), table.end(),
                                   [status](const auto &entry) { return entry.first == status; });
    return row == table.end() ? colors::gray() : row->second;
}

std::string spacedWords(std::string_view word)
{
    std::string spaced(word);
    std::replace(spaced.begin(), spaced.end(), '_', ' ');
    return spaced;
}

std::string statusLabel(std::string_view status, const platform::TextRules &rules)
{
    return rules.capitalized(spacedWords(status));
}

StatusStyle::StatusStyle()
    : StatusStyle(platform::Platform::current().textRules())
{
}

StatusStyle::StatusStyle(const platform::TextRules &rules, QObject *parent)
    : QObject(parent)
    , m_rules(rules)
{
}

QColor StatusStyle::color(const QString &status)
{
    return statusColor(status.toStdString());
}

QString StatusStyle::label(const QString &status) const
{
    return QString::fromStdString(statusLabel(status.toStdString(), m_rules));
}

} // namespace trellisport
