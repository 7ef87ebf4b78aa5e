#pragma once

#include "Presentation/CardRows.h"
#include "ProjectDetail/ProjectRecord.h"

#include <QString>

#include <string>

namespace trellisport {

/// A titled card with one text.
struct OverviewCard {
    QString title;
    Text text;

    [[nodiscard]] std::string identity() const { return title.toStdString(); }
    friend bool operator==(const OverviewCard &, const OverviewCard &) = default;
};

/// The cards of a project's overview: its description and its delivery plan, each only when there
/// is one and it is not empty.
class OverviewRows : public EntryRows<OverviewCard> {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(trellisport::ProjectRecord project READ project WRITE setProject NOTIFY
                   projectChanged FINAL)
public:
    OverviewRows();
    /// rules must outlive the model.
    explicit OverviewRows(const platform::TextRules &rules, QObject *parent = nullptr);

    [[nodiscard]] const ProjectRecord &project() const { return m_project; }
    void setProject(const ProjectRecord &project);

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void projectChanged();

protected:
    [[nodiscard]] LongTexts longTexts(std::size_t entry) const override;
    [[nodiscard]] QVariant value(const Slice &slice, int role) const override;

private:
    enum OwnRole { Title = FirstOwnRole, Body };

    ProjectRecord m_project;
};

} // namespace trellisport
