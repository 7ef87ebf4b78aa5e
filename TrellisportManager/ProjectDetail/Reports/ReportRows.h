#pragma once

#include "Presentation/CardRows.h"
#include "ServiceAccess/Records.h"

namespace trellisport {

/// The daily reports on a project, in the service's order.
class ReportRows : public EntryRows<Report> {
public:
    /// rules must outlive the model.
    explicit ReportRows(const platform::TextRules &rules, QObject *parent = nullptr)
        : EntryRows(rules, parent)
    {
    }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] LongTexts longTexts(std::size_t entry) const override;
    [[nodiscard]] QVariant value(const Slice &slice, int role) const override;

private:
    enum OwnRole {
        Date = FirstOwnRole,
        ShowsDate,
        Commits,
        ShowsCommits,
        CommitsStart,
        Changes,
        ShowsChanges,
        ChangesStart,
    };
};

} // namespace trellisport
