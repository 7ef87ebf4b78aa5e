#include "EmptySpecimens.h"

#include <QColor>

namespace trellisport::gallery {

namespace {

void collectPlaces(const QQuickItem &item, QList<QQuickItem *> &found)
{
    for (QQuickItem *child : item.childItems()) {
        if (child->objectName() == QLatin1String("specimenPlace")) {
            found << child;
        } else {
            collectPlaces(*child, found);
        }
    }
}

bool isSeen(const QQuickItem &item)
{
    return item.isVisible() && item.opacity() > 0;
}

/// What stands in rows, columns and lists, each for itself.
void collectPieces(const QQuickItem &holder, QList<QQuickItem *> &pieces)
{
    for (QQuickItem *child : holder.childItems()) {
        if (!isSeen(*child) || child->inherits("QQuickRepeater")) {
            continue;
        }
        if (child->inherits("QQuickBasePositioner")) {
            collectPieces(*child, pieces);
        } else if (child->inherits("QQuickListView")) {
            collectPieces(*child->property("contentItem").value<QQuickItem *>(), pieces);
        } else {
            pieces << child;
        }
    }
}

void collectTexts(QQuickItem &item, QList<QQuickItem *> &texts)
{
    if (!isSeen(item)) {
        return;
    }
    if (item.inherits("QQuickText") && !item.property("text").toString().isEmpty()) {
        texts << &item;
    }
    for (QQuickItem *child : item.childItems()) {
        collectTexts(*child, texts);
    }
}

/// Whether anything in a part differs from a colour.
bool differs(const QImage &picture, QRect part, QRgb ground)
{
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            if (picture.pixel(x, y) != ground) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

QList<QQuickItem *> places(const QQuickItem &page)
{
    QList<QQuickItem *> found;
    collectPlaces(page, found);
    return found;
}

QRect partOf(const QImage &picture, const QQuickItem &page, const QQuickItem &item)
{
    const qreal scale = picture.width() / page.width();
    const QRectF place = item.mapRectToItem(&page, QRectF(QPointF(), item.size()));
    return QRectF(place.topLeft() * scale, place.size() * scale).toAlignedRect() & picture.rect();
}

QStringList emptySpecimens(const QQuickItem &page, const QImage &picture)
{
    QStringList empty;
    const QRgb ground = page.property("color").value<QColor>().rgb();
    for (const QQuickItem *place : places(page)) {
        const QString caption = place->parentItem()->property("caption").toString();
        QList<QQuickItem *> pieces;
        collectPieces(*place, pieces);
        if (pieces.isEmpty()) {
            empty << QStringLiteral("\"%1\" has no piece").arg(caption);
        }
        for (qsizetype index = 0; index < pieces.size(); ++index) {
            if (!differs(picture, partOf(picture, page, *pieces[index]), ground)) {
                empty << QStringLiteral("piece %1 of \"%2\" is not seen").arg(index).arg(caption);
            }
            QList<QQuickItem *> texts;
            collectTexts(*pieces[index], texts);
            for (const QQuickItem *text : texts) {
                const QRect part = partOf(picture, page, *text);
                if (part.isEmpty() || !differs(picture, part, picture.pixel(part.topLeft()))) {
                    empty << QStringLiteral("the text \"%1\" of \"%2\" is not seen")
                                 .arg(text->property("text").toString(), caption);
                }
            }
        }
    }
    return empty;
}

} // namespace trellisport::gallery
