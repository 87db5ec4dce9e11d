#pragma once

#include "editor/nodeGeometry.h"
#include "editor/tqNetworkElement.h"
#include "flow/homogHolder.h"
#include "kernel/node.h"

#include <QColor>
#include <QPainterPath>
#include <QPen>
#include <vector>

class tNodeCP;

/// A node on the canvas: an outline with a fill, points on it for links, and a caption.
class cTQNode : public cTQNetworkElement, public virtual cNode {
    Q_OBJECT

public:
    cNetworkElement& engineElement() override { return *this; }
    const cNetworkElement& engineElement() const override { return *this; }

    /// The point that a dragged handle would take: `hoverCP`, or the first.
    tNodeCP* nearestCP() const;
    /// The point of that number, or null.
    tNodeCP* cpByIndex(int index) const;
    const std::vector<tNodeCP*>& getPoints() const { return points; }

    /// The point nearest to a dragged handle, null while none is over the node.
    tNodeCP* getHoverCP() const { return hoverCP; }
    void setHoverCP(tNodeCP* point);
    /// The point that lies nearest to a place in the scene.
    tNodeCP* pointNearestTo(QPointF scenePosition) const;

    /// Moves the node to where it rests when it is released at `scenePosition`.
    void comeToRest(QPointF scenePosition);

    /// A run was broken off, perhaps in the middle of a burst of flow: no burst stays open.
    virtual void forgetBursts() {}

    /// Below the outline, with room for an arrowhead between the two.
    double captionOffset() const override;
    /// What the caption covers, in the node's coordinates. The node's own links leave it out.
    QRectF captionRect() const;

    /// The caption is another one.
    void captionChanged();

    QRectF boundingRect() const override;
    QPainterPath shape() const override { return nodeShape.outline; }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

Q_SIGNALS:
    /// The user has chosen a resource type for the node in a dialog of its own.
    void resDlgClosed(cHomogHolder* holder, const QString& typeName);

protected:
    explicit cTQNode(cNodeShape newShape);

    /// How many instances run here now; only activities have any.
    virtual int runningInstances() const { return 0; }
    virtual Qt::PenStyle outlineStyle() const { return Qt::SolidLine; }

    void renamed(const std::string& oldName) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;

private:
    QPen nodePen() const;
    void keepInSight();
    void drawCaption(QPainter& painter) const;

    const cNodeShape nodeShape;
    std::vector<tNodeCP*> points;  // child items, in the order of their numbers
    tNodeCP* hoverCP = nullptr;
    bool isMoving = false;  // in the mouse's hand, just now
    QPointF scrolled;       // how far the view has followed the node while the mouse was outside
    QColor fillColour{230, 230, 230};
};
