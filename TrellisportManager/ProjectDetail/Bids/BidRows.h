#pragma once

#include "Presentation/CardRows.h"
#include "ServiceAccess/Records.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace trellisport {

/// The bids of a project: the agent's own, and the rows of the competitors'. Rows are told apart by
/// their place, not by the bidder.
class BidRows : public CardRows {
public:
    using List = std::shared_ptr<const std::vector<BidInfo>>;

    /// rules must outlive the model.
    explicit BidRows(const platform::TextRules &rules, QObject *parent = nullptr)
        : CardRows(rules, parent)
    {
    }

    void show(List bids);
    /// The first bid marked as ours, or null; lives until show() is called again.
    [[nodiscard]] const BidInfo *ourBid() const;
    /// How many competing bids there are: those not marked as ours.
    [[nodiscard]] std::size_t otherCount() const { return m_others.size(); }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    /// A bid's card shows four lines of its only long text, so that no card is ever cut.
    [[nodiscard]] LongTexts longTexts(std::size_t /*entry*/) const override { return {}; }
    [[nodiscard]] LongTexts copiedTexts(std::size_t entry) const override;
    [[nodiscard]] QVariant value(const Slice &slice, int role) const override;

private:
    // Texts are finished; an empty one is not shown.
    enum OwnRole {
        Username = FirstOwnRole,
        DisplayName,
        Country,
        Amount,
        AmountColor,
        Period,
        Rating,
        Reviews,
        Description,
    };

    [[nodiscard]] OptionalNumber ourAmount() const;

    List m_bids = std::make_shared<const std::vector<BidInfo>>();
    std::vector<std::uint32_t> m_others; ///< places in m_bids
};

/// A delivery time: the number and " days"; 0 when there is none.
[[nodiscard]] QString periodText(OptionalInteger days);

} // namespace trellisport
