#pragma once

#include <QList>
#include <QQuickItem>
#include <QRectF>

#include <string>

namespace trellisport::test {

/// What a person sees and uses of a scene, each in drawing order.
struct SeenItems {
    QList<QQuickItem *> texts;    ///< that show something
    QList<QQuickItem *> controls; ///< that are pressed or typed in
};

/// All of it in the item's window, also what has to be scrolled to.
[[nodiscard]] SeenItems seenItems(QQuickItem *root);
/// What of an item is seen in the window; empty when it has to be scrolled to.
[[nodiscard]] QRectF shownPart(const QQuickItem *item);
/// Whether it stands in a strip that is scrolled sideways.
[[nodiscard]] bool scrollsSideways(const QQuickItem *item);
[[nodiscard]] bool isTextField(const QQuickItem *item);
/// For a person.
[[nodiscard]] std::string nameOf(const QQuickItem *item);

} // namespace trellisport::test
