#include "editor/dialogRes.h"

#include "flow/resourceType.h"
#include "kernel/network.h"

#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr const char* protectedType = "Default";

int recordCounter = 0;

/// The object that the type was when it was last of that kind, or a new one. So what an Assembler made before finds its
/// type again.
std::unique_ptr<cResType> takeType(cTypeRecord& record) {
    const auto former = std::find_if(record.formerTypes.begin(), record.formerTypes.end(), [&](const auto& type) {
        return QString::fromStdString(type->getTypeKind()) == record.kind;
    });
    if (former == record.formerTypes.end()) return makeResType(record.name, record.kind.toStdString());

    std::unique_ptr<cResType> taken = std::move(*former);
    record.formerTypes.erase(former);
    return taken;
}

/// Blanks and semicolons part the words of a model file, so that no name can hold them.
QString withoutSeparators(QString text) {
    static const QRegularExpression separators(QStringLiteral("[\\s;]"));
    return text.remove(separators);
}

}  // namespace

cDialogRes::~cDialogRes() = default;

bool cDialogRes::canEditModel() const { return network.simState == 0; }

void cDialogRes::addResType(const QString& name, const QString& kind) {
    const std::string typeName = name.toStdString();
    if (name.isEmpty() || kind.isEmpty() || records.contains(typeName)) return;

    auto record = std::make_unique<cTypeRecord>();
    record->number = ++recordCounter;
    record->name = typeName;
    record->kind = kind;
    current = record.get();
    records[typeName] = std::move(record);
    network.resourceTypes[typeName] = makeResType(typeName, kind.toStdString());

    typeList->addItem(name);
    typeList->setCurrentRow(typeList->count() - 1);
    Q_EMIT newResAdded(typeName, typeName);
}

void cDialogRes::addTypedName() {
    if (canEditModel()) addResType(withoutSeparators(addEdit->text()), QString::fromLatin1(typeKindWord::generic));
    addEdit->clear();
}

void cDialogRes::setSaveProps(const std::string&, const std::string&) {
    if (current == nullptr) return;
    auto* type = dynamic_cast<cResTypeCompound*>(network.findResourceType(current->name));
    if (type == nullptr) return;

    static const QRegularExpression parting(QStringLiteral("[\\s\\r\\n]"));
    std::vector<std::string> names;
    for (const QString& name : QString::fromStdString(current->saveProps).split(parting, Qt::SkipEmptyParts))
        names.push_back(name.toStdString());
    type->setSaveProps(std::move(names));
}

void cDialogRes::resetTypes() {
    current = nullptr;
    const QSignalBlocker silence(typeList);
    typeList->clear();
    network.resourceTypes.clear();
    records.clear();
}

void cDialogRes::refresh() {
    addEdit->clear();
    nameEdit->clear();
    savePropsEdit->clear();
    QListWidgetItem* item = typeList->currentItem();
    if (item == nullptr && !records.empty()) item = itemOf(records.begin()->first);
    typeList->setCurrentItem(item);
    typeSelected(item);
}

void cDialogRes::typeSelected(QListWidgetItem* item) {
    const auto entry = item == nullptr ? records.end() : records.find(item->text().toStdString());
    current = entry == records.end() ? nullptr : entry->second.get();
    const bool isOpen = current != nullptr && current->name != protectedType && canEditModel();
    nameEdit->setEnabled(isOpen);
    savePropsEdit->setEnabled(current != nullptr && canEditModel());
    kindBox->setEnabled(isOpen);
    genericButton->setEnabled(isOpen);
    compoundButton->setEnabled(isOpen);
    addEdit->setEnabled(canEditModel());
    addButton->setEnabled(canEditModel());

    nameEdit->setText(current == nullptr ? QString() : QString::fromStdString(current->name));
    savePropsEdit->setText(current == nullptr ? QString() : QString::fromStdString(current->saveProps));
    showKind(current == nullptr ? QString() : current->kind);
}

/// A kind that the user can't choose, as a file can give it, checks neither button.
void cDialogRes::showKind(const QString& kind) {
    const bool isCompound = kind == typeKindWord::compound;
    const QSignalBlocker silentCompound(compoundButton);
    const QSignalBlocker silentGeneric(genericButton);
    for (QRadioButton* button : {genericButton, compoundButton}) button->setAutoExclusive(false);
    genericButton->setChecked(kind == typeKindWord::generic);
    compoundButton->setChecked(isCompound);
    for (QRadioButton* button : {genericButton, compoundButton}) button->setAutoExclusive(true);
    showSaveProps(isCompound);
}

void cDialogRes::showSaveProps(bool isCompound) {
    savePropsLabel->setVisible(isCompound);
    savePropsEdit->setVisible(isCompound);
}

QString cDialogRes::kindOfButtons() const {
    if (compoundButton->isChecked()) return QString::fromLatin1(typeKindWord::compound);
    return genericButton->isChecked() ? QString::fromLatin1(typeKindWord::generic) : current->kind;
}

void cDialogRes::applyType() {
    if (current == nullptr || current->name == protectedType || !canEditModel()) return;

    applyKind(*current);
    applyName(*current);
}

void cDialogRes::applyKind(cTypeRecord& record) {
    record.kind = kindOfButtons();
    showSaveProps(record.kind == typeKindWord::compound);
    cResType* present = network.findResourceType(record.name);
    if (present == nullptr || QString::fromStdString(present->getTypeKind()) == record.kind) return;

    std::unique_ptr<cResType>& place = network.resourceTypes[record.name];
    std::unique_ptr<cResType> replacement = takeType(record);
    place->moveHoldersTo(replacement.get());
    std::swap(place, replacement);
    record.formerTypes.push_back(std::move(replacement));
    Q_EMIT newResAdded(record.name, record.name);
}

/// A name in a model file ends at a blank, so there is none in it. A name that can't be taken is put back.
void cDialogRes::applyName(cTypeRecord& record) {
    const std::string oldName = record.name;
    const std::string newName = withoutSeparators(nameEdit->text()).toStdString();
    if (newName.empty() || records.contains(newName)) {
        nameEdit->setText(QString::fromStdString(oldName));
        return;
    }
    itemOf(oldName)->setText(QString::fromStdString(newName));
    auto entry = records.extract(oldName);
    entry.key() = newName;
    record.name = newName;
    records.insert(std::move(entry));
    renameType(record, oldName);
    nameEdit->setText(QString::fromStdString(newName));
    Q_EMIT newResAdded(newName, oldName);
}

/// The engine's object stays: resources know their type by it.
void cDialogRes::renameType(cTypeRecord& record, const std::string& oldName) {
    for (const auto& former : record.formerTypes) former->setTypeName(record.name);
    cResType* type = network.findResourceType(oldName);
    if (type == nullptr) return;

    type->setTypeName(record.name);
    network.resourceTypes.rename(oldName, record.name);
}

QListWidgetItem* cDialogRes::itemOf(const std::string& name) const {
    const QList<QListWidgetItem*> items = typeList->findItems(QString::fromStdString(name), Qt::MatchExactly);
    return items.isEmpty() ? nullptr : items.front();
}

void cDialogRes::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) Q_EMIT aboutToShow();
    QDialog::showEvent(event);
    addEdit->setFocus();  // a new name is what the dialog is opened for, as a rule
}

void cDialogRes::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    if (!event->spontaneous()) Q_EMIT closed();
}

/// Enter in the field of a new name adds it; it doesn't close the dialog.
void cDialogRes::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && addEdit->hasFocus())
        addTypedName();
    else
        QDialog::keyPressEvent(event);
}
