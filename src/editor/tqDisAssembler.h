#pragma once

#include "editor/tqCompoundNode.h"
#include "flow/disassembler.h"

/// A Disassembler on the canvas.
class cTQDisAssembler : public cTQCompoundNode<cNodeAuxDisAssembler> {
    Q_OBJECT

public:
    cTQDisAssembler() : cTQCompoundNode(disassemblerShape()) {}

protected:
    QString panelName() const override { return QStringLiteral("disassemblerPanel"); }
    QString tabTitle() const override { return tr("Disassmbler Properties"); }
    QString choiceTitle() const override { return tr("Specify Resource of Queue"); }
    std::vector<cFormRow> formRows() override {
        return {nameRow(tr("   Name: ")), compoundTypeRow(), streamRow(tr("Stream: "))};
    }
};
