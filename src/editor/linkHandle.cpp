#include "editor/linkHandle.h"

#include "editor/nodePoint.h"
#include "editor/tqLink.h"

#include <QPainter>

namespace {

constexpr double halfWidth = 3.0;
constexpr double easyHalfWidth = 7.0;  // of a handle that shows: as large as a hand needs on a small scale
constexpr double aboveLink = 100.0;

QRectF squareOf(double half) { return {-half, -half, 2.0 * half, 2.0 * half}; }

}  // namespace

tLinkCP::tLinkCP(cTQLink& link, const QString& endNamed, eSide firstSide)
    : QGraphicsItem(&link), side(firstSide), owner(link), name(endNamed) {
    setFlags(ItemIsMovable | ItemIsSelectable | ItemSendsGeometryChanges);
    setZValue(aboveLink);
    setCacheMode(DeviceCoordinateCache);
}

tLinkCP::~tLinkCP() {
    if (point != nullptr) std::erase(point->handles, this);
}

void tLinkCP::attach(tNodeCP& newPoint) {
    if (point != nullptr) std::erase(point->handles, this);
    point = &newPoint;
    point->handles.push_back(this);
    side = point->side;
    followPoint();
    owner.handleMoved();  // the side counts, also where the position was right already
    update();
}

void tLinkCP::detach() {
    if (point != nullptr) std::erase(point->handles, this);
    point = nullptr;
    setColour(Qt::red);
}

void tLinkCP::followPoint() {
    if (point != nullptr) moveOnto(*point);
}

void tLinkCP::moveOnto(const tNodeCP& target) { setPos(owner.mapFromScene(target.scenePosition())); }

void tLinkCP::setColour(const QColor& newColour) {
    colour = newColour;
    update();
}

QRectF tLinkCP::boundingRect() const { return squareOf(easyHalfWidth); }

QPainterPath tLinkCP::shape() const {
    const bool isSeen = point == nullptr || isSelected() || owner.isSelected();
    QPainterPath path;
    path.addRect(squareOf(isSeen ? easyHalfWidth : halfWidth));
    return path;
}

void tLinkCP::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    if (point != nullptr && !isSelected() && !owner.isSelected()) return;

    painter->setPen(Qt::black);
    painter->setBrush(colour);
    painter->drawRect(squareOf(halfWidth));
}

QVariant tLinkCP::itemChange(GraphicsItemChange change, const QVariant& value) {
    if (change == ItemPositionHasChanged) owner.handleMoved();
    return QGraphicsItem::itemChange(change, value);
}
