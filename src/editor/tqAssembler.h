#pragma once

#include "editor/tqCompoundNode.h"
#include "flow/assembler.h"

/// An Assembler on the canvas.
class cTQAssembler : public cTQCompoundNode<cNodeAuxAssembler> {
    Q_OBJECT

public:
    cTQAssembler() : cTQCompoundNode(assemblerShape()) {}

protected:
    QString panelName() const override { return QStringLiteral("assemblerPanel"); }
    QString tabTitle() const override { return tr("Assembler Properties"); }
    QString choiceTitle() const override { return tr("Specify Resource of Assembler"); }
    std::vector<cFormRow> formRows() override { return {nameRow(tr("   Name: ")), compoundTypeRow()}; }
};
