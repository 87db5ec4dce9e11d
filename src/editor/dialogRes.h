#pragma once

#include <QDialog>
#include <QString>

#include <map>
#include <memory>
#include <string>
#include <vector>

class cNetwork;
class cResType;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QRadioButton;

/// What the editor knows of a resource type besides the engine's object: what model files hold of it.
struct cTypeRecord {
    int number = 0;  ///< in the order in which records were ever made
    std::string name;
    QString kind;           ///< a kind word of types
    std::string saveProps;  ///< empty: nothing has ever stored any

    /// The type's objects of other kinds that it once was. A resource that an Assembler keeps can still be of one.
    std::vector<std::unique_ptr<cResType>> formerTypes;
};

/// The one dialog in which the user names the model's resource types and says of which kind they are. It keeps a record
/// of each beside the network's object of the same name.
///
/// Ownership: a child of the window; both live until the elements have gone, which can hold resources of former types.
/// While a run is on nothing can be changed.
/// dialogResWindow.cpp builds the widgets, dialogRes.cpp holds what they do.
class cDialogRes : public QDialog {
    Q_OBJECT

public:
    using cRecords = std::map<std::string, std::unique_ptr<cTypeRecord>>;

    explicit cDialogRes(cNetwork& model, QWidget* parent = nullptr);
    ~cDialogRes() override;

    /// Adds a type. Does nothing if a text is empty or there is a type of that name.
    /// @param kind a kind word of types; a word that is none makes a characterized type.
    void addResType(const QString& name, const QString& kind);
    /// Gives the save properties of the current record to its compound type. Records have none, whatever is asked for
    /// here: the format of model files counts on their never being saved.
    void setSaveProps(const std::string& typeName, const std::string& names);
    /// Forgets all types, the network's objects too. No element may be left.
    void resetTypes();
    /// Readies the dialog for being shown.
    void refresh();

    const cRecords& getRecords() const { return records; }
    const cTypeRecord* currentRecord() const { return current; }

Q_SIGNALS:
    void aboutToShow();
    void closed();
    /// A type is new, is of another kind or has a new name: whatever lists types is to be filled anew.
    void newResAdded(std::string newName, std::string oldName);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* makeTypeList();
    QWidget* makeProperties();
    void addTypedName();
    void typeSelected(QListWidgetItem* item);
    void applyType();
    void applyKind(cTypeRecord& record);
    void applyName(cTypeRecord& record);
    void renameType(cTypeRecord& record, const std::string& oldName);
    void showKind(const QString& kind);
    void showSaveProps(bool isCompound);
    QString kindOfButtons() const;
    QListWidgetItem* itemOf(const std::string& name) const;
    bool canEditModel() const;

    cNetwork& network;
    cRecords records;
    cTypeRecord* current = nullptr;

    QListWidget* typeList = nullptr;
    QLineEdit* addEdit = nullptr;
    QPushButton* addButton = nullptr;
    QLineEdit* nameEdit = nullptr;
    QLabel* savePropsLabel = nullptr;
    QLineEdit* savePropsEdit = nullptr;
    QGroupBox* kindBox = nullptr;
    QRadioButton* genericButton = nullptr;
    QRadioButton* compoundButton = nullptr;
};
