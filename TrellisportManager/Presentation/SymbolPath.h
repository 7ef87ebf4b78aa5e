#pragma once

#include <QPainterPath>
#include <QString>

namespace trellisport {

/// The outline of a symbol, to be filled, on a square of 24 by 24. An unknown name gives an empty
/// path. Names: chart.bar.fill, folder.fill, gearshape.fill, checkmark.circle.fill, star.fill,
/// chevron.left, chevron.right, magnifyingglass, xmark.circle.fill.
[[nodiscard]] QPainterPath symbolPath(const QString &name);

} // namespace trellisport
