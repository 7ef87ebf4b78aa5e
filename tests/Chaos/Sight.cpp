#include "Chaos/Sight.h"

#include <QMetaMethod>
#include <QRectF>

#include <algorithm>

namespace trellisport::chaos {

namespace {

/// Less than this of a control is not aimed at.
constexpr double leastSeen = 4;

bool isText(const QQuickItem *item)
{
    return item->inherits("QQuickText") || item->inherits("QQuickTextInput") ||
           item->inherits("QQuickTextEdit");
}

bool isField(const QQuickItem *item)
{
    return (item->inherits("QQuickTextInput") || item->inherits("QQuickTextEdit")) &&
           !item->property("readOnly").toBool();
}

} // namespace

Sight::Sight(const QQuickWindow &window)
{
    look(window.contentItem(), QRectF(QPointF(), QSizeF(window.size())));
}

void Sight::look(QQuickItem *item, QRectF seen)
{
    if (!item->isVisible() || item->opacity() <= 0) {
        return;
    }
    const QRectF place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    const QRectF shown = place & seen;
    if (item->clip()) {
        seen = shown;
    }
    if (shown.width() >= leastSeen && shown.height() >= leastSeen) {
        m_items << item;
        if (isText(item)) {
            m_texts << item->property("text").toString();
        }
        if (item->isEnabled() && isField(item)) {
            m_fields << item;
        } else if (item->isEnabled() && item->inherits("QQuickAbstractButton")) {
            m_controls << item;
        }
    }
    QList<QQuickItem *> children = item->childItems();
    std::stable_sort(children.begin(), children.end(),
                     [](const QQuickItem *a, const QQuickItem *b) { return a->z() < b->z(); });
    for (QQuickItem *child : children) {
        look(child, seen);
    }
}

QList<QQuickItem *> Sight::controls(const QString &name) const
{
    QList<QQuickItem *> found = m_controls;
    found.removeIf([&](const QQuickItem *item) { return item->objectName() != name; });
    return found;
}

QQuickItem *Sight::item(const QString &name) const
{
    const auto found = std::find_if(m_items.rbegin(), m_items.rend(), [&](const QQuickItem *item) {
        return item->objectName() == name;
    });
    return found == m_items.rend() ? nullptr : *found;
}

QPointF Sight::middle(const QQuickItem *item)
{
    QRectF seen(QPointF(), QSizeF(item->window()->size()));
    for (const QQuickItem *at = item; at != nullptr; at = at->parentItem()) {
        if (at == item || at->clip()) {
            seen &= at->mapRectToScene(QRectF(0, 0, at->width(), at->height()));
        }
    }
    return seen.center();
}

} // namespace trellisport::chaos
