#include "editor/tqNode.h"

#include "editor/editorHost.h"
#include "editor/linkHandle.h"
#include "editor/nodePoint.h"
#include "editor/penWidth.h"
#include "editor/typedNode.h"
#include "kernel/network.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QPainter>
#include <QScopedValueRollback>
#include <algorithm>

namespace {

constexpr double plainWidth = 1.0;
constexpr double highlightWidth = 3.0;
constexpr double runningWidth = 5.0;      // of the green outline of an activity at work
constexpr double captionDistance = 10.0;  // room for the arrowhead of a link from below
constexpr double sightMargin = 10.0;

// The family is no font's name, so the system's own choice stands in for it.
QFont captionFont() { return QFont(QStringLiteral("Ariel"), cEditorHost::current().captionPointSize()); }

bool isInside(QPoint screenPosition, const QWidget* widget) {
    return widget == nullptr || widget->rect().contains(widget->mapFromGlobal(screenPosition));
}

/// The place in the scene that a view shows in its upper left corner.
QPointF cornerOf(const QWidget* viewport) {
    const auto* view = viewport == nullptr ? nullptr : qobject_cast<const QGraphicsView*>(viewport->parentWidget());
    return view == nullptr ? QPointF() : view->mapToScene(0, 0);
}

}  // namespace

cTQNode::cTQNode(cNodeShape newShape) : nodeShape(std::move(newShape)) {
    setFlags(ItemIsMovable | ItemIsSelectable | ItemSendsGeometryChanges);
    setAcceptDrops(true);
    setAcceptHoverEvents(true);
    setZValue(-1.0);  // handles, which are parts of links, can be taken where they lie on nodes
    for (const cPointPlace& place : nodeShape.points)
        points.push_back(new tNodeCP(*this, place, static_cast<int>(points.size())));
    connect(this, &cTQNode::resDlgClosed, this, [this](cHomogHolder* holder, const QString& typeName) {
        takeType(*this, *holder, typeName.toStdString());
        writeTabs();
    });
}

tNodeCP* cTQNode::nearestCP() const { return hoverCP != nullptr ? hoverCP : points.front(); }

tNodeCP* cTQNode::cpByIndex(int index) const {
    const auto found = std::ranges::find_if(points, [&](const tNodeCP* point) { return point->index == index; });
    return found == points.end() ? nullptr : *found;
}

void cTQNode::setHoverCP(tNodeCP* point) {
    if (point == hoverCP) return;

    if (hoverCP != nullptr) hoverCP->setShown(false);
    hoverCP = point;
    if (hoverCP != nullptr) hoverCP->setShown(true);
}

tNodeCP* cTQNode::pointNearestTo(QPointF scenePosition) const {
    const QPointF wanted = mapFromScene(scenePosition);
    const auto distance = [&](const tNodeCP* point) {
        const QPointF way = point->position() - wanted;
        return QPointF::dotProduct(way, way);
    };
    return *std::ranges::min_element(points, {}, distance);
}

void cTQNode::comeToRest(QPointF scenePosition) {
    setPos(restPosition(scenePosition, nodeShape.outline.boundingRect().size()));
}

double cTQNode::captionOffset() const {
    const double height = QFontMetricsF(captionFont()).height();
    return nodeShape.outline.boundingRect().bottom() + captionDistance + height / 2.0;
}

QRectF cTQNode::captionRect() const {
    const QFontMetricsF metrics(captionFont());
    QRectF rect(0.0, 0.0, metrics.horizontalAdvance(caption()) + 2.0, metrics.height());
    rect.moveCenter(QPointF(0.0, captionOffset()));
    return rect;
}

QRectF cTQNode::boundingRect() const {
    const double half = widestPen(runningWidth) / 2.0 + 1.0;
    return nodeShape.outline.boundingRect().adjusted(-half, -half, half, half).united(captionRect());
}

/// While a run is on, only its steps stand out.
QPen cTQNode::nodePen() const {
    const bool isRunOff = cNetwork::current().simState == 0;
    if (isRunOff) return QPen(isSelected() ? Qt::blue : Qt::black, plainWidth);
    return QPen(Qt::black, getHighlight() != 0 ? highlightWidth : plainWidth);
}

void cTQNode::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    if (runningInstances() != 0) {
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(Qt::green, penWidth(runningWidth, *painter)));
        painter->drawPath(nodeShape.outline);
    }
    QPen pen = nodePen();
    pen.setWidthF(penWidth(pen.widthF(), *painter));
    pen.setStyle(outlineStyle());
    painter->setPen(pen);
    painter->setBrush(fillColour);
    painter->drawPath(nodeShape.outline);
    painter->setBrush(Qt::NoBrush);
    pen.setStyle(Qt::SolidLine);
    painter->setPen(pen);
    painter->drawPath(nodeShape.mark);
    drawCaption(*painter);
}

void cTQNode::drawCaption(QPainter& painter) const {
    painter.setPen(Qt::black);
    painter.setFont(captionFont());
    painter.drawText(captionRect(), Qt::AlignCenter | Qt::TextDontClip, caption());
}

void cTQNode::renamed(const std::string& oldName) {
    cTQNetworkElement::renamed(oldName);
    captionChanged();
}

void cTQNode::captionChanged() {
    prepareGeometryChange();
    update();
}

QVariant cTQNode::itemChange(GraphicsItemChange change, const QVariant& value) {
    if (change == ItemPositionHasChanged || change == ItemScenePositionHasChanged) {
        for (const tNodeCP* point : points)
            for (tLinkCP* handle : point->getHandles()) handle->followPoint();
        if (scene() != nullptr && scene()->mouseGrabberItem() == this) keepInSight();
    }
    return QGraphicsItem::itemChange(change, value);
}

/// While the node is dragged, the view scrolls with it.
void cTQNode::keepInSight() {
    ensureVisible(nodeShape.outline.boundingRect(), static_cast<int>(sightMargin), static_cast<int>(sightMargin));
}

void cTQNode::mousePressEvent(QGraphicsSceneMouseEvent* event) {
    scrolled = {};
    QGraphicsItem::mousePressEvent(event);
}

/// A view that has scrolled tells the last move of the mouse anew, for the place that is under the mouse now. It would
/// take the node further, and the view with it, to the end of the field. And a mouse outside the view, as on a node
/// that the panel has just covered, would do so with each of its moves: there its own way counts, and not the view's.
void cTQNode::mouseMoveEvent(QGraphicsSceneMouseEvent* event) {
    if (isMoving) return;

    const QScopedValueRollback moving(isMoving, true);
    const QPointF place = event->scenePos();
    const QPointF corner = cornerOf(event->widget());
    event->setScenePos(place - scrolled);
    QGraphicsItem::mouseMoveEvent(event);
    event->setScenePos(place);
    if (!isInside(event->screenPos(), event->widget())) scrolled += cornerOf(event->widget()) - corner;
}

void cTQNode::mouseReleaseEvent(QGraphicsSceneMouseEvent* event) {
    QGraphicsItem::mouseReleaseEvent(event);
    comeToRest(pos());
    // Nodes that are selected with this one were moved with it.
    for (QGraphicsItem* item : scene()->selectedItems())
        if (auto* node = dynamic_cast<cTQNode*>(item)) node->comeToRest(node->pos());
}
