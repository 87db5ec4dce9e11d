#include "editor/linkRoute.h"

#include <gtest/gtest.h>

#include <QLineF>
#include <QList>
#include <QRectF>
#include <QTransform>

#include <array>
#include <cmath>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

namespace {

constexpr std::array sides{sideTop, sideBottom, sideRight, sideLeft};
constexpr QPointF start{300.0, 200.0};

double length(QPointF vector) { return std::hypot(vector.x(), vector.y()); }

/// Zero for two vectors that point the same way.
double turnBetween(QPointF first, QPointF second) { return length(first / length(first) - second / length(second)); }

/// A pair of sides and the way from one handle to the other.
struct cJoin {
    eSide startSide = sideRight;
    eSide endSide = sideLeft;
    QPointF way;

    QPointF end() const { return start + way; }
    QPainterPath route() const { return linkRoute(start, startSide, end(), endSide); }
    bool areFacing() const { return outward(startSide) == -outward(endSide); }
    /// How far the end lies ahead of the start, and how far aside.
    double ahead() const { return QPointF::dotProduct(way, outward(startSide)); }
    double aside() const { return startSide == sideTop || startSide == sideBottom ? way.x() : way.y(); }
};

void PrintTo(const cJoin& join, std::ostream* out) {
    static constexpr std::array names{"top", "bottom", "right", "left"};
    *out << names[static_cast<std::size_t>(join.startSide)] << " to " << names[static_cast<std::size_t>(join.endSide)]
         << ", " << join.way.x() << " across and " << join.way.y() << " down";
}

using cSidePair = std::tuple<eSide, eSide>;

std::vector<cJoin> joinsAt(cSidePair pair, const std::vector<double>& distances) {
    std::vector<cJoin> joins;
    for (const double x : distances)
        for (const double y : distances) joins.push_back({std::get<0>(pair), std::get<1>(pair), {x, y}});
    return joins;
}

/// In every quadrant and on the axes: aligned, below the threshold of 1, below 20, up to 40, from 40 on, far.
std::vector<cJoin> allJoins(cSidePair pair) {
    return joinsAt(pair,
                   {0, 0.5, -0.5, 1, -1, 8, -8, 19.5, -19.5, 20, -20, 33, -33, 40, -40, 55, -55, 120, -120, 700, -700});
}

/// Where nodes stand apart, and the line finds its way between them or around.
std::vector<cJoin> roomyJoins(cSidePair pair) {
    return joinsAt(pair, {0, 12, -12, 60, -60, 95, -95, 150, -150, 600, -600});
}

bool isStraight(const QPainterPath& route) { return route.elementCount() <= 2; }

/// What stands behind a handle: the box of an activity or the circle of a queue, touched by the handle.
struct cNodeBehind {
    bool isBox = true;
    QPointF handle;
    eSide side = sideRight;

    QPointF middle() const {
        const bool isSidewards = side == sideLeft || side == sideRight;
        return handle - (isBox && isSidewards ? 30.0 : 20.0) * outward(side);
    }
    QRectF around(double space) const {
        const double halfWidth = (isBox ? 30.0 : 20.0) + space;
        return {middle().x() - halfWidth, middle().y() - 20 - space, 2 * halfWidth, 40 + 2 * space};
    }
    /// The outline itself isn't inside.
    bool holds(QPointF point) const {
        constexpr double touch = 1e-6;
        const QPointF off = point - middle();
        if (!isBox) return length(off) < 20 - touch;
        return std::abs(off.x()) < 30 - touch && std::abs(off.y()) < 20 - touch;
    }
};

std::vector<QPointF> pointsAlong(const QPainterPath& route) {
    std::vector<QPointF> points;
    for (const QPolygonF& line : route.toSubpathPolygons())
        for (int i = 1; i < line.size(); ++i)
            for (int step = 0; step <= 20; ++step) points.push_back(line[i - 1] + (line[i] - line[i - 1]) * step / 20);
    return points;
}

/// The width and the height of each corner.
std::vector<std::pair<double, double>> cornersOf(const QPainterPath& route) {
    std::vector<std::pair<double, double>> corners;
    for (int i = 1; i + 2 < route.elementCount(); ++i) {
        if (!route.elementAt(i).isCurveTo()) continue;
        const QPointF span = QPointF{route.elementAt(i + 2)} - QPointF{route.elementAt(i - 1)};
        corners.emplace_back(std::abs(span.x()), std::abs(span.y()));
    }
    return corners;
}

bool crossesItself(const QPainterPath& route) {
    const QPolygonF line = route.toSubpathPolygons().value(0);
    for (int i = 1; i < line.size(); ++i)
        for (int k = i + 2; k < line.size(); ++k)
            if (QLineF{line[i - 1], line[i]}.intersects(QLineF{line[k - 1], line[k]}) == QLineF::BoundedIntersection)
                return true;
    return false;
}

/// The nearest place whose coordinates, and their sums and differences, are not rounded.
QPointF exactPlace(QPointF place) {
    constexpr double parts = 1024;
    return {std::round(place.x() * parts) / parts, std::round(place.y() * parts) / parts};
}

/// One pair of sides, tried at every distance.
class cLinkRouteTest : public ::testing::TestWithParam<cSidePair> {};

}  // namespace

