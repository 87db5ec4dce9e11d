#pragma once

#include "editor/tqNetworkElement.h"
#include "flow/link.h"

#include <QPainterPath>
#include <QPolygonF>
#include <string>

class cTQFusionQueue;
class cTQNode;
class tLinkCP;
class tNodeCP;

/// A link that the user sees and drags: one object, drawn between its two handles and simulated by the engine.
///
/// An end can sit on a fusion queue; the engine's end is then the queue behind it, and the link keeps both.
class cTQLink : public cTQNetworkElement, public cLink {
    Q_OBJECT

public:
    /// A link without ends, of the type "Default" if there is one. An empty name asks for a default one.
    explicit cTQLink(const std::string& name = {});
    ~cTQLink() override;

    cNetworkElement& engineElement() override { return *this; }
    const cNetworkElement& engineElement() const override { return *this; }

    tLinkCP* startCP() const { return startHandle; }
    tLinkCP* endCP() const { return endHandle; }
    tLinkCP* handleFor(bool isStart) const { return isStart ? startHandle : endHandle; }

    /// Connects an end of the engine's link, or takes it off with null; the handle is for the caller to move.
    /// @return false if the pair is not allowed, with everything as it was.
    bool setPredNode(cTQNode* node) { return connectEnd(true, node); }
    bool setSuccNode(cTQNode* node) { return connectEnd(false, node); }
    bool connectEnd(bool isStart, cTQNode* node);
    /// Whether the engine's end is at `node`, or at the queue behind it.
    bool isConnectedTo(bool isStart, const cTQNode* node) const;

    /// What the user does to a handle: drops it on a point, or on nothing.
    /// @return false if the node refused it.
    bool dropHandle(bool isStart, tNodeCP* point);

    /// The fusion queue that the end sits on, or null.
    cTQFusionQueue* fusionAt(bool isStart) const { return isStart ? predFusion : succFusion; }
    /// A fusion queue is being destroyed.
    void forgetFusion(const cTQFusionQueue& fusion);

    /// A handle has moved, or changed what it sits on: the route follows.
    void handleMoved();

    /// The engine's operation, shown while the animation is on.
    void runOnFlowStatements() override;

    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    QString panelName() const override { return QStringLiteral("linkPanel"); }
    QString tabTitle() const override { return tr("Link Properties"); }
    std::vector<cFormRow> formRows() override;
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

private:
    cFormRow ruleRow(eLinkRule rule, const QString& label, const QString& fieldName);
    bool isRuleShown(eLinkRule rule) const;
    cFormRow typeRow();
    bool hasTypedEnd() const;
    QRectF paintedRect() const;
    QPen linkPen() const;
    void leaveOutCaptions(QPainter& painter) const;

    tLinkCP* startHandle;  // child items
    tLinkCP* endHandle;
    cTQFusionQueue* predFusion = nullptr;
    cTQFusionQueue* succFusion = nullptr;
    QPainterPath route;
    QPolygonF arrow;
};
