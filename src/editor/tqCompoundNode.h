#pragma once

#include "editor/compoundTypeDialog.h"
#include "editor/elementPanel.h"
#include "editor/tqNode.h"
#include "editor/typedNode.h"

#include <QPointer>

/// An Assembler or a Disassembler on the canvas, over the engine's class of it: its type is a compound one, chosen in a
/// dialog of its own.
template <typename cKernel>
class cTQCompoundNode : public cTQNode, public virtual cKernel {
public:
    void populateResCB(std::string newName, std::string oldName) override {
        cTQNode::populateResCB(newName, oldName);
        if (choice != nullptr) choice->populateResCB(newName, oldName);
        writeTabs();
    }

    void forgetBursts() override {
        cKernel::nSources = 0;
        cKernel::holdings.clear();
    }

    /// Asks the user for the type.
    void chooseType() {
        const QPointer<QObject> self(this);
        cCompoundTypeDialog dialog(choiceTitle(), elementPanel.get());
        dialog.chooseType(typeNameOf(*this));
        choice = &dialog;
        const bool isAccepted = dialog.exec() == QDialog::Accepted;
        if (self == nullptr) return;

        choice = nullptr;
        if (isAccepted) Q_EMIT resDlgClosed(this, dialog.chosenType());
    }

protected:
    using cTQNode::cTQNode;

    virtual QString choiceTitle() const = 0;

    cFormRow compoundTypeRow() {
        cFormRow row;
        row.label = tr("ResType: ");
        row.fieldName = QStringLiteral("compoundTypeEdit");
        row.kind = eFieldKind::picked;
        row.get = [this] { return typeNameOf(*this); };
        row.pick = [this] { chooseType(); };
        return row;
    }

private:
    cCompoundTypeDialog* choice = nullptr;  // while it is open
};
