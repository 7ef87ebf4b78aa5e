#include "Presentation/SymbolImage.h"

#include "Presentation/SymbolPath.h"

#include <QPainter>

#include <algorithm>

namespace trellisport {

SymbolImage::SymbolImage(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void SymbolImage::setSymbol(const QString &symbol)
{
    if (m_symbol != symbol) {
        m_symbol = symbol;
        Q_EMIT symbolChanged();
        update();
    }
}

void SymbolImage::setColor(const QColor &color)
{
    if (m_color != color) {
        m_color = color;
        Q_EMIT colorChanged();
        update();
    }
}

void SymbolImage::paint(QPainter *painter)
{
    const double side = std::min(width(), height());
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate((width() - side) / 2, (height() - side) / 2);
    painter->scale(side / 24, side / 24);
    painter->fillPath(symbolPath(m_symbol), m_color);
}

} // namespace trellisport