TEST_P(cLinkRouteTest, beginsAtTheStartAndEndsAtTheEnd) {
    for (const cJoin& join : allJoins(GetParam())) {
        SCOPED_TRACE(::testing::PrintToString(join));

        const QPainterPath route = join.route();

        EXPECT_EQ(QPointF{route.elementAt(0)}, start);
        EXPECT_EQ(route.currentPosition(), join.end());
    }
}

TEST_P(cLinkRouteTest, isOneLineWithoutJumpsAndKinks) {
    for (const cJoin& join : allJoins(GetParam())) {
        SCOPED_TRACE(::testing::PrintToString(join));

        const QPainterPath route = join.route();

        ASSERT_TRUE(route.elementAt(0).isMoveTo());
        QPointF heading;
        for (int i = 1; i < route.elementCount(); ++i) {
            ASSERT_FALSE(route.elementAt(i).isMoveTo());
            const QPointF run = QPointF{route.elementAt(i)} - QPointF{route.elementAt(i - 1)};
            const bool isInsideCurve = route.elementAt(i).type == QPainterPath::CurveToDataElement;
            if (i > 1 && !isInsideCurve) {
                EXPECT_LT(turnBetween(heading, run), 1e-6) << "at element " << i;
            }
            heading = run;
        }
    }
}

TEST_P(cLinkRouteTest, leavesAndEntersAtARightAngle) {
    for (const cJoin& join : allJoins(GetParam())) {
        SCOPED_TRACE(::testing::PrintToString(join));

        const QPainterPath route = join.route();

        if (isStraight(route)) continue;  // up to 1 out of its row, as the test of straight routes tells
        const int last = route.elementCount() - 1;
        const QPointF leaving = QPointF{route.elementAt(1)} - QPointF{route.elementAt(0)};
        const QPointF entering = QPointF{route.elementAt(last)} - QPointF{route.elementAt(last - 1)};
        EXPECT_LT(turnBetween(leaving, outward(join.startSide)), 1e-6);
        EXPECT_LT(turnBetween(entering, -outward(join.endSide)), 1e-6);
    }
}

TEST_P(cLinkRouteTest, isStraightExactlyWhereHandlesFaceInOneRow) {
    for (const cJoin& join : allJoins(GetParam())) {
        SCOPED_TRACE(::testing::PrintToString(join));
        if (join.way.isNull()) continue;  // no line at all
        const double aside = std::abs(join.aside());
        const bool isInRow = join.ahead() >= 0 && (aside < 1 || (join.ahead() < 1 && aside < 40));

        EXPECT_EQ(isStraight(join.route()), join.areFacing() && isInRow);
    }
}

TEST_P(cLinkRouteTest, turnsWithTheScene) {
    static constexpr std::array turned{sideRight, sideLeft, sideBottom, sideTop};
    const QTransform quarter{0, 1, -1, 0, 0, 0};  // clockwise: top becomes right
    for (const cJoin& join : allJoins(GetParam())) {
        SCOPED_TRACE(::testing::PrintToString(join));

        const QPainterPath route = linkRoute(quarter.map(start), turned[static_cast<std::size_t>(join.startSide)],
                                             quarter.map(join.end()), turned[static_cast<std::size_t>(join.endSide)]);

        const QPainterPath expected = quarter.map(join.route());
        ASSERT_EQ(route.elementCount(), expected.elementCount());
        for (int i = 0; i < route.elementCount(); ++i)
            EXPECT_LT(length(QPointF{route.elementAt(i)} - QPointF{expected.elementAt(i)}), 1e-6);
    }
}

