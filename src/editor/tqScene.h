#pragma once

#include "editor/tqNetworkElement.h"

#include <QGraphicsScene>
#include <QPointer>

class cTQNode;
class tLinkCP;
class tNodeCP;

/// The canvas: watches the mouse, moves the handles of links and connects them.
class cTQScene : public QGraphicsScene {
    Q_OBJECT

public:
    explicit cTQScene(QObject* parent = nullptr);
    ~cTQScene() override;

    /// Lists an element, which others own.
    void insertElement(cTQNetworkElement& element);

Q_SIGNALS:
    /// An element has come onto the canvas; it hasn't found its place yet.
    void itemInserted(cTQNetworkElement* element);
    /// The user wants to see the element's properties: pressed, or pressed twice.
    void itemDoubleClicked(cTQNetworkElement* element);
    /// A button of the mouse was released: anything may have moved.
    void updateSignal();
    /// A link was connected or taken off: whatever shows it may show what it is now.
    void elementChanged(cTQNetworkElement* element);
    /// The key Delete was pressed.
    void deleteRequested();

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void drawBackground(QPainter* painter, const QRectF& rect) override;

private:
    tLinkCP* handleAt(QPointF position) const;
    void dragHandle(tLinkCP& handle, QPointF position);
    void dropHandle(tLinkCP& handle, QPointF position);
    void forgetHover();

    QPointer<cTQNode> hoverNode;  // over which a handle is dragged; the key Delete may take it away meanwhile
};

/// Whether the dragged end of a link may sit on a node, as far as the class of the other end tells: queues and fusion
/// queues stand before Combis and nothing else does.
bool maySit(const tLinkCP& handle, const cTQNode& node);
