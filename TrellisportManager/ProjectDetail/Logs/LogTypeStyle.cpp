#include "ProjectDetail/Logs/LogTypeStyle.h"

#include "Presentation/Colors.h"
#include "Presentation/StatusStyle.h"

#include <algorithm>
#include <array>
#include <utility>

namespace trellisport {

QColor logTypeColor(std::string_view type)
{
    static const std::array<std::pair<std::string_view, QColor>, 5> table{{
        {"tool_call", colors::blue()},
        {"tool_result", colors::cyan()},
        {"claude_response", colors::purple()},
        {"error", colors::red()},
        {"info", colors::gray()},
    }};
    const auto *row = std::find_if(table.begin(), table.end(),
                                   [type](const auto &entry) { return entry.first == type; });
    return row == table.end() ? colors::gray() : row->second;
}

QColor LogTypeStyle::color(const QString &type)
{
    return logTypeColor(type.toStdString());
}

QString LogTypeStyle::label(const QString &type)
{
    return QString::fromStdString(spacedWords(type.toStdString()));
}

} // namespace trellisport
