#include "ProjectDetail/Overview/OverviewRows.h"

#include "Platform/Platform.h"

namespace trellisport {

OverviewRows::OverviewRows()
    : OverviewRows(platform::Platform::current().textRules())
{
}

OverviewRows::OverviewRows(const platform::TextRules &rules, QObject *parent)
    : EntryRows(rules, parent)
{
}

void OverviewRows::setProject(const ProjectRecord &project)
{
    if (m_project == project) {
        return;
    }
    m_project = project;
    std::vector<OverviewCard> cards;
    const auto add = [&cards](const QString &title, const OptionalText &text) {
        if (text && !text->empty()) {
            cards.push_back({title, *text});
        }
    };
    if (project.project) {
        add(QStringLiteral("Description"), project.project->description);
        add(QStringLiteral("Delivery Plan"), project.project->deliveryPlan);
    }
    show(std::move(cards));
    Q_EMIT projectChanged();
}

QHash<int, QByteArray> OverviewRows::roleNames() const
{
    return withCommonRoles({{Title, "title"}, {Body, "body"}});
}

CardRows::LongTexts OverviewRows::longTexts(std::size_t number) const
{
    return {entry(number).text.view()};
}

QVariant OverviewRows::value(const Slice &slice, int role) const
{
    switch (role) {
    case Title:
        return entry(slice.entry).title;
    case Body:
        return piece(slice, 0).shown();
    default:
        return {};
    }
}

} // namespace trellisport
