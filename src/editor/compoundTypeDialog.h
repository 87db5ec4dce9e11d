#pragma once

#include <QDialog>

#include <string>

class QComboBox;
class QPushButton;

/// The small dialog in which an Assembler or a Disassembler is given its compound type.
class cCompoundTypeDialog : public QDialog {
    Q_OBJECT

public:
    explicit cCompoundTypeDialog(const QString& title, QWidget* parent = nullptr);

    /// The chosen type; empty while none is chosen.
    QString chosenType() const;
    void chooseType(const QString& typeName);

public Q_SLOTS:
    /// Fills the list anew: an empty entry, then the compound types. The choice stays, also under a new name.
    void populateResCB(const std::string& newName, const std::string& oldName);
    /// Only a type can be accepted, not the empty entry.
    void slotEnableOK(int index);
    void newRes();

private:
    QComboBox* types;
    QPushButton* accepting;
};
