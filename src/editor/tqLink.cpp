#include "editor/tqLink.h"

#include "editor/linkHandle.h"
#include "editor/linkRoute.h"
#include "editor/nodeGeometry.h"
#include "editor/nodePoint.h"
#include "editor/penWidth.h"
#include "editor/tqFusionQueue.h"
#include "editor/typedNode.h"
#include "flow/releasers.h"
#include "kernel/queue.h"

#include <QPainter>
#include <QPainterPathStroker>
#include <QStyleOptionGraphicsItem>

namespace {

constexpr const char* firstTypeName = "Default";
constexpr QPointF firstStart{0.0, -20.0};
constexpr QPointF firstEnd{0.0, 20.0};
constexpr double hitWidth = 10.0;
constexpr double highlightWidth = 3.0;
constexpr double paintedMargin = 12.0;  // around the route: the arrowhead, half the widest pen, a handle

}  // namespace

cTQLink::cTQLink(const std::string& name)
    : cLink(name),
      startHandle(new tLinkCP(*this, QLatin1String(tLinkCP::startName), sideRight)),
      endHandle(new tLinkCP(*this, QLatin1String(tLinkCP::endName), sideLeft)) {
    setLinkKind(kindIncomplete);
    if (cResType* type = network().findResourceType(firstTypeName)) setResType(type);
    setFlags(ItemIsMovable | ItemIsSelectable | ItemSendsGeometryChanges);
    startHandle->setPos(firstStart);
    endHandle->setPos(firstEnd);
}

cTQLink::~cTQLink() {
    if (predFusion != nullptr) predFusion->removeEnd(*this, true);
    if (succFusion != nullptr) succFusion->removeEnd(*this, false);
}

bool cTQLink::connectEnd(bool isStart, cTQNode* node) {
    auto* fusion = dynamic_cast<cTQFusionQueue*>(node);
    cNode* engineNode = node;
    if (fusion != nullptr) engineNode = fusion->fusedQueue();
    const eLinkKind kind = isStart ? cLink::setPredNode(engineNode) : cLink::setSuccNode(engineNode);
    if (kind == kindRefused) return false;

    cTQFusionQueue*& place = isStart ? predFusion : succFusion;
    if (place != nullptr) place->removeEnd(*this, isStart);
    place = fusion;
    if (place != nullptr) place->addEnd(*this, isStart);
    writeTabs();
    return true;
}

bool cTQLink::isConnectedTo(bool isStart, const cTQNode* node) const {
    const auto* fusion = dynamic_cast<const cTQFusionQueue*>(node);
    const cNode* engineNode = node;
    if (fusion != nullptr) engineNode = fusion->fusedQueue();
    const cNode* present = isStart ? getPredNode() : getSuccNode();
    return present != nullptr && present == engineNode && fusionAt(isStart) == fusion;
}

bool cTQLink::dropHandle(bool isStart, tNodeCP* point) {
    tLinkCP* handle = handleFor(isStart);
    if (point == nullptr) {
        handle->detach();
        if ((isStart ? getPredNode() : getSuccNode()) != nullptr || fusionAt(isStart) != nullptr)
            connectEnd(isStart, nullptr);
        return true;
    }
    handle->side = point->side;
    handle->moveOnto(*point);
    // A handle that only slides along its node keeps the connection: connecting anew would reset the rules of the link.
    if (!isConnectedTo(isStart, &point->node()) && !connectEnd(isStart, &point->node())) {
        handle->detach();
        handleMoved();
        return false;
    }
    handle->attach(*point);
    return true;
}

/// A handle that a file has put on the queue behind the fusion queue lets go as well.
void cTQLink::forgetFusion(const cTQFusionQueue& fusion) {
    for (const bool isStart : {true, false}) {
        if (fusionAt(isStart) != &fusion) continue;
        connectEnd(isStart, nullptr);
        handleFor(isStart)->detach();
    }
}

void cTQLink::handleMoved() {
    if (startHandle == nullptr || endHandle == nullptr) return;

    const QRectF before = paintedRect();
    prepareGeometryChange();
    route = linkRoute(startHandle->pos(), startHandle->side, endHandle->pos(), endHandle->side);
    arrow = arrowHead(endHandle->pos(), endHandle->side);
    update(before.united(paintedRect()));
}

void cTQLink::runOnFlowStatements() {
    if (!animation::isOn) return cLink::runOnFlowStatements();  // the way of nearly all flows

    cLink::runOnFlowStatements();
    showStep([] {});
}

QRectF cTQLink::paintedRect() const {
    return route.boundingRect().adjusted(-paintedMargin, -paintedMargin, paintedMargin, paintedMargin);
}

/// Unlike a node, a selected link shows it during a run too.
QPen cTQLink::linkPen() const {
    if (getHighlight() != 0) return QPen(Qt::black, highlightWidth);
    return QPen(isSelected() ? Qt::green : Qt::black, 1.0);
}

QRectF cTQLink::boundingRect() const { return paintedRect(); }

QPainterPath cTQLink::shape() const {
    QPainterPathStroker stroker;
    stroker.setWidth(hitWidth);
    stroker.setCapStyle(Qt::FlatCap);
    return stroker.createStroke(route);
}

/// A line that leaves a node downwards, or runs around it, doesn't strike its name out.
void cTQLink::leaveOutCaptions(QPainter& painter) const {
    for (const tLinkCP* handle : {startHandle, endHandle}) {
        if (handle->attachment() == nullptr) continue;
        const cTQNode& node = handle->attachment()->node();
        const QRectF caption = mapRectFromItem(&node, node.captionRect());
        const bool isNear = route.controlPointRect().intersects(caption);  // which costs less to ask
        if (!isNear || !route.intersects(caption)) continue;
        QPainterPath around;
        around.addRect(paintedRect().united(caption));
        around.addRect(caption);  // inside the other: what is between the two stays
        painter.setClipPath(around, Qt::IntersectClip);
    }
}

void cTQLink::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    QPen pen = linkPen();
    pen.setWidthF(penWidth(pen.widthF(), *painter));
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    painter->save();
    leaveOutCaptions(*painter);
    painter->drawPath(linkShaft(route, endHandle->side));
    painter->restore();
    painter->setPen(QPen(pen.color(), 1.0));
    painter->setBrush(Qt::black);
    painter->drawPolygon(arrow);
}

QVariant cTQLink::itemChange(GraphicsItemChange change, const QVariant& value) {
    if (change == ItemPositionHasChanged) {  // ends in use stay where they are
        startHandle->followPoint();
        endHandle->followPoint();
    }
    if (change == ItemSelectedHasChanged) {  // which decides whether handles are seen
        startHandle->update();
        endHandle->update();
    }
    return QGraphicsItem::itemChange(change, value);
}
