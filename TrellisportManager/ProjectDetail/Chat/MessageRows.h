#pragma once

#include "Presentation/CardRows.h"
#include "ServiceAccess/Records.h"

namespace trellisport {

/// A project's conversation, in the service's order.
class MessageRows : public EntryRows<Message> {
public:
    /// rules must outlive the model.
    explicit MessageRows(const platform::TextRules &rules, QObject *parent = nullptr)
        : EntryRows(rules, parent)
    {
    }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] LongTexts longTexts(std::size_t entry) const override;
    [[nodiscard]] QVariant value(const Slice &slice, int role) const override;

private:
    enum OwnRole { Sender = FirstOwnRole, IsAgent, Body };
};

} // namespace trellisport
