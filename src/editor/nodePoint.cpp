#include "editor/nodePoint.h"

#include "editor/linkHandle.h"
#include "editor/tqNode.h"

#include <QBrush>
#include <QPen>

namespace {

constexpr double toCorner = 6.25;
constexpr double diameter = 10.0;
constexpr double unseen = 0.01;  // enough to be hit
constexpr double aboveNode = 100.0;

}  // namespace

tNodeCP::tNodeCP(cTQNode& node, const cPointPlace& place, int number)
    : QGraphicsEllipseItem(place.x - toCorner, place.y - toCorner, diameter, diameter, &node),
      x(place.x),
      y(place.y),
      side(place.side),
      index(number),
      owner(node) {
    setPen(Qt::NoPen);
    setBrush(Qt::green);
    setZValue(aboveNode);
    setFlag(ItemSendsGeometryChanges);
    setShown(false);
}

tNodeCP::~tNodeCP() {
    while (!handles.empty()) handles.back()->detach();
}

void tNodeCP::setShown(bool isShown) {
    setOpacity(isShown ? 1.0 : unseen);
    // Nothing is spent on painting what nobody can see: a canvas has many more points than nodes.
    setFlag(ItemHasNoContents, !isShown);
}
