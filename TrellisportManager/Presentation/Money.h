#pragma once

#include <QString>

namespace trellisport {

/// "$" and the amount with the given number of decimals, a point before them and no grouping,
/// whatever the user's language: 1234.5 gives $1234.50, -12 gives $-12.00.
[[nodiscard]] QString moneyText(double amount, int decimals = 2);

} // namespace trellisport
