#include "editor/nodeGeometry.h"

#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double activityHalfWidth = 30.0;
constexpr double activityHalfHeight = 20.0;
constexpr double queueRadius = 20.0;
constexpr double branchRadius = 10.0;

QPainterPath closedPath(const QPolygonF& corners) {
    QPainterPath path;
    path.addPolygon(corners);
    path.closeSubpath();
    return path;
}

QPainterPath circle(double radius) {
    QPainterPath path;
    path.addEllipse(QPointF(0.0, 0.0), radius, radius);
    return path;
}

/// The side of a place on the outline of an activity, by where it lies.
cPointPlace placeAt(double x, double y) {
    if (x == -activityHalfWidth) return {x, y, sideLeft};
    if (x == activityHalfWidth) return {x, y, sideRight};
    return {x, y, y == -activityHalfHeight ? sideTop : sideBottom};
}

/// Places at the top and the bottom, a pair for each x.
void appendColumns(std::vector<cPointPlace>& points, double fromX, double toX) {
    for (double x = fromX; x <= toX; x += gridStep) {
        points.push_back(placeAt(x, -activityHalfHeight));
        points.push_back(placeAt(x, activityHalfHeight));
    }
}

/// Places at the left and the right, a pair for each y.
void appendRows(std::vector<cPointPlace>& points) {
    for (double y = -gridStep; y <= gridStep; y += gridStep) {
        points.push_back(placeAt(-activityHalfWidth, y));
        points.push_back(placeAt(activityHalfWidth, y));
    }
}

/// Places evenly on a circle, clockwise from the right.
/// @param sidewards how many places up and down from the middle one still count as right and left.
std::vector<cPointPlace> circlePoints(int count, double radius, int sidewards) {
    std::vector<cPointPlace> points;
    for (int index = 0; index < count; ++index) {
        const double angle = 2.0 * std::numbers::pi * index / count;
        eSide side = index < count / 2 ? sideBottom : sideTop;
        if (index <= sidewards || index >= count - sidewards) side = sideRight;
        if (std::abs(index - count / 2) <= sidewards) side = sideLeft;
        points.push_back({radius * std::cos(angle), radius * std::sin(angle), side});
    }
    return points;
}

cNodeShape branchShape(const QPainterPath& mark) {
    return {circle(branchRadius), mark, circlePoints(8, branchRadius, 0)};
}

QPainterPath segments(std::initializer_list<std::pair<QPointF, QPointF>> pairs) {
    QPainterPath path;
    for (const auto& [from, to] : pairs) {
        path.moveTo(from);
        path.lineTo(to);
    }
    return path;
}

/// Holds a coordinate so that `length` around it stays in the field, then moves it to the grid.
double restCoordinate(double released, double length) {
    const double held = std::clamp(released, length / 2.0, fieldLength - length / 2.0);
    return std::round(held / gridStep) * gridStep;
}

}  // namespace

cNodeShape combiShape() {
    cNodeShape shape;
    shape.outline = closedPath({{-30.0, 20.0}, {-30.0, -10.0}, {-20.0, -20.0}, {30.0, -20.0}, {30.0, 20.0}});
    shape.points = {{-25.0, -15.0, sideLeft}, placeAt(-30.0, 20.0)};  // the first lies on the cut corner
    appendColumns(shape.points, -20.0, 30.0);
    appendRows(shape.points);
    return shape;
}

cNodeShape normalShape() {
    cNodeShape shape;
    shape.outline.addRect(-activityHalfWidth, -activityHalfHeight, 2.0 * activityHalfWidth, 2.0 * activityHalfHeight);
    appendColumns(shape.points, -30.0, 30.0);
    appendRows(shape.points);
    return shape;
}

cNodeShape consolidatorShape() {
    cNodeShape shape;
    shape.outline = closedPath({{-20.0, -20.0}, {30.0, -20.0}, {30.0, 20.0}, {-20.0, 20.0}, {-30.0, 0.0}});
    appendColumns(shape.points, -20.0, 20.0);
    for (double y = -gridStep; y <= gridStep; y += gridStep) shape.points.push_back(placeAt(30.0, y));
    shape.points.push_back({-25.0, -10.0, sideLeft});
    shape.points.push_back({-30.0, 0.0, sideLeft});
    shape.points.push_back({-25.0, 10.0, sideLeft});
    return shape;
}

cNodeShape queueShape() { return {circle(queueRadius), {}, circlePoints(16, queueRadius, 1)}; }

cNodeShape forkShape() {
    return branchShape(segments({{{-10.0, 0.0}, {0.0, 0.0}}, {{0.0, 0.0}, {7.0, -7.0}}, {{0.0, 0.0}, {7.0, 7.0}}}));
}

cNodeShape dynaforkShape() {
    QPainterPath mark = forkShape().mark;
    mark.moveTo(0.0, 0.0);
    mark.lineTo(10.0, 0.0);
    return branchShape(mark);
}

cNodeShape assemblerShape() { return branchShape(segments({{{-6.0, 0.0}, {6.0, 0.0}}, {{0.0, -6.0}, {0.0, 6.0}}})); }

cNodeShape disassemblerShape() { return branchShape(segments({{{-6.0, 0.0}, {6.0, 0.0}}})); }

QPointF restPosition(QPointF released, QSizeF nodeSize) {
    return {restCoordinate(released.x(), nodeSize.width()), restCoordinate(released.y(), nodeSize.height())};
}
