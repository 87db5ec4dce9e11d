#pragma once

#include "editor/tqActivity.h"
#include "kernel/consolidator.h"

/// A Consolidator on the canvas: a box with a side that points outwards.
class cTQConsolidator : public cTQActivity<cNodeConsolidator> {
    Q_OBJECT

public:
    cTQConsolidator() : cTQActivity(consolidatorShape()) {}

protected:
    QString panelName() const override { return QStringLiteral("consolidatorPanel"); }
    QString tabTitle() const override { return tr("Consolidator Properties"); }
    std::vector<cFormRow> formRows() override;
};
