#pragma once

#include "Platform/TextRules.h"
#include "ProjectsList/ProjectGroups.h"
#include "ServiceAccess/Records.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <array>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace trellisport {

/// The rows of the projects list, one for each project of each group; the first row of a group
/// brings the group's header. What a new state keeps of the old one keeps its rows, so that a view
/// stays where it is. Texts are made when a row is asked for. Main thread only.
class ProjectRowsModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The screen's model owns it")
public:
    enum Role {
        ProjectRole = Qt::UserRole, ///< ProjectRowData
        FirstRole,                  ///< whether the row is the first of its group
        LastRole,                   ///< whether it is the last
        HeaderRole,                 ///< the group's header on its first row, else empty
        HeaderColorRole,
    };

    using Projects = std::shared_ptr<const std::vector<Project>>;

    /// rules must outlive the model.
    explicit ProjectRowsModel(const platform::TextRules &rules, QObject *parent = nullptr);

    /// Shows these groups of these projects from now on. The groups are in the order of their
    /// statuses, each status once and none empty; projects is not null.
    void show(Projects projects, std::vector<ProjectGroup> groups);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    /// A group and a place in it.
    using Place = std::pair<const ProjectGroup *, std::size_t>;

    /// How many rows of a status stay as they are: at the group's beginning and at its end.
    struct Kept {
        std::size_t before = 0;
        std::size_t after = 0;
    };
    using KeptRows = std::array<Kept, projectStatuses.size()>;

    [[nodiscard]] Place placeOf(int row) const;
    [[nodiscard]] KeptRows keptRows(const std::vector<Project> &projects,
                                    const std::vector<ProjectGroup> &groups) const;
    void takeRowsOut(const KeptRows &kept);
    void putRowsIn(const std::vector<ProjectGroup> &groups, const KeptRows &kept);

    const platform::TextRules &m_rules;
    Projects m_projects;
    std::vector<ProjectGroup> m_groups;
};

} // namespace trellisport
