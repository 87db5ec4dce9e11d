#pragma once

class QPainter;

/// The least scale that pens keep their width down to; the window's smallest zoom is a little above it.
inline constexpr double smallestScale = 0.3;

/// How wide a pen has to be, in units of the scene, to look `width` wide. On a canvas below its full size it looks as
/// wide as at full size: a line thinner than a pixel would fade.
double penWidth(double width, const QPainter& painter);

/// The most that `penWidth` gives, for bounding rectangles.
constexpr double widestPen(double width) { return width / smallestScale; }
