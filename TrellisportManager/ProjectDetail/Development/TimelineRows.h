#pragma once

#include "Presentation/CardRows.h"
#include "ServiceAccess/Records.h"

#include <QColor>

#include <string_view>

namespace trellisport {

/// The colour of an event's dot by its type; gray for every word that is not in the table. Exact,
/// case-sensitive.
[[nodiscard]] QColor timelineColor(std::string_view type);

/// The events of a project's development, in the service's order; events that are alike are
/// separate rows.
class TimelineRows : public EntryRows<TimelineEvent> {
public:
    /// rules must outlive the model.
    explicit TimelineRows(const platform::TextRules &rules, QObject *parent = nullptr)
        : EntryRows(rules, parent)
    {
    }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] LongTexts longTexts(std::size_t entry) const override;
    [[nodiscard]] QVariant value(const Slice &slice, int role) const override;

private:
    enum OwnRole { DotColor = FirstOwnRole, Event, ShowsEvent, Detail, ShowsDetail, HasTime, Time };
};

} // namespace trellisport
