#include "editor/elementPanel.h"

#include "editor/formField.h"
#include "editor/messageBox.h"
#include "kernel/network.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

bool isRunOn() { return cNetwork::current().simState != 0; }

}  // namespace

cElementPanel::cElementPanel(cElementForm form)
    : tabs(new QTabWidget),
      formLayout(new QFormLayout),
      buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
    setObjectName(form.panelName);
    setWindowTitle(form.tabTitle);
    for (cFormRow& row : form.rows) addField(std::move(row));

    auto* page = new QWidget;
    page->setLayout(formLayout);
    tabs->setObjectName(QStringLiteral("propertyTabs"));
    tabs->addTab(page, form.tabTitle);
    buttons->setObjectName(QStringLiteral("propertyButtons"));
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("okButton"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cancelButton"));
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->addWidget(tabs);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &cElementPanel::editExceptions);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

cElementPanel::~cElementPanel() = default;

void cElementPanel::addField(cFormRow row) {
    fields.push_back(std::make_unique<cFormField>(std::move(row)));
    formLayout->addRow(fields.back()->getRow().label, fields.back()->getWidget());
}

QDialog* cElementPanel::atFirstTab() {
    tabs->setCurrentIndex(0);
    return this;
}

void cElementPanel::writeTabs() {
    for (const auto& field : fields) {
        field->write();
        const cFormRow& row = field->getRow();
        formLayout->setRowVisible(field->getWidget(), !row.isShown || row.isShown());
    }
    refreshEditable();
}

void cElementPanel::refreshEditable() {
    const bool isRunOff = !isRunOn();
    for (const auto& field : fields) field->setEditable(isRunOff);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setEnabled(isRunOff);
    ok->setToolTip(isRunOff ? QString() : tr("Nothing can be edited while a simulation is running."));
}

void cElementPanel::readTabs() {
    if (isRunOn()) {
        refreshEditable();
        return;
    }
    const QPointer<cElementPanel> panel(this);  // a box that a row shows lets others work, who may remove the element
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (formLayout->isRowVisible(fields[i]->getWidget())) fields[i]->read();
        if (panel == nullptr) return;
    }
    accept();
}

void cElementPanel::editExceptions() {
    try {
        readTabs();
    } catch (const cException& failure) {
        const QString text = QString::fromStdString(failure.message);
        messageBox::show(this, QMessageBox::Critical, tr("Error"),
                         text.isEmpty() ? tr("Error in expression in recently closed dialog.\n") : text, failure.code);
    }
}

std::optional<QString> cElementPanel::typedText(std::string_view modelKey) const {
    for (const auto& field : fields)
        if (field->getRow().modelKey == modelKey) return field->text();
    return std::nullopt;
}

void cElementPanel::refillChoices(const std::string& newName, const std::string& oldName) {
    for (const auto& field : fields) field->refill(QString::fromStdString(newName), QString::fromStdString(oldName));
}
