#include "editor/tqNetworkElement.h"

#include "editor/elementPanel.h"
#include "editor/messageBox.h"
#include "kernel/element.h"
#include "kernel/network.h"

#include <algorithm>

cTQNetworkElement::cTQNetworkElement() = default;
cTQNetworkElement::~cTQNetworkElement() = default;

QDialog* cTQNetworkElement::panel() {
    if (elementPanel == nullptr) createTabs();
    return elementPanel->atFirstTab();
}

bool cTQNetworkElement::isPanel(const QWidget* widget) const {
    return elementPanel != nullptr && elementPanel.get() == widget;
}

std::optional<QString> cTQNetworkElement::typedText(std::string_view modelKey) const {
    if (elementPanel != nullptr) return elementPanel->typedText(modelKey);
    const auto kept = std::ranges::find(keptTexts, modelKey, &decltype(keptTexts)::value_type::first);
    return kept == keptTexts.end() ? std::nullopt : std::optional(kept->second);
}

void cTQNetworkElement::keepTexts() {
    keptTexts.clear();
    for (const cFormRow& row : formRows())
        if (!row.modelKey.empty()) keptTexts.emplace_back(row.modelKey, row.get ? row.get() : row.startText);
}

void cTQNetworkElement::createTabs() {
    elementPanel = std::make_unique<cElementPanel>(cElementForm{panelName(), tabTitle(), formRows()});
    keptTexts = {};
    writeTabs();
}

void cTQNetworkElement::writeTabs() {
    if (elementPanel == nullptr) return keepTexts();
    elementPanel->writeTabs();
}

void cTQNetworkElement::readTabs() {
    if (elementPanel != nullptr) elementPanel->readTabs();
}

void cTQNetworkElement::editExceptions() {
    if (elementPanel != nullptr) elementPanel->editExceptions();
}

void cTQNetworkElement::setHighlight(int state) {
    highlight = state;
    update();
}

QString cTQNetworkElement::caption() const { return QString::fromStdString(engineElement().getName()); }

bool cTQNetworkElement::setElementName(const QString& newName) {
    const std::string oldName = engineElement().getName();
    if (engineElement().setName(newName.toStdString())) {
        if (engineElement().getName() != oldName) renamed(oldName);
        return true;
    }
    messageBox::show(elementPanel.get(), QMessageBox::Critical, tr("Naming Error"),
                     tr("Element name must start with a letter; be less than 16 characters; can contain only letters "
                        "numbers, and underscores."));
    return false;
}

void cTQNetworkElement::renamed(const std::string&) { update(); }

void cTQNetworkElement::populateResCB(const std::string& newName, const std::string& oldName) {
    if (elementPanel != nullptr) elementPanel->refillChoices(newName, oldName);
}

cFormRow cTQNetworkElement::nameRow(const QString& label) {
    cFormRow row;
    row.label = label;
    row.fieldName = QStringLiteral("nameEdit");
    row.get = [this] { return QString::fromStdString(engineElement().getName()); };
    row.set = [this](const QString& text) { setElementName(text); };
    return row;
}

cShownStep::cShownStep(cTQNetworkElement& shown) : element(shown) {
    element.setHighlight(1);
    try {
        animation::waitStep();
    } catch (...) {
        element.setHighlight(0);
        throw;
    }
}

cShownStep::~cShownStep() { element.setHighlight(0); }
