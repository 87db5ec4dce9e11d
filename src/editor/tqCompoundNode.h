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
    void populateResCB(const std::string& newName, const std::string& oldName) override {
        cTQNode::populateResCB(newName, oldName);
        if (choice != nullptr) choice->populateResCB(newName, oldName);
        writeTabs();
    }

    void forgetBursts() override {
        cKernel::nSources = 0;
        cKernel::holdings.clear();
    }

    /// Asks the user for the type, and returns when the dialog is closed. The element may be gone then, and the dialog
    /// with it: nothing here is touched behind the wait.
    void chooseType() {
        choice = new cCompoundTypeDialog(choiceTitle(), elementPanel.get());
        choice->setAttribute(Qt::WA_DeleteOnClose);
        choice->chooseType(typeNameOf(*this));
        QObject::connect(choice, &QDialog::accepted, this, [this] { slotResAdded(); });
        QObject::connect(choice, &QDialog::rejected, this, [this] { slotResNotAdded(); });
        choice->exec();
    }
    /// The user accepted a type: it is told together with the element.
    void slotResAdded() { Q_EMIT resDlgClosed(this, choice->chosenType()); }
    /// The user chose none: the field shows the type that the element has.
    void slotResNotAdded() { writeTabs(); }

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
    QPointer<cCompoundTypeDialog> choice;  // null unless it is open
};
