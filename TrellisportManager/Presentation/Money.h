#pragma once

#include <QString>

namespace trellisport {

/// A number with this many decimals, a point before them and no grouping, whatever the user's
/// language: rounded as C's "%.Nf" does it, an exact half to the even neighbour.
[[nodiscard]] QString decimalText(double number, int decimals);

/// "$" and the amount: 1234.5 gives $1234.50, -12 gives $-12.00.
[[nodiscard]] QString moneyText(double amount, int decimals = 2);

} // namespace trellisport
