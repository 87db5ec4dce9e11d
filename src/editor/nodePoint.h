#pragma once

#include "editor/nodeGeometry.h"

#include <QGraphicsEllipseItem>
#include <QPointF>
#include <vector>

class cTQNode;
class tLinkCP;

/// A place on a node where handles of links can sit: invisible, but it can be hit. It shows while a dragged handle
/// would come to rest on it.
///
/// Ownership: a child item of its node. Handles and points refer to each other by plain pointers; whichever goes first
/// takes itself back.
class tNodeCP : public QGraphicsEllipseItem {
public:
    tNodeCP(cTQNode& node, const cPointPlace& place, int number);
    ~tNodeCP() override;

    /// The position that handles take, in the node's coordinates and in the scene's.
    QPointF position() const { return {x, y}; }
    QPointF scenePosition() const { return parentItem()->mapToScene(position()); }
    cTQNode& node() const { return owner; }

    /// Whether the point shows.
    void setShown(bool isShown);

    /// The handles that sit here.
    const std::vector<tLinkCP*>& getHandles() const { return handles; }

    const double x;
    const double y;
    const eSide side;
    const int index;  ///< its place in the node's list, and its number in model files

private:
    friend class tLinkCP;  // enters and removes itself

    cTQNode& owner;
    std::vector<tLinkCP*> handles;
};
