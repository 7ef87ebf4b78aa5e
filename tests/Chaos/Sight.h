#pragma once

#include <QList>
#include <QPointF>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QStringList>

namespace trellisport::chaos {

/// What a person sees in a window, at one moment; the items may be gone after the next event.
class Sight {
public:
    explicit Sight(const QQuickWindow &window);

    /// What can be pressed, in drawing order.
    [[nodiscard]] const QList<QQuickItem *> &controls() const { return m_controls; }
    /// What can be typed into.
    [[nodiscard]] const QList<QQuickItem *> &fields() const { return m_fields; }
    [[nodiscard]] const QStringList &texts() const { return m_texts; }
    /// Controls of this objectName.
    [[nodiscard]] QList<QQuickItem *> controls(const QString &name) const;
    /// The topmost seen item of this objectName; null when there is none.
    [[nodiscard]] QQuickItem *item(const QString &name) const;

    /// The middle of what is seen of an item, in the window.
    [[nodiscard]] static QPointF middle(const QQuickItem *item);

private:
    void look(QQuickItem *item, QRectF seen);

    QList<QQuickItem *> m_items;
    QList<QQuickItem *> m_controls;
    QList<QQuickItem *> m_fields;
    QStringList m_texts;
};

} // namespace trellisport::chaos
