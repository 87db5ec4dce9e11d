#include "editor/linkRoute.h"

#include <QRectF>
#include <QSizeF>
#include <QtMath>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

// There are sixteen pairs of sides, and one route for each. Seen from the start, with the direction in which the line
// leaves as the x axis, only three of them differ: the end faces the start, looks the same way, or stands across. So a
// route is laid in that frame, as the corner points of a line along the axes, and rounded on the way back.

namespace {

constexpr double aligned = 1.0;       // handles closer than this to one row count as being on it
constexpr double stub = 20.0;         // from a point to the first turn of a detour; a smaller gap has no room for one
constexpr double wideGap = 2 * stub;  // room for two stubs, and for corners of full size
constexpr double passing = 40.0;      // from a handle to a run along its node, which reaches 20 or 30 aside
constexpr double cornerSize = 20.0;   // the square whose inscribed circle gives a corner
constexpr double arrowHalfBase = 5.0;
constexpr double arrowHeight = 8.66025403784;

using cPoints = std::vector<QPointF>;

/// The corner points of a route in the frame of its start, the end included, the start not.
struct cCourse {
    cPoints points;
    QSizeF corner{cornerSize, cornerSize};  // upper bound of the rectangles that give the corners
};

double dot(QPointF a, QPointF b) { return QPointF::dotProduct(a, b); }

/// The coordinate at which a line between 0 and `gap` turns: a stub from 0, or the middle where two stubs don't fit.
double turnBefore(double gap) { return std::min(stub, gap / 2); }

/// The rectangle of a corner on the open way to a point at `end`: cut in a narrow space.
QSizeF openCorner(QPointF end) {
    return {std::min(cornerSize, std::abs(end.x()) / 2), std::min(cornerSize, std::abs(end.y()) / 2)};
}

/// To an end that faces the start: it is entered in the direction of x.
cCourse courseToFacing(QPointF end) {
    const auto [x, y] = std::pair{end.x(), end.y()};
    const double row = std::abs(y);
    const bool isBeside = row < wideGap;  // too near for a line that comes back between the two
    if (x >= 0 && (row < aligned || (x < aligned && isBeside))) return {{end}};
    if (x >= stub || (x >= 0 && isBeside)) return {{{x / 2, 0}, {x / 2, y}, end}, openCorner(end)};

    const double around = y > 0 ? y + passing : y - passing;
    const double back = row >= stub ? y / 2 : around;
    return {{{stub, 0}, {stub, back}, {x - stub, back}, {x - stub, y}, end}};
}

/// To an end on the same side as the start: it is entered against the direction of x.
cCourse courseToSameSide(QPointF end) {
    const auto [x, y] = std::pair{end.x(), end.y()};
    const double row = std::abs(y);
    if (row >= stub || row > std::abs(x)) {
        const double beyond = std::max(0.0, x) + stub;
        return {{{beyond, 0}, {beyond, y}, end}};
    }
    // One node stands in the other's way: around it, on the side where this is shorter.
    const double towards = y < 0 ? -passing : passing;
    const double around = x > 0 ? y - towards : towards;
    return {{{stub, 0}, {stub, around}, {x + stub, around}, {x + stub, y}, end}};
}

/// To an end that stands across: it is entered in the direction of y.
cCourse courseToAcross(QPointF end) {
    const auto [x, y] = std::pair{end.x(), end.y()};
    const bool isAhead = x >= stub;
    const bool isBelow = y >= stub;
    if (isAhead && isBelow) return {{{x, 0}, end}, openCorner(end)};

    const auto hook = [&](double column, double row) { return cCourse{{{column, 0}, {column, row}, {x, row}, end}}; };
    if (isAhead) return hook(turnBefore(x), std::min(0.0, y) - stub);
    if (isBelow) return hook(std::max(0.0, x) + stub, y - turnBefore(y));
    return hook(std::max(stub, x + passing), std::min(-passing, y - stub));
}

/// Goes straight towards `corner` and around it, to the direction of `next`.
///
/// A corner takes no more than half of the runs beside it, so that the next one finds its share.
void addCorner(QPainterPath& path, QPointF previous, QPointF corner, QPointF next, QSizeF size) {
    const QPointF in = corner - previous;
    const QPointF out = next - corner;
    const double radiusX = std::min(size.width(), std::abs(in.x() + out.x())) / 2;
    const double radiusY = std::min(size.height(), std::abs(in.y() + out.y())) / 2;
    if (qFuzzyIsNull(radiusX) || qFuzzyIsNull(radiusY)) {
        path.lineTo(corner);
        return;
    }

    const auto towards = [&](QPointF run) {
        const bool isLevel = std::abs(run.x()) > std::abs(run.y());  // the other one is zero but for rounding
        return isLevel ? QPointF{std::copysign(radiusX, run.x()), 0} : QPointF{0, std::copysign(radiusY, run.y())};
    };
    const QPointF centre = corner - towards(in) + towards(out);
    const QRectF oval{centre.x() - radiusX, centre.y() - radiusY, 2 * radiusX, 2 * radiusY};
    const double startAngle = qRadiansToDegrees(std::atan2(out.y(), -out.x()));
    const bool turnsRight = in.x() * out.y() - in.y() * out.x() > 0;
    path.arcTo(oval, startAngle, turnsRight ? -90 : 90);
}

}  // namespace

QPainterPath linkRoute(QPointF start, eSide startSide, QPointF end, eSide endSide) {
    QPainterPath path{start};
    if (start == end) return path;

    const QPointF ahead = outward(startSide);
    const QPointF entering = -outward(endSide);
    const bool isAcross = dot(ahead, entering) == 0;
    const QPointF aside = isAcross ? entering : QPointF{-ahead.y(), ahead.x()};

    const QPointF seen{dot(end - start, ahead), dot(end - start, aside)};
    const cCourse course = isAcross            ? courseToAcross(seen)
                           : entering == ahead ? courseToFacing(seen)
                                               : courseToSameSide(seen);

    cPoints points{start};
    for (const QPointF& point : course.points) points.push_back(start + point.x() * ahead + point.y() * aside);
    points.back() = end;
    const QSizeF corner = ahead.x() != 0 ? course.corner : course.corner.transposed();

    for (std::size_t i = 1; i + 1 < points.size(); ++i)
        addCorner(path, points[i - 1], points[i], points[i + 1], corner);
    path.lineTo(end);
    return path;
}

QPolygonF arrowHead(QPointF end, eSide endSide) {
    const QPointF away = outward(endSide);
    const QPointF along{-away.y(), away.x()};
    const QPointF base = end + arrowHeight * away;
    return QPolygonF{{end, base + arrowHalfBase * along, base - arrowHalfBase * along}};
}

QPainterPath linkShaft(QPainterPath route, eSide endSide) {
    const int last = route.elementCount() - 1;
    if (last < 1) return route;

    const QPointF away = outward(endSide);
    const QPointF end = route.elementAt(last);
    const QPointF before = route.elementAt(last - 1);
    const double setBack = arrowHeight / 2;
    if (dot(before - end, away) <= setBack) return route;

    const QPointF inside = end + setBack * away;
    route.setElementPositionAt(last, inside.x(), inside.y());
    return route;
}
