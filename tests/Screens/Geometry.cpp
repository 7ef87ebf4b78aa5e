#include "Geometry.h"

#include "QmlSupport/QmlScene.h"

#include <QQuickWindow>

namespace trellisport::test {

namespace {

bool takesPresses(const QQuickItem *item)
{
    return item->inherits("QQuickAbstractButton") ||
           item->metaObject()->className() == QByteArray("LinkText_QMLTYPE") ||
           QByteArray(item->metaObject()->className()).startsWith("LinkText");
}

void collect(QQuickItem *item, SeenItems &seen)
{
    if (!item->isVisible() || item->opacity() == 0) {
        return;
    }
    if (item->inherits("QQuickText") && !textOf(item).isEmpty()) {
        seen.texts << item;
    }
    if (takesPresses(item) || isTextField(item)) {
        seen.controls << item;
    }
    for (QQuickItem *child : item->childItems()) {
        collect(child, seen);
    }
}

} // namespace

SeenItems seenItems(QQuickItem *root)
{
    SeenItems seen;
    collect(root, seen);
    return seen;
}

QRectF shownPart(const QQuickItem *item)
{
    QRectF shown = sceneRect(item) & QRectF(QPointF(), QSizeF(item->window()->size()));
    for (const QQuickItem *at = item->parentItem(); at != nullptr; at = at->parentItem()) {
        if (at->clip() || at->inherits("QQuickFlickable")) {
            shown &= sceneRect(at);
        }
    }
    return shown;
}

bool scrollsSideways(const QQuickItem *item)
{
    for (const QQuickItem *at = item; at != nullptr; at = at->parentItem()) {
        if (at->objectName() == QLatin1String("stripScroll") ||
            at->objectName() == QLatin1String("chipStrip")) {
            return true;
        }
    }
    return false;
}

bool isTextField(const QQuickItem *item)
{
    return item->inherits("QQuickTextInput") || item->inherits("QQuickTextEdit");
}

std::string nameOf(const QQuickItem *item)
{
    return (item->objectName() + QLatin1String(" \"") + textOf(item) + QLatin1Char('"'))
        .toStdString();
}

} // namespace trellisport::test
