#include "ProjectsList/ProjectRowsModel.h"

#include "Presentation/StatusStyle.h"
#include "ProjectsList/ProjectRowData.h"

#include <QVariant>

#include <algorithm>
#include <cstdint>
#include <string>

namespace trellisport {

namespace {

using Places = std::vector<std::uint32_t>;

auto at(Places &places, std::size_t place)
{
    return places.begin() + static_cast<std::ptrdiff_t>(place);
}

const ProjectGroup *groupOf(const std::vector<ProjectGroup> &groups, std::size_t status)
{
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [status](const auto &group) { return group.status == status; });
    return found == groups.end() ? nullptr : &*found;
}

} // namespace

ProjectRowsModel::ProjectRowsModel(const platform::TextRules &rules, QObject *parent)
    : QAbstractListModel(parent)
    , m_rules(rules)
    , m_projects(std::make_shared<const std::vector<Project>>())
{
}

void ProjectRowsModel::show(Projects projects, std::vector<ProjectGroup> groups)
{
    if (projects == m_projects && groups == m_groups) {
        return;
    }
    // What goes, goes while the old projects are still there; what comes, comes when the new ones
    // are. In between, both have the same rows.
    const KeptRows kept = keptRows(*projects, groups);
    takeRowsOut(kept);
    for (ProjectGroup &group : m_groups) {
        const Places &is = groupOf(groups, group.status)->projects;
        const Kept &rows = kept.at(group.status);
        std::copy_n(is.begin(), rows.before, group.projects.begin());
        std::copy_n(is.end() - static_cast<std::ptrdiff_t>(rows.after), rows.after,
                    at(group.projects, rows.before));
    }
    m_projects = std::move(projects);
    putRowsIn(groups, kept);
    if (const int rows = rowCount(); rows > 0) {
        // A kept row may have other values now, or another place in its group. Views read again
        // only what they show.
        Q_EMIT dataChanged(index(0), index(rows - 1));
    }
}

ProjectRowsModel::KeptRows ProjectRowsModel::keptRows(const std::vector<Project> &projects,
                                                      const std::vector<ProjectGroup> &groups) const
{
    const std::vector<Project> &former = *m_projects;
    const bool sameList = &former == &projects;
    const auto same = [&](std::uint32_t was, std::uint32_t is) {
        return sameList ? was == is : former[was].id == projects[is].id;
    };
    KeptRows kept;
    for (const ProjectGroup &group : m_groups) {
        const ProjectGroup *next = groupOf(groups, group.status);
        if (next == nullptr) {
            continue;
        }
        const Places &was = group.projects;
        const Places &is = next->projects;
        const std::size_t most = std::min(was.size(), is.size());
        Kept &rows = kept.at(group.status);
        while (rows.before < most && same(was[rows.before], is[rows.before])) {
            ++rows.before;
        }
        while (rows.after < most - rows.before &&
               same(was[was.size() - 1 - rows.after], is[is.size() - 1 - rows.after])) {
            ++rows.after;
        }
    }
    return kept;
}

void ProjectRowsModel::takeRowsOut(const KeptRows &kept)
{
    int row = rowCount();
    for (std::size_t place = m_groups.size(); place-- > 0;) {
        Places &places = m_groups[place].projects;
        const Kept &rows = kept.at(m_groups[place].status);
        const std::size_t end = places.size() - rows.after;
        row -= static_cast<int>(places.size());
        if (rows.before == end) {
            continue;
        }
        beginRemoveRows({}, row + static_cast<int>(rows.before), row + static_cast<int>(end) - 1);
        places.erase(at(places, rows.before), at(places, end));
        if (places.empty()) {
            m_groups.erase(m_groups.begin() + static_cast<std::ptrdiff_t>(place));
        }
        endRemoveRows();
    }
}

void ProjectRowsModel::putRowsIn(const std::vector<ProjectGroup> &groups, const KeptRows &kept)
{
    int row = 0;
    for (std::size_t place = 0; place < groups.size(); ++place) {
        const ProjectGroup &group = groups[place];
        const Kept &rows = kept.at(group.status);
        const auto size = static_cast<int>(group.projects.size());
        const auto missing = group.projects.size() - rows.before - rows.after;
        if (missing > 0) {
            const int first = row + static_cast<int>(rows.before);
            beginInsertRows({}, first, first + static_cast<int>(missing) - 1);
            if (rows.before + rows.after == 0) {
                m_groups.insert(m_groups.begin() + static_cast<std::ptrdiff_t>(place), group);
            } else {
                m_groups[place] = group;
            }
            endInsertRows();
        }
        row += size;
    }
}

int ProjectRowsModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid()) {
        return 0;
    }
    std::size_t rows = 0;
    for (const ProjectGroup &group : m_groups) {
        rows += group.projects.size();
    }
    return static_cast<int>(rows);
}

QVariant ProjectRowsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const auto [group, place] = placeOf(index.row());
    const std::string_view status = projectStatuses.at(group->status);
    switch (role) {
    case ProjectRole:
        return QVariant::fromValue(projectRowData((*m_projects)[group->projects[place]], m_rules));
    case FirstRole:
        return place == 0;
    case LastRole:
        return place + 1 == group->projects.size();
    case HeaderRole:
        return place == 0 ? QString::fromStdString(m_rules.uppercased(spacedWords(status)))
                          : QString();
    case HeaderColorRole:
        return statusColor(status);
    default:
        return {};
    }
}

QHash<int, QByteArray> ProjectRowsModel::roleNames() const
{
    return {
        {ProjectRole, "project"},
        {FirstRole, "first"},
        {LastRole, "last"},
        {HeaderRole, "header"},
        {HeaderColorRole, "headerColor"},
    };
}

ProjectRowsModel::Place ProjectRowsModel::placeOf(int row) const
{
    auto place = static_cast<std::size_t>(row);
    const ProjectGroup *group = m_groups.data();
    while (place >= group->projects.size()) {
        place -= group->projects.size();
        ++group;
    }
    return {group, place};
}

} // namespace trellisport
