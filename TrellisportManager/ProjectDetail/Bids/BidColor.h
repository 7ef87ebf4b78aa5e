#pragma once

#include "ServiceAccess/Records.h"

#include <QColor>

namespace trellisport {

/// The colour of a competitor's amount beside ours: red below it, green above it, else white; white
/// also when either is absent.
[[nodiscard]] QColor bidColor(OptionalNumber amount, OptionalNumber ourAmount);

} // namespace trellisport