TEST_P(cLinkRouteTest, isNotBentByRoundedCoordinates) {
    const auto [startSide, endSide] = GetParam();
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(i);
        const QPointF from{150 * std::cos(i), 150 * std::sin(i)};
        const QPointF to{150 * std::cos(7.1 * i + 1), 150 * std::sin(7.1 * i + 1)};

        const QPainterPath route = linkRoute(from, startSide, to, endSide);

        const QPainterPath expected = linkRoute(exactPlace(from), startSide, exactPlace(to), endSide);
        ASSERT_EQ(route.elementCount(), expected.elementCount());
        for (int k = 0; k < route.elementCount(); ++k)
            EXPECT_LT(length(QPointF{route.elementAt(k)} - QPointF{expected.elementAt(k)}), 0.01);
    }
}

TEST_P(cLinkRouteTest, staysOutOfItsOwnNodesWhereThereIsRoom) {
    int looked = 0;
    for (const cJoin& join : roomyJoins(GetParam())) {
        SCOPED_TRACE(::testing::PrintToString(join));
        const std::vector<QPointF> line = pointsAlong(join.route());
        for (const bool startIsBox : {true, false})
            for (const bool endIsBox : {true, false}) {
                const cNodeBehind before{startIsBox, start, join.startSide};
                const cNodeBehind behind{endIsBox, join.end(), join.endSide};
                if (before.around(10).intersects(behind.around(10))) continue;  // no room for a stub between them
                ++looked;
                for (const QPointF point : line)
                    ASSERT_FALSE(before.holds(point) || behind.holds(point)) << point.x() << ", " << point.y();
            }
    }
    EXPECT_GT(looked, 300);
}

TEST_P(cLinkRouteTest, doesNotCrossItselfWhereThereIsRoom) {
    for (const cJoin& join : roomyJoins(GetParam())) {
        SCOPED_TRACE(::testing::PrintToString(join));
        if (std::abs(join.way.x()) < 20 && std::abs(join.way.y()) < 20) continue;  // no room for a stub

        EXPECT_FALSE(crossesItself(join.route()));
    }
}

TEST_P(cLinkRouteTest, hasAShaftThatEndsInsideTheArrowhead) {
    for (const cJoin& join : allJoins(GetParam())) {
        SCOPED_TRACE(::testing::PrintToString(join));
        const QPainterPath route = join.route();
        const int last = route.elementCount() - 1;
        const QPointF beforeEnd = last < 1 ? join.end() : QPointF{route.elementAt(last - 1)};
        const double lastRun = QPointF::dotProduct(beforeEnd - join.end(), outward(join.endSide));

        const QPainterPath shaft = linkShaft(route, join.endSide);

        const double setBack = length(shaft.currentPosition() - join.end());
        EXPECT_NEAR(setBack, lastRun > 4.5 ? 8.66025403784 / 2 : 0, 1e-6);
    }
}

TEST_P(cLinkRouteTest, isAPointWhereBothHandlesLieOnOne) {
    const QPainterPath route = cJoin{std::get<0>(GetParam()), std::get<1>(GetParam()), {0, 0}}.route();

    EXPECT_EQ(route.elementCount(), 1);
    EXPECT_EQ(route.currentPosition(), start);
}

INSTANTIATE_TEST_SUITE_P(sixteenPairs, cLinkRouteTest,
                         ::testing::Combine(::testing::ValuesIn(sides), ::testing::ValuesIn(sides)));

namespace {

struct cBounds {
    cJoin join;
    QRectF bounds;  // relative to the start
};
class cDetourTest : public ::testing::TestWithParam<cBounds> {};

}  // namespace

TEST_P(cDetourTest, keepsItsDistance) {
    const QRectF bounds = GetParam().join.route().boundingRect().translated(-start);

    EXPECT_NEAR(bounds.left(), GetParam().bounds.left(), 1e-6);
    EXPECT_NEAR(bounds.right(), GetParam().bounds.right(), 1e-6);
    EXPECT_NEAR(bounds.top(), GetParam().bounds.top(), 1e-6);
    EXPECT_NEAR(bounds.bottom(), GetParam().bounds.bottom(), 1e-6);
}

