#include "editor/compoundTypeDialog.h"

#include "editor/editorHost.h"
#include "editor/typedNode.h"

#include <QComboBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int besideTitle = 160;  // what a window's frame takes beside its title: the icon and the buttons

}  // namespace

cCompoundTypeDialog::cCompoundTypeDialog(const QString& title, QWidget* parent)
    : QDialog(parent), types(new QComboBox), accepting(new QPushButton(tr("Accept"))) {
    setObjectName(QStringLiteral("compoundTypeDialog"));
    setWindowTitle(title);
    setModal(true);
    setMinimumWidth(fontMetrics().horizontalAdvance(title) + besideTitle);
    types->setObjectName(QStringLiteral("compoundTypeBox"));
    types->setAccessibleName(tr("Resource type"));
    accepting->setObjectName(QStringLiteral("acceptTypeButton"));
    auto* adding = new QPushButton(tr("Add New Resource"));
    adding->setObjectName(QStringLiteral("newTypeButton"));
    adding->setAutoDefault(false);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(types);
    layout->addWidget(adding);
    layout->addWidget(accepting);
    connect(types, &QComboBox::currentIndexChanged, this, &cCompoundTypeDialog::slotEnableOK);
    connect(adding, &QPushButton::clicked, this, &cCompoundTypeDialog::newRes);
    connect(accepting, &QPushButton::clicked, this, &QDialog::accept);
    populateResCB({}, {});
}

QString cCompoundTypeDialog::chosenType() const { return types->currentText(); }

void cCompoundTypeDialog::chooseType(const QString& typeName) {
    types->setCurrentIndex(qMax(0, types->findText(typeName)));
}

void cCompoundTypeDialog::populateResCB(const std::string& newName, const std::string& oldName) {
    const bool isRenamed = !oldName.empty() && chosenType() == QString::fromStdString(oldName);
    const QString chosen = isRenamed ? QString::fromStdString(newName) : chosenType();
    types->clear();
    types->addItem(QString());
    types->addItems(compoundTypeNames());
    chooseType(chosen);
    slotEnableOK(types->currentIndex());
}

void cCompoundTypeDialog::slotEnableOK(int index) { accepting->setEnabled(index > 0); }

void cCompoundTypeDialog::newRes() { cEditorHost::current().editResourceTypes(); }
