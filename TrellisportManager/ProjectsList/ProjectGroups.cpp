#include "ProjectsList/ProjectGroups.h"

#include <algorithm>
#include <utility>

namespace trellisport {

std::vector<std::uint8_t> statusPlaces(const std::vector<Project> &projects)
{
    std::vector<std::uint8_t> places;
    places.reserve(projects.size());
    for (const Project &project : projects) {
        const auto *found = projectStatuses.end();
        if (project.bidStatus) {
            found = std::find(projectStatuses.begin(), projectStatuses.end(),
                              project.bidStatus->view());
        }
        places.push_back(static_cast<std::uint8_t>(found - projectStatuses.begin()));
    }
    return places;
}

std::vector<std::string_view> titlesOf(const std::vector<Project> &projects)
{
    std::vector<std::string_view> titles;
    titles.reserve(projects.size());
    for (const Project &project : projects) {
        titles.push_back(project.title);
    }
    return titles;
}

std::vector<ProjectGroup> groupProjects(const std::vector<std::uint8_t> &statuses,
                                        std::optional<std::size_t> status,
                                        const std::optional<std::vector<std::uint32_t>> &found)
{
    // One pass in the order in which the projects lie in memory: a pass for each status takes four
    // times as long for a hundred thousand of them.
    std::array<std::vector<std::uint32_t>, projectStatuses.size()> parts;
    const auto take = [&](std::uint32_t project) {
        const std::uint8_t place = statuses[project];
        if (place != unlistedStatus && (!status || place == *status)) {
            parts.at(place).push_back(project);
        }
    };
    if (found) {
        std::for_each(found->begin(), found->end(), take);
    } else {
        for (std::uint32_t project = 0; project < statuses.size(); ++project) {
            take(project);
        }
    }
    std::vector<ProjectGroup> groups;
    for (std::size_t place = 0; place < parts.size(); ++place) {
        if (!parts.at(place).empty()) {
            groups.push_back({place, std::move(parts.at(place))});
        }
    }
    return groups;
}

} // namespace trellisport
