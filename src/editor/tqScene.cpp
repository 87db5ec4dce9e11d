#include "editor/tqScene.h"

#include "editor/linkHandle.h"
#include "editor/nodeGeometry.h"
#include "editor/nodePoint.h"
#include "editor/tqFusionQueue.h"
#include "editor/tqLink.h"
#include "editor/tqNode.h"
#include "kernel/combi.h"
#include "kernel/queue.h"

#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <cmath>

namespace {

constexpr QColor dotColour{200, 200, 200};

template <typename cItem>
cItem* firstOf(const QList<QGraphicsItem*>& items) {
    for (QGraphicsItem* item : items)
        if (auto* found = dynamic_cast<cItem*>(item)) return found;
    return nullptr;
}

bool isQueue(const cNode& node) {
    return dynamic_cast<const cNodeQueue*>(&node) != nullptr || dynamic_cast<const cTQFusionQueue*>(&node) != nullptr;
}

bool isCombi(const cNode& node) { return dynamic_cast<const cNodeActCombi*>(&node) != nullptr; }

/// The point that a handle dragged to `position` would take, among what lies there.
tNodeCP* pointAmong(const QList<QGraphicsItem*>& items, QPointF position) {
    if (auto* point = firstOf<tNodeCP>(items)) return point;
    const auto* node = firstOf<cTQNode>(items);
    return node == nullptr ? nullptr : node->pointNearestTo(position);
}

bool isRunOn() { return cNetwork::current().simState != 0; }

}  // namespace

bool maySit(const tLinkCP& handle, const cTQNode& node) {
    if (handle.isStart()) {
        const cNode* successor = handle.link().getSuccNode();
        return successor == nullptr || isCombi(*successor) == isQueue(node);
    }
    const cNode* predecessor = handle.link().getPredNode();
    return predecessor == nullptr || isQueue(*predecessor) == isCombi(node);
}

cTQScene::cTQScene(QObject* parent) : QGraphicsScene(parent) { setSceneRect(0.0, 0.0, fieldLength, fieldLength); }

cTQScene::~cTQScene() = default;

void cTQScene::insertElement(cTQNetworkElement& element) {
    addItem(&element);
    Q_EMIT itemInserted(&element);
}

/// The handle in the mouse's hand, or the one on top at the position, or null. A handle that has jumped onto a point is
/// no longer under the mouse.
tLinkCP* cTQScene::handleAt(QPointF position) const {
    if (auto* held = dynamic_cast<tLinkCP*>(mouseGrabberItem())) return held;
    const QList<QGraphicsItem*> items = this->items(position);
    return items.isEmpty() ? nullptr : dynamic_cast<tLinkCP*>(items.front());
}

void cTQScene::mousePressEvent(QGraphicsSceneMouseEvent* event) {
    const bool isLeft = event->button() == Qt::LeftButton;
    if (isLeft && isRunOn() && handleAt(event->scenePos()) != nullptr) return;  // links stay as they are during a run

    QGraphicsScene::mousePressEvent(event);
    if (!isLeft) return;

    const QList<QGraphicsItem*> items = this->items(event->scenePos());
    if (auto* node = firstOf<cTQNode>(items)) {
        node->lastPress = event->scenePos();
        Q_EMIT itemDoubleClicked(node);
        return;
    }
    QGraphicsItem* first = items.isEmpty() ? nullptr : items.front();
    if (auto* link = dynamic_cast<cTQLink*>(first)) {
        link->setSelected(true);
        link->lastPress = event->scenePos();
        Q_EMIT itemDoubleClicked(link);
    }
}

void cTQScene::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) {
    QGraphicsScene::mouseDoubleClickEvent(event);
    const QList<QGraphicsItem*> items = this->items(event->scenePos());
    if (items.isEmpty()) return;
    if (auto* element = dynamic_cast<cTQNetworkElement*>(items.front())) Q_EMIT itemDoubleClicked(element);
}

void cTQScene::mouseMoveEvent(QGraphicsSceneMouseEvent* event) {
    QGraphicsScene::mouseMoveEvent(event);
    if (event->buttons() != Qt::LeftButton) return;
    if (tLinkCP* handle = handleAt(event->scenePos())) dragHandle(*handle, event->scenePos());
}

/// Red over nothing; green over a node that may take it. Over any other node it stays as it was.
void cTQScene::dragHandle(tLinkCP& handle, QPointF position) {
    forgetHover();
    const QList<QGraphicsItem*> items = this->items(position);
    tNodeCP* point = pointAmong(items, position);
    if (point == nullptr) {
        handle.setColour(Qt::red);
        return;
    }
    if (!maySit(handle, point->node())) return;

    handle.setColour(Qt::green);
    hoverNode = &point->node();
    hoverNode->setHoverCP(point);
    if (firstOf<tNodeCP>(items) != nullptr) handle.moveOnto(*point);
}

void cTQScene::forgetHover() {
    if (hoverNode != nullptr) hoverNode->setHoverCP(nullptr);
    hoverNode = nullptr;
}

void cTQScene::mouseReleaseEvent(QGraphicsSceneMouseEvent* event) {
    tLinkCP* handle = event->button() == Qt::LeftButton ? handleAt(event->scenePos()) : nullptr;
    QGraphicsScene::mouseReleaseEvent(event);
    forgetHover();
    if (handle != nullptr) dropHandle(*handle, event->scenePos());
    Q_EMIT updateSignal();
}

void cTQScene::dropHandle(tLinkCP& handle, QPointF position) {
    cTQLink& link = handle.link();
    if (isRunOn()) {  // a run began while the handle was in the hand
        handle.followPoint();
        return;
    }
    link.dropHandle(handle.isStart(), pointAmong(items(position), position));
    link.update();
    Q_EMIT elementChanged(&link);
}

void cTQScene::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete && focusItem() == nullptr) {
        Q_EMIT deleteRequested();
        return;
    }
    QGraphicsScene::keyPressEvent(event);
}

void cTQScene::drawBackground(QPainter* painter, const QRectF& rect) {
    QPolygonF dots;
    const double left = std::floor(rect.left() / gridStep) * gridStep;
    const double top = std::floor(rect.top() / gridStep) * gridStep;
    for (double x = left; x < rect.right(); x += gridStep)
        for (double y = top; y < rect.bottom(); y += gridStep) dots.append(QPointF(x, y));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(QPen(dotColour, 0.0));
    painter->drawPoints(dots);
    painter->restore();
}
