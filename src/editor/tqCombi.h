#pragma once

#include "editor/tqActivity.h"
#include "kernel/combi.h"

/// A Combi on the canvas: a box with a cut corner.
class cTQCombi : public cTQActivity<cNodeActCombi> {
    Q_OBJECT

public:
    cTQCombi() : cTQActivity(combiShape()) {}

    void beforeDraws() override;

protected:
    QString panelName() const override { return QStringLiteral("combiPanel"); }
    QString tabTitle() const override { return tr("Combi Properties"); }
    std::vector<cFormRow> formRows() override;
};
