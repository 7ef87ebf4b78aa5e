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

// Shapes are combined on a much finer grid than they are named on: the toolkit turns curves into
// short lines when it combines them, and on the fine grid nobody sees those.
constexpr double fine = 64;
constexpr QPointF centre{12, 12};

QPainterPath magnified(const QPainterPath &path)
{
    return QTransform::fromScale(fine, fine).map(path);
}

QPointF onCircle(double radius, double turn)
{
    const double angle = turn * 2 * std::numbers::pi;
    return {centre.x() + radius * std::sin(angle), centre.y() - radius * std::cos(angle)};
}

QPainterPath circle(double radius)
{
    QPainterPath path;
    path.addEllipse(centre, radius, radius);
    return magnified(path);
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
    return magnified(stroker.createStroke(line)).simplified();
}

QPainterPath roundedBox(const QRectF &box, double radius)
{
    QPainterPath path;
    path.addRoundedRect(box, radius, radius);
    return magnified(path);
}

QPainterPath box(const QRectF &box)
{
    return roundedBox(box, 0);
}

/// A closed outline whose corners are softened by a line of this width around it.
QPainterPath softened(const QPolygonF &outline, double width)
{
    QPainterPath sharp;
    sharp.addPolygon(outline);
    sharp.closeSubpath();
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setJoinStyle(Qt::RoundJoin);
    return magnified(sharp).united(magnified(stroker.createStroke(sharp)));
}

QPainterPath bars()
{
    return roundedBox({2.5, 12.5, 5, 8.5}, 1.4)
        .united(roundedBox({9.5, 3, 5, 18}, 1.4))
        .united(roundedBox({16.5, 8, 5, 13}, 1.4));
}

QPainterPath folder()
{
    const QPainterPath tab = roundedBox({2, 4, 9.5, 8}, 2.2);
    const QPainterPath back = roundedBox({2, 6, 20, 8}, 2.4);
    const QPainterPath front = roundedBox({2, 10.2, 20, 10.3}, 2.4).united(box({2, 10.2, 20, 4}));
    return tab.united(back).subtracted(box({0, 8.9, 24, 6})).united(front);
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
    return softened(outline, 0.9).united(circle(8.2)).subtracted(circle(3.4));
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
    return softened(outline, 1.0);
}

QPainterPath magnifier()
{
    const QPointF middle(10.2, 10.2);
    QPainterPath lens;
    lens.addEllipse(middle, 7.2, 7.2);
    QPainterPath hole;
    hole.addEllipse(middle, 5.3, 5.3);
    return magnified(lens)
        .subtracted(magnified(hole))
        .united(stroked({{15.2, 15.2}, {20.6, 20.6}}, 2.1));
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

} // namespace

QPainterPath symbolPath(const QString &name)
{
    static const QHash<QString, QPainterPath> symbols = [] {
        QHash<QString, QPainterPath> all = allSymbols();
        for (QPainterPath &path : all) {
            path = QTransform::fromScale(1 / fine, 1 / fine).map(path);
        }
        return all;
    }();
    return symbols.value(name);
}

} // namespace trellisport
