#include "ProjectDetail/Bids/BidRows.h"

#include "Presentation/Money.h"
#include "Presentation/TextPieces.h"
#include "ProjectDetail/Bids/BidColor.h"
#include "ProjectDetail/TextViews.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace trellisport {

namespace {

/// Far more than four lines can hold.
constexpr std::size_t describedCharacters = 4000;

bool isOurs(const BidInfo &bid)
{
    return bid.isOurs.value_or(false);
}

} // namespace

QString periodText(OptionalInteger days)
{
    return QString::number(days.value_or(0)) + QStringLiteral(" days");
}

void BidRows::show(List bids)
{
    std::vector<std::uint32_t> others;
    for (std::size_t place = 0; place < bids->size(); ++place) {
        if (!isOurs((*bids)[place])) {
            others.push_back(static_cast<std::uint32_t>(place));
        }
    }
    const OptionalNumber formerAmount = ourAmount();
    const auto was = [this](std::size_t place) -> const BidInfo & {
        return (*m_bids)[m_others[place]];
    };
    const auto is = [&](std::size_t place) -> const BidInfo & { return (*bids)[others[place]]; };
    exchangeEntries({m_others.size(), others.size(),
                     [&](std::size_t a, std::size_t b) { return was(a) == is(b); },
                     [&](std::size_t place) { return entryKey(was(place)); },
                     [&](std::size_t place) { return entryKey(is(place)); }},
                    [&] {
                        m_bids = std::move(bids);
                        m_others = std::move(others);
                    });
    if (formerAmount != ourAmount()) {
        entriesChanged([](std::size_t) { return true; }, AmountColor);
    }
}

const BidInfo *BidRows::ourBid() const
{
    const auto bid = std::find_if(m_bids->begin(), m_bids->end(), isOurs);
    return bid == m_bids->end() ? nullptr : &*bid;
}

OptionalNumber BidRows::ourAmount() const
{
    const BidInfo *bid = ourBid();
    return bid != nullptr ? bid->amount : OptionalNumber();
}

QHash<int, QByteArray> BidRows::roleNames() const
{
    return withCommonRoles({
        {Username, "username"},
        {DisplayName, "displayName"},
        {Country, "country"},
        {Amount, "amount"},
        {AmountColor, "amountColor"},
        {Period, "period"},
        {Rating, "rating"},
        {Reviews, "reviews"},
        {Description, "description"},
    });
}

CardRows::LongTexts BidRows::copiedTexts(std::size_t entry) const
{
    return {viewOf((*m_bids)[m_others[entry]].description)};
}

QVariant BidRows::value(const Slice &slice, int role) const
{
    const BidInfo &bid = (*m_bids)[m_others[slice.entry]];
    switch (role) {
    case Username:
        return QLatin1Char('@') +
               labelText(bid.username ? bid.username->view() : "unknown", rules());
    case DisplayName:
        return labelText(viewOf(bid.displayName), rules());
    case Country:
        return labelText(viewOf(bid.country), rules());
    case Amount:
        return moneyText(bid.amount.value_or(0));
    case AmountColor:
        return bidColor(bid.amount, ourAmount());
    case Period:
        return QStringLiteral("/ ") + periodText(bid.period);
    case Rating:
        return bid.rating ? decimalText(*bid.rating, 1) : QString();
    case Reviews:
        return bid.reviews ? QStringLiteral("(%1)").arg(*bid.reviews) : QString();
    case Description:
        return displayText(rules().prefix(viewOf(bid.description), describedCharacters));
    default:
        return {};
    }
}

} // namespace trellisport
