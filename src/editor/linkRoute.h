#pragma once

#include "editor/side.h"

#include <QPainterPath>
#include <QPointF>
#include <QPolygonF>

/// The road of a link between its two handles: straight runs along the axes, joined by quarter circles.
///
/// The route leaves `start` and enters `end` at right angles to their sides. The gap between the points, along the
/// direction in which the line leaves or comes in, decides:
///   - from 40 on, the corners are quarters of a circle 20 wide; from 20 to 40 they are cut to half of the gap, so that
///     two of them still find room;
///   - below 20, or with the end behind, the line turns 20 away from the points and goes around; where it then passes
///     along a node it stays 40 away from the handle, and so clear of the node. Handles that face each other with less
///     than 40 between their rows, and so no room for the line to come back, are joined directly even then.
///
/// A straight line joins handles that face each other out of line by less than 1, or all but touch: less than 1 apart,
/// less than 40 out of line.
/// The path begins with a move to `start` and ends with a line to `end`; where both are one point it holds the move
/// alone. Scene units.
QPainterPath linkRoute(QPointF start, eSide startSide, QPointF end, eSide endSide);

/// The triangle at the end of a link: tip first, then the two corners of its base, 8.66025403784 in front of the node.
QPolygonF arrowHead(QPointF end, eSide endSide);

/// `route` as it is drawn beneath the arrowhead: it ends inside the triangle and not at its tip, which a line as wide
/// as the pen would blunt. A last run that is too short for this stays as it is.
QPainterPath linkShaft(QPainterPath route, eSide endSide);
