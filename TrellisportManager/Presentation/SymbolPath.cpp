#include "Presentation/SymbolPath.h"

#include <QHash>
#include <QLineF>
#include <QPolygonF>

#include <cmath>
#include <initializer_list>
#include <numbers>

namespace trellisport {

namespace {

// Outlines are made as they are filled, each run round once: the toolkit's union and difference of
// paths would take longer than all else in the first frame. Filled is what is run round more often
// one way than the other; a hole is run round the other way.
constexpr QPointF centre{12, 12};

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180;
}

QPointF onCircle(double radius, double turn)
{
    const double angle = turn * 2 * std::numbers::pi;
    return {centre.x() + radius * std::sin(angle), centre.y() - radius * std::cos(angle)};
}

QRectF around(QPointF middle, double radius)
{
    return {middle.x() - radius, middle.y() - radius, 2 * radius, 2 * radius};
}

QPainterPath circle(double radius, QPointF middle = centre)
{
    QPainterPath path;
    path.addEllipse(middle, radius, radius);
    return path;
}

QPainterPath circularHole(double radius, QPointF middle = centre)
{
    return circle(radius, middle).toReversed();
}

/// A corner of a circle about the middle, from one direction to another (degrees, as the toolkit
/// counts them: from three o'clock, against the clock).
void addArc(QPainterPath &path, QPointF middle, double radius, double from, double to)
{
    path.arcTo(around(middle, radius), from, to - from);
}

/// What a pen of this radius covers that follows the outline, and all within. The corners are
/// named with the clock. An outline may run back along itself: so a line is drawn.
QPainterPath penned(const QList<QPointF> &corners, double radius)
{
    const auto side = [&](qsizetype number) {
        const qsizetype count = corners.size();
        const QLineF line(corners[number % count], corners[(number + 1) % count]);
        const QLineF normal = QLineF(line.p1(), line.p2()).normalVector().unitVector();
        return line.translated(radius * normal.dx(), radius * normal.dy());
    };
    QPainterPath path;
    for (qsizetype number = 0; number < corners.size(); ++number) {
        const QLineF before = side(number);
        const QLineF after = side(number + 1);
        // Degrees against the clock: a right turn is above 180, and one back along the line is 180,
        // about.
        const double turn = before.angleTo(after);
        QPointF meeting;
        if (turn < 179 && before.intersects(after, &meeting) != QLineF::NoIntersection) {
            number == 0 ? path.moveTo(meeting) : path.lineTo(meeting);
            continue;
        }
        const QPointF corner = corners[(number + 1) % corners.size()];
        number == 0 ? path.moveTo(before.p2()) : path.lineTo(before.p2());
        addArc(path, corner, radius, before.angle() + 90, before.angle() + 90 - (360 - turn));
    }
    path.closeSubpath();
    return path;
}

QPainterPath bars()
{
    QPainterPath path;
    path.addRoundedRect({2.5, 12.5, 5, 8.5}, 1.4, 1.4);
    path.addRoundedRect({9.5, 3, 5, 18}, 1.4, 1.4);
    path.addRoundedRect({16.5, 8, 5, 13}, 1.4, 1.4);
    return path;
}

QPainterPath folder()
{
    constexpr double left = 2;
    constexpr double right = 22;
    constexpr double tabRadius = 2.2;
    constexpr double radius = 2.4;
    constexpr double backTop = 6;
    constexpr double backFoot = 8.9;
    constexpr double frontTop = 10.2;
    constexpr double foot = 20.5;
    const QPointF tabEnd(11.5 - tabRadius, 4 + tabRadius);
    QPainterPath path(QPointF(left, backFoot));
    addArc(path, {left + tabRadius, tabEnd.y()}, tabRadius, 180, 90);
    // Down to where the tab goes over into the back.
    addArc(path, tabEnd, tabRadius, 90, std::asin((tabEnd.y() - backTop) / tabRadius) / radians(1));
    addArc(path, {right - radius, backTop + radius}, radius, 90, 0);
    path.lineTo(right, backFoot);
    path.closeSubpath();
    path.moveTo(left, frontTop);
    path.lineTo(right, frontTop);
    addArc(path, {right - radius, foot - radius}, radius, 0, -90);
    addArc(path, {left + radius, foot - radius}, radius, -90, -180);
    path.closeSubpath();
    return path;
}

QPainterPath gear()
{
    constexpr int teeth = 8;
    QList<QPointF> outline;
    for (int tooth = 0; tooth < teeth; ++tooth) {
        const double turn = double(tooth) / teeth;
        outline << onCircle(8.0, turn - 0.046) << onCircle(10.6, turn - 0.027)
                << onCircle(10.6, turn + 0.027) << onCircle(8.0, turn + 0.046);
    }
    QPainterPath path = penned(outline, 0.45);
    path.addPath(circularHole(3.4));
    return path;
}

QPainterPath checkmarkCircle()
{
    QPainterPath path = circle(10);
    const QPointF bend(10.8, 15.7);
    path.addPath(penned({{7.6, 12.4}, bend, {16.4, 8.4}, bend}, 0.95).toReversed());
    return path;
}

QPainterPath crossCircle()
{
    QPainterPath path = circle(10);
    path.addPath(
        penned({{8.6, 8.6}, centre, {15.4, 8.6}, centre, {15.4, 15.4}, centre, {8.6, 15.4}, centre},
               0.9)
            .toReversed());
    return path;
}

QPainterPath star()
{
    QList<QPointF> outline;
    for (int point = 0; point < 5; ++point) {
        outline << onCircle(10.4, point / 5.0) << onCircle(4.5, (point + 0.5) / 5.0);
    }
    return penned(outline, 0.5);
}

QPainterPath chevron(double tip, double ends, double radius)
{
    const QPointF bend(tip, 12);
    return penned({{ends, 4}, bend, {ends, 20}, bend}, radius);
}

QPainterPath magnifier()
{
    const QPointF middle(10.2, 10.2);
    QPainterPath path = circle(7.2, middle);
    path.addPath(circularHole(5.3, middle));
    path.addPath(penned({{15.2, 15.2}, {20.6, 20.6}}, 1.05));
    return path;
}

QHash<QString, QPainterPath> allSymbols()
{
    QHash<QString, QPainterPath> all{
        {QStringLiteral("chart.bar.fill"), bars()},
        {QStringLiteral("folder.fill"), folder()},
        {QStringLiteral("gearshape.fill"), gear()},
        {QStringLiteral("checkmark.circle.fill"), checkmarkCircle()},
        {QStringLiteral("star.fill"), star()},
        {QStringLiteral("chevron.left"), chevron(7.6, 15.4, 1.15)},
        {QStringLiteral("chevron.right"), chevron(16.4, 8.6, 1.3)},
        {QStringLiteral("magnifyingglass"), magnifier()},
        {QStringLiteral("xmark.circle.fill"), crossCircle()},
    };
    for (QPainterPath &path : all) {
        path.setFillRule(Qt::WindingFill);
    }
    return all;
}

} // namespace

QPainterPath symbolPath(const QString &name)
{
    static const QHash<QString, QPainterPath> symbols = allSymbols();
    return symbols.value(name);
}

} // namespace trellisport
