#include "editor/penWidth.h"

#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <algorithm>

double penWidth(double width, const QPainter& painter) {
    const double scale = QStyleOptionGraphicsItem::levelOfDetailFromTransform(painter.worldTransform());
    return width / std::clamp(scale, smallestScale, 1.0);
}
