// How the dialog of resource types is built.

#include "editor/dialogRes.h"

#include "flow/resourceType.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr QSize startSize(620, 380);

}  // namespace

cDialogRes::cDialogRes(cNetwork& model, QWidget* parent) : QDialog(parent), network(model) {
    setObjectName(QStringLiteral("resourceTypeDialog"));
    setWindowTitle(tr("Resource Types"));
    auto* page = new QWidget;
    auto* columns = new QHBoxLayout(page);
    columns->addWidget(makeTypeList(), 1);
    columns->addWidget(makeProperties(), 1);
    auto* tabs = new QTabWidget;
    tabs->setObjectName(QStringLiteral("typeTabs"));
    tabs->addTab(page, tr("Resource Types"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->setObjectName(QStringLiteral("typeButtons"));
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("okButton"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cancelButton"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(buttons);
    resize(startSize);

    connect(typeList, &QListWidget::currentItemChanged, this, &cDialogRes::typeSelected);
    connect(addButton, &QPushButton::clicked, this, &cDialogRes::addTypedName);
    for (const QRadioButton* button : {genericButton, compoundButton})
        connect(button, &QRadioButton::toggled, this, &cDialogRes::applyType);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        applyType();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QWidget* cDialogRes::makeTypeList() {
    addEdit = new QLineEdit;
    addEdit->setObjectName(QStringLiteral("addEdit"));
    addEdit->setAccessibleName(tr("Name of the new resource"));
    addButton = new QPushButton(tr("Add Resource"));
    addButton->setObjectName(QStringLiteral("addButton"));
    addButton->setAutoDefault(false);
    typeList = new QListWidget;
    typeList->setObjectName(QStringLiteral("typeList"));
    typeList->setAccessibleName(tr("Resource Types"));

    auto* column = new QWidget;
    auto* row = new QHBoxLayout;
    row->addWidget(addEdit);
    row->addWidget(addButton);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(row);
    layout->addWidget(typeList);
    return column;
}

QWidget* cDialogRes::makeProperties() {
    nameEdit = new QLineEdit;
    nameEdit->setObjectName(QStringLiteral("typeNameEdit"));
    auto* nameLabel = new QLabel(tr("Name: "));
    nameLabel->setBuddy(nameEdit);
    savePropsEdit = new QLineEdit;
    savePropsEdit->setObjectName(QStringLiteral("savePropsEdit"));
    savePropsLabel = new QLabel(tr("Save Props: "));
    savePropsLabel->setObjectName(QStringLiteral("savePropsLabel"));
    savePropsLabel->setBuddy(savePropsEdit);
    genericButton = new QRadioButton(tr("Generic"));
    genericButton->setObjectName(QStringLiteral("genericButton"));
    compoundButton = new QRadioButton(tr("Compound Characterized"));
    compoundButton->setObjectName(QStringLiteral("compoundButton"));
    kindBox = new QGroupBox(tr("Kind of Resource Type"));
    kindBox->setObjectName(QStringLiteral("kindBox"));
    auto* kinds = new QVBoxLayout(kindBox);
    kinds->addWidget(genericButton);
    kinds->addWidget(compoundButton);

    auto* column = new QWidget;
    auto* grid = new QGridLayout;
    grid->addWidget(nameLabel, 0, 0);
    grid->addWidget(nameEdit, 0, 1);
    grid->addWidget(savePropsLabel, 1, 0);
    grid->addWidget(savePropsEdit, 1, 1);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(grid);
    layout->addWidget(kindBox);
    layout->addStretch();
    return column;
}
