#pragma once

#include "Presentation/CardRows.h"
#include "ServiceAccess/Records.h"

namespace trellisport {

/// The entries of a project's development log, in the service's order.
class LogRows : public EntryRows<DevLog> {
public:
    /// rules must outlive the model.
    explicit LogRows(const platform::TextRules &rules, QObject *parent = nullptr)
        : EntryRows(rules, parent)
    {
    }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] LongTexts longTexts(std::size_t entry) const override;
    [[nodiscard]] QVariant value(const Slice &slice, int role) const override;

private:
    enum OwnRole { LogType = FirstOwnRole, HasTime, Time, Body };
};

} // namespace trellisport
