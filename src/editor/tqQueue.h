#pragma once

#include "editor/tqNode.h"
#include "kernel/queue.h"

/// A queue on the canvas: a circle.
class cTQQueue : public cTQNode, public virtual cNodeQueue {
    Q_OBJECT

public:
    explicit cTQQueue(cResType* type);

    void redrawQueue() override { runChanged(); }
    void onEntry() override;
    void onDrawFrom() override;

protected:
    QString panelName() const override { return QStringLiteral("queuePanel"); }
    QString tabTitle() const override { return tr("Queue Properties"); }
    std::vector<cFormRow> formRows() override;
    /// Fusion queues follow their queue's name.
    void renamed(const std::string& oldName) override;
};
