#pragma once

#include "editor/tqBranching.h"
#include "flow/fork.h"

/// A Fork on the canvas.
class cTQFork : public cTQBranching<cNodeAuxFork> {
    Q_OBJECT

public:
    explicit cTQFork(cResType* type) : cTQBranching(forkShape(), type) {}

protected:
    QString panelName() const override { return QStringLiteral("forkPanel"); }
    QString tabTitle() const override { return tr("Fork Properties"); }
};
