#include "Presentation/SymbolPath.h"

#include <QHash>
#include <QPainterPathStroker>
#include <QPolygonF>
#include <QTransform>

#include <cmath>
#include <initializer_list>
#include <numbers>

namespace trellisport {

namespace {

constexpr QPointF centre{12, 12};

QPointF onCircle(double radius, double turn)
{
    const double angle = turn * 2 * std::numbers::pi;
    return {centre.x() + radius * std::sin(angle), centre.y() - radius * std::cos(angle)};
}

QPainterPath circle(double radius)
{
    QPainterPath path;
    path.addEllipse(centre, radius, radius);
    return path;
}

/// A line with round ends and corners, as an outline.
QPainterPath stroked(std::initializer_list<QPointF> points, double width)
{
    QPainterPath line;
    line.addPolygon(QPolygonF(QList<QPointF>(points)));
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(line).simplified();
}

QPainterPath bars()
{
    QPainterPath path;
    path.addRoundedRect(QRectF(2.5, 12.5, 5, 8.5), 1.4, 1.4);
    path.addRoundedRect(QRectF(9.5, 3, 5, 18), 1.4, 1.4);
    path.addRoundedRect(QRectF(16.5, 8, 5, 13), 1.4, 1.4);
    return path;
}

QPainterPath folder()
{
    QPainterPath back;
    back.addRoundedRect(QRectF(2, 4, 11, 8), 2.4, 2.4);
    back.addRoundedRect(QRectF(2, 6, 20, 8), 2.4, 2.4);
    back.setFillRule(Qt::WindingFill);
    QPainterPath gap;
    gap.addRect(QRectF(0, 8.9, 24, 1.3));
    QPainterPath front;
    front.addRoundedRect(QRectF(2, 10.2, 20, 10.3), 2.4, 2.4);
    QPainterPath squareTop;
    squareTop.addRect(QRectF(2, 10.2, 20, 4));
    return back.simplified().subtracted(gap).subtracted(squareTop).united(front).united(squareTop);
}

QPainterPath gear()
{
    constexpr int teeth = 8;
    QPolygonF outline;
    for (int tooth = 0; tooth < teeth; ++tooth) {
        const double turn = double(tooth) / teeth;
        outline << onCircle(8.0, turn - 0.046) << onCircle(10.6, turn - 0.027)
                << onCircle(10.6, turn + 0.027) << onCircle(8.0, turn + 0.046);
    }
    QPainterPath toothed;
    toothed.addPolygon(outline);
    toothed.closeSubpath();
    QPainterPathStroker softener;
    softener.setWidth(0.9);
    softener.setJoinStyle(Qt::RoundJoin);
    const QPainterPath body = toothed.united(softener.createStroke(toothed)).united(circle(8.2));
    return body.subtracted(circle(3.4));
}

QPainterPath checkmarkCircle()
{
    return circle(10).subtracted(stroked({{7.6, 12.4}, {10.8, 15.7}, {16.4, 8.4}}, 1.9));
}

QPainterPath crossCircle()
{
    const QPainterPath cross =
        stroked({{8.6, 8.6}, {15.4, 15.4}}, 1.8).united(stroked({{15.4, 8.6}, {8.6, 15.4}}, 1.8));
    return circle(10).subtracted(cross);
}

QPainterPath star()
{
    QPolygonF outline;
    for (int point = 0; point < 5; ++point) {
        outline << onCircle(10.4, point / 5.0) << onCircle(4.5, (point + 0.5) / 5.0);
    }
    QPainterPath sharp;
    sharp.addPolygon(outline);
    sharp.closeSubpath();
    QPainterPathStroker softener;
    softener.setWidth(1.0);
    softener.setJoinStyle(Qt::RoundJoin);
    return sharp.united(softener.createStroke(sharp));
}

QPainterPath magnifier()
{
    QPainterPath lens;
    lens.addEllipse(QPointF(10.2, 10.2), 7.2, 7.2);
    QPainterPath hole;
    hole.addEllipse(QPointF(10.2, 10.2), 5.3, 5.3);
    return lens.subtracted(hole).united(stroked({{15.2, 15.2}, {20.6, 20.6}}, 2.1));
}

QHash<QString, QPainterPath> allSymbols()
{
    return {
        {QStringLiteral("chart.bar.fill"), bars()},
        {QStringLiteral("folder.fill"), folder()},
        {QStringLiteral("gearshape.fill"), gear()},
        {QStringLiteral("checkmark.circle.fill"), checkmarkCircle()},
        {QStringLiteral("star.fill"), star()},
        {QStringLiteral("chevron.left"), stroked({{15.4, 4}, {7.6, 12}, {15.4, 20}}, 2.3)},
        {QStringLiteral("chevron.right"), stroked({{8.6, 4}, {16.4, 12}, {8.6, 20}}, 2.6)},
        {QStringLiteral("magnifyingglass"), magnifier()},
        {QStringLiteral("xmark.circle.fill"), crossCircle()},
    };
}

}  // namespace

QPainterPath symbolPath(const QString &name)
{
    static const QHash<QString, QPainterPath> symbols = allSymbols();
    return symbols.value(name);
}

}  // namespace trellisport
