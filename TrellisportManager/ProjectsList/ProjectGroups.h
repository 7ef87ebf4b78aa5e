#pragma once

#include "ServiceAccess/Records.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace trellisport {

/// The status words in the order of the chips and of the groups.
inline constexpr std::array<std::string_view, 8> projectStatuses{
    "discovered", "questions_sent", "answers_received", "plan_sent",
    "bid_placed", "awarded",        "rejected",         "completed",
};

/// Some projects of one status, by their places in the list that the service sent, ascending. Never
/// empty.
struct ProjectGroup {
    std::size_t status = 0; ///< the place in projectStatuses
    std::vector<std::uint32_t> projects;

    friend bool operator==(const ProjectGroup &, const ProjectGroup &) = default;
};

/// For each project the place of its status in projectStatuses, or unlistedStatus. Exact and
/// case-sensitive: a project without a status, or with any other word, is in no group.
[[nodiscard]] std::vector<std::uint8_t> statusPlaces(const std::vector<Project> &projects);
inline constexpr std::uint8_t unlistedStatus = projectStatuses.size();

/// The titles, as they lie in the projects; for a search in all of them.
[[nodiscard]] std::vector<std::string_view> titlesOf(const std::vector<Project> &projects);

/// Parts the projects by status, in the order of projectStatuses: those of one status only, when
/// one is given (a place in projectStatuses), and only those found, when something was searched
/// for. statuses: what statusPlaces() gave for the projects. found: places of projects, ascending.
[[nodiscard]] std::vector<ProjectGroup>
groupProjects(const std::vector<std::uint8_t> &statuses, std::optional<std::size_t> status = {},
              const std::optional<std::vector<std::uint32_t>> &found = {});

} // namespace trellisport
