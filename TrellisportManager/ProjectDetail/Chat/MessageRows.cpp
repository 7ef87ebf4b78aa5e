#include "ProjectDetail/Chat/MessageRows.h"

#include "Presentation/TextPieces.h"

namespace trellisport {

QHash<int, QByteArray> MessageRows::roleNames() const
{
    return withCommonRoles({{Sender, "sender"}, {IsAgent, "isAgent"}, {Body, "body"}});
}

CardRows::LongTexts MessageRows::longTexts(std::size_t number) const
{
    return {entry(number).messageText.view()};
}

QVariant MessageRows::value(const Slice &slice, int role) const
{
    const Text &sender = entry(slice.entry).sender;
    switch (role) {
    case Sender:
        // Shortened first: whatever its length, what is capitalised is a label.
        return QString::fromStdString(
            rules().capitalized(labelText(sender, rules()).toStdString()));
    case IsAgent:
        return sender == "agent";
    case Body:
        return piece(slice, 0).shown();
    default:
        return {};
    }
}

} // namespace trellisport
