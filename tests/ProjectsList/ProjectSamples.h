#pragma once

#include "ServiceAccess/Records.h"

#include <string>
#include <vector>

namespace trellisport::test {

/// A project with what the list needs of one.
inline Project project(const char *id, OptionalText status, const char *title = "A project")
{
    return {.id = id, .title = title, .bidStatus = status};
}

/// The same as the service writes it; status may be null for none. more: further members, each
/// with a comma before it.
inline std::string projectJson(const std::string &id, const char *status,
                               const std::string &title = "A project", const std::string &more = {})
{
    std::string json = R"({"id":")" + id + R"(","title":")" + title + '"';
    if (status != nullptr) {
        json += std::string(R"(,"bid_status":")") + status + '"';
    }
    return json + more + '}';
}

inline std::string listJson(const std::vector<std::string> &projects)
{
    std::string json = "[";
    for (const std::string &one : projects) {
        json += (json.size() > 1 ? "," : "") + one;
    }
    return json + ']';
}

} // namespace trellisport::test
