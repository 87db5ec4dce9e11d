#pragma once

#include "editor/side.h"

#include <QPainterPath>
#include <QPointF>
#include <QSizeF>
#include <vector>

/// The shapes of nodes, and where nodes may stand. Pure, in the units of the scene; a node's own origin is its middle.

/// A place on the outline where links can begin and end. Its index in the list is its number in model files.
struct cPointPlace {
    double x = 0.0;
    double y = 0.0;
    eSide side = sideTop;
};

struct cNodeShape {
    QPainterPath outline;             ///< closed; what is filled and what a click hits
    QPainterPath mark;                ///< what tells kinds of one outline apart; empty for most
    std::vector<cPointPlace> points;  ///< all on the outline
};

cNodeShape combiShape();
cNodeShape normalShape();
cNodeShape consolidatorShape();
cNodeShape queueShape();
cNodeShape forkShape();
cNodeShape dynaforkShape();
cNodeShape assemblerShape();
cNodeShape disassemblerShape();

/// The side of the scene's field that nodes stay in, from 0 on.
inline constexpr double fieldLength = 5000.0;
/// The distance of the dots of the scene, to which nodes come to rest.
inline constexpr double gridStep = 10.0;

/// Where a released node comes to rest: its whole rectangle inside the field, then on the grid, half away from zero.
QPointF restPosition(QPointF released, QSizeF nodeSize);