// Stubs of 20; 40 where the line passes along a node, whose handle is in the middle of a side.
INSTANTIATE_TEST_SUITE_P(
    detours, cDetourTest,
    ::testing::Values(cBounds{{sideRight, sideRight, {150, 0}}, {0, -40, 170, 40}},    // the far node stands in the way
                      cBounds{{sideRight, sideRight, {-150, 0}}, {-150, 0, 170, 40}},  // its own node does
                      cBounds{{sideRight, sideRight, {150, 19}}, {0, -21, 170, 40}},   // a gap below 20
                      cBounds{{sideRight, sideRight, {150, 20}}, {0, 0, 170, 20}},     // and from 20 on
                      cBounds{{sideRight, sideLeft, {-100, 80}}, {-120, 0, 140, 80}},  // back between the two
                      cBounds{{sideRight, sideLeft, {-100, 20}}, {-120, 0, 140, 20}},  // no less than 20 of room
                      cBounds{{sideRight, sideLeft, {-100, 19}}, {-120, 0, 140, 59}},  // around both
                      cBounds{{sideRight, sideLeft, {19, 80}}, {-1, 0, 21, 80}},       // facing, no room for stubs
                      cBounds{{sideRight, sideLeft, {19, 39}}, {0, 0, 19, 39}},        // nor to come back
                      cBounds{{sideRight, sideTop, {100, -60}}, {0, -80, 100, 80}},    // up first, then in from above
                      cBounds{{sideRight, sideTop, {100, 19}}, {0, -20, 100, 39}},     // too low a drop
                      cBounds{{sideRight, sideTop, {19, 100}}, {0, 0, 39, 100}},       // too near a column
                      cBounds{{sideRight, sideTop, {-100, 100}}, {-100, 0, 120, 100}},   // below its own node
                      cBounds{{sideRight, sideTop, {-100, -50}}, {-100, -70, 120, 70}},  // 20 above the end
                      cBounds{{sideRight, sideTop, {-100, 10}}, {-100, -40, 120, 50}},   // over its own node
                      cBounds{{sideRight, sideTop, {0, -100}}, {0, -120, 40, 120}}));    // past the other one

namespace {

struct cCorners {
    cJoin join;
    std::vector<std::pair<double, double>> corners;
};
class cCornerTest : public ::testing::TestWithParam<cCorners> {};

}  // namespace

TEST_P(cCornerTest, isAQuarterOfItsRectangle) {
    const auto corners = cornersOf(GetParam().join.route());

    ASSERT_EQ(corners.size(), GetParam().corners.size());
    for (std::size_t i = 0; i < corners.size(); ++i) {
        EXPECT_NEAR(corners[i].first, GetParam().corners[i].first, 1e-6);
        EXPECT_NEAR(corners[i].second, GetParam().corners[i].second, 1e-6);
    }
}

INSTANTIATE_TEST_SUITE_P(
    thresholds, cCornerTest,
    ::testing::Values(cCorners{{sideRight, sideTop, {40, 40}}, {{10, 10}}},
                      cCorners{{sideRight, sideTop, {30, 40}}, {{7.5, 10}}},
                      cCorners{{sideRight, sideTop, {40, 20}}, {{10, 5}}},
                      cCorners{{sideRight, sideLeft, {40, 40}}, {{10, 10}, {10, 10}}},
                      cCorners{{sideRight, sideLeft, {30, 12}}, {{7.5, 3}, {7.5, 3}}},
                      cCorners{{sideBottom, sideTop, {12, 30}}, {{3, 7.5}, {3, 7.5}}},
                      cCorners{{sideRight, sideRight, {50, 20}}, {{10, 10}, {10, 10}}},
                      cCorners{{sideRight, sideLeft, {-90, 40}}, {{10, 10}, {10, 10}, {10, 10}, {10, 10}}},
                      cCorners{{sideRight, sideLeft, {-90, 30}}, {{10, 7.5}, {10, 7.5}, {10, 7.5}, {10, 7.5}}},
                      cCorners{{sideRight, sideTop, {40, 0}}, {{10, 10}, {10, 10}, {10, 10}}},
                      cCorners{{sideRight, sideTop, {30, 0}}, {{7.5, 10}, {7.5, 10}, {7.5, 10}}}));

TEST(arrowHead, pointsIntoTheNodeFromEachSide) {
    constexpr double height = 8.66025403784;
    const QPointF tip{100, 50};

    EXPECT_EQ(arrowHead(tip, sideTop), (QPolygonF{{tip, {105, 50 - height}, {95, 50 - height}}}));
    EXPECT_EQ(arrowHead(tip, sideBottom), (QPolygonF{{tip, {95, 50 + height}, {105, 50 + height}}}));
    EXPECT_EQ(arrowHead(tip, sideRight), (QPolygonF{{tip, {100 + height, 55}, {100 + height, 45}}}));
    EXPECT_EQ(arrowHead(tip, sideLeft), (QPolygonF{{tip, {100 - height, 45}, {100 - height, 55}}}));
}
