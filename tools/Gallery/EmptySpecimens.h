#pragma once

#include <QImage>
#include <QList>
#include <QQuickItem>
#include <QRect>
#include <QStringList>

namespace trellisport::gallery {

/// Where the specimens of a page keep their pieces, from top to bottom.
[[nodiscard]] QList<QQuickItem *> places(const QQuickItem &page);

/// What of the page's picture shows an item, in pixels.
[[nodiscard]] QRect partOf(const QImage &picture, const QQuickItem &page, const QQuickItem &item);

/// The pieces of which nothing is seen in the page's picture, and the texts: a sentence each.
[[nodiscard]] QStringList emptySpecimens(const QQuickItem &page, const QImage &picture);

} // namespace trellisport::gallery
