#pragma once

#include "editor/tqBranching.h"
#include "flow/dynafork.h"

/// A Dynafork on the canvas.
class cTQDynafork : public cTQBranching<cNodeAuxDynafork> {
    Q_OBJECT

public:
    explicit cTQDynafork(cResType* type) : cTQBranching(dynaforkShape(), type) {}

protected:
    QString panelName() const override { return QStringLiteral("dynaforkPanel"); }
    QString tabTitle() const override { return tr("Dynafork Properties"); }
};
