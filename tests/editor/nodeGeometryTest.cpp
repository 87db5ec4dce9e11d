#include "editor/nodeGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

struct cKindOfNode {
    const char* name;
    cNodeShape (*shape)();
    std::vector<int> sides;  // by index
};

/// Every kind of node, with the sides of its points written out.
const std::vector<cKindOfNode> kinds{
    {"Queue", queueShape, {2, 2, 1, 1, 1, 1, 1, 3, 3, 3, 0, 0, 0, 0, 0, 2}},
    {"Fork", forkShape, {2, 1, 1, 1, 3, 0, 0, 0}},
    {"Dynafork", dynaforkShape, {2, 1, 1, 1, 3, 0, 0, 0}},
    {"Assembler", assemblerShape, {2, 1, 1, 1, 3, 0, 0, 0}},
    {"Disassembler", disassemblerShape, {2, 1, 1, 1, 3, 0, 0, 0}},
    {"Combi", combiShape, {3, 3, 0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 2, 2, 3, 2, 3, 2, 3, 2}},
    {"Normal", normalShape, {3, 3, 0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 2, 2, 3, 2, 3, 2, 3, 2}},
    {"Consolidator", consolidatorShape, {0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 2, 2, 2, 3, 3, 3}},
};

class cNodeShapeTest : public ::testing::TestWithParam<cKindOfNode> {};

/// How far a place is from an outline: the least distance to its corners and to many points on it.
double distanceTo(const QPainterPath& outline, const cPointPlace& place) {
    double least = 1e9;
    constexpr int steps = 1000;
    for (int i = 0; i <= steps; ++i) {
        const QPointF on = outline.pointAtPercent(static_cast<double>(i) / steps);
        least = std::min(least, std::hypot(on.x() - place.x, on.y() - place.y));
    }
    return least;
}

}  // namespace

TEST_P(cNodeShapeTest, pointsHaveTheSidesOfTheirNumbers) {
    std::vector<int> sides;
    for (const cPointPlace& place : GetParam().shape().points) sides.push_back(place.side);

    EXPECT_EQ(sides, GetParam().sides);
}

// The outline is walked in steps of at most 0.2, and its longest is 200.
TEST_P(cNodeShapeTest, pointsLieOnTheOutline) {
    const cNodeShape shape = GetParam().shape();

    for (const cPointPlace& place : shape.points)
        EXPECT_LT(distanceTo(shape.outline, place), 0.15) << place.x << ' ' << place.y;
}

INSTANTIATE_TEST_SUITE_P(kinds, cNodeShapeTest, ::testing::ValuesIn(kinds),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(cCombiShapeTest, pointsStandInTheOrderOfModelFiles) {
    const std::vector<cPointPlace> points = combiShape().points;

    ASSERT_EQ(points.size(), 20U);
    const std::vector<QPointF> expected{{-25, -15}, {-30, 20}, {-20, -20}, {-20, 20}, {-10, -20}, {-10, 20}, {0, -20},
                                        {0, 20},    {10, -20}, {10, 20},   {20, -20}, {20, 20},   {30, -20}, {30, 20},
                                        {-30, -10}, {30, -10}, {-30, 0},   {30, 0},   {-30, 10},  {30, 10}};
    for (std::size_t i = 0; i < points.size(); ++i) EXPECT_EQ(QPointF(points[i].x, points[i].y), expected[i]) << i;
}

struct cRestCase {
    QPointF released;
    QSizeF size;
    QPointF rest;
};

class cRestPositionTest : public ::testing::TestWithParam<cRestCase> {};

TEST_P(cRestPositionTest, isOnTheGridInsideTheField) {
    EXPECT_EQ(restPosition(GetParam().released, GetParam().size), GetParam().rest);
}

INSTANTIATE_TEST_SUITE_P(places, cRestPositionTest,
                         ::testing::Values(cRestCase{{23, 47}, {40, 40}, {20, 50}},
                                           cRestCase{{25, 35}, {40, 40}, {30, 40}},  // half away from zero
                                           cRestCase{{-80, 3}, {40, 40}, {20, 20}},
                                           cRestCase{{4999, 7000}, {60, 40}, {4970, 4980}},
                                           cRestCase{{4994, 2}, {20, 20}, {4990, 10}}));
