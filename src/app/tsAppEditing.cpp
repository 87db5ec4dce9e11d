// What the user does to the model on the canvas and in its dialogs.

#include "app/globalCodeDialog.h"
#include "app/tsApp.h"
#include "editor/dialogRes.h"
#include "editor/elementFactory.h"
#include "editor/elementPanel.h"
#include "editor/linkHandle.h"
#include "editor/messageBox.h"
#include "editor/tqFusionQueue.h"
#include "editor/tqLink.h"
#include "editor/tqNode.h"
#include "editor/tqQueue.h"
#include "editor/tqScene.h"
#include "editor/tqView.h"
#include "kernel/combi.h"

#include <QStatusBar>
#include <QVBoxLayout>
#include <algorithm>

namespace {

constexpr int statusTime = 2000;  // milliseconds
constexpr int lowestDrop = 100;
constexpr int highestDrop = 4900;

/// A link lands inside the field whatever the scale: its place is held back in the view, before it becomes one of the
/// scene.
QPoint heldBack(QPoint position) {
    return {std::clamp(position.x(), lowestDrop, highestDrop), std::clamp(position.y(), lowestDrop, highestDrop)};
}

/// The element that an item of the scene is or belongs to, or null.
cTQNetworkElement* elementOf(QGraphicsItem* item) {
    if (auto* handle = dynamic_cast<tLinkCP*>(item)) return &handle->link();
    return dynamic_cast<cTQNetworkElement*>(item);
}

}  // namespace

/// Nothing that a run stands on is changed under it.
bool tsApp::canEditModel() {
    if (simState == 0 && !loading) return true;
    statusBar()->showMessage(tr("The model can't be changed while a simulation is running."), statusTime);
    return false;
}

void tsApp::elemSelected(cTQNetworkElement* element) {
    setModified(true);  // whatever is edited was selected before
    hidePanel();
    element->writeTabs();
    QDialog* panel = element->panel();
    if (panel == nullptr) return;

    currentPanel = panel;
    mainLayout->addWidget(panel);
    panel->show();
    // When it closes, keys are for the canvas again.
    connect(panel, &QDialog::finished, view, qOverload<>(&QWidget::setFocus), Qt::UniqueConnection);
}

void tsApp::hidePanel() {
    if (currentPanel == nullptr) return;
    mainLayout->removeWidget(currentPanel);
    currentPanel->hide();
    currentPanel = nullptr;
}

void tsApp::refreshPanelOf(cTQNetworkElement* element) {
    if (element->hasPanel()) element->writeTabs();
}

/// Opens or closes the fields of the panel on show, and leaves what stands in them.
void tsApp::refreshEditable() {
    if (auto* panel = qobject_cast<cElementPanel*>(currentPanel.data())) panel->refreshEditable();
}

void tsApp::createElementFromDrop(const QString& kind, QPoint position) {
    if (!canEditModel()) return;
    const std::shared_ptr<cNetworkElement> made = makeElement(kind);
    auto* element = dynamic_cast<cTQNetworkElement*>(made.get());
    if (element == nullptr) {
        if (kind == QLatin1String(fusionQueueKind))
            messageBox::show(this, QMessageBox::Critical, tr("Error"),
                             tr("Cannot create FusionQueue without atleast one Queue in model."));
        return;
    }
    elements[made->getName()] = made;
    if (auto* combi = dynamic_cast<cNodeActCombi*>(made.get())) combis[combi->getName()] = combi;
    placeElement(*element, position);
    if (dynamic_cast<cTQQueue*>(element) != nullptr) tellFusionQueues({}, {});
    setModified(true);
}

void tsApp::placeElement(cTQNetworkElement& element, QPoint position) {
    scene->insertElement(element);
    if (auto* node = dynamic_cast<cTQNode*>(&element))
        node->comeToRest(view->mapToScene(position));
    else
        element.setPos(view->mapToScene(heldBack(position)));
    scene->clearSelection();
    element.setSelected(true);
    elemSelected(&element);
    view->setFocus();  // so that Delete is for the element
    scene->update();
}

void tsApp::deleteSelected() {
    for (QGraphicsItem* item : scene->selectedItems()) {
        cTQNetworkElement* element = elementOf(item);
        if (element == nullptr) continue;
        Q_EMIT sigDeleteElement(&element->engineElement());
        return;
    }
}

void tsApp::removeElement(cNetworkElement* element) {
    if (element == nullptr || !canEditModel()) return;
    // Under its own name, but for an element whose name in a file was taken.
    const auto entry = std::ranges::find_if(elements, [&](const auto& each) { return each.second.get() == element; });
    if (entry == elements.end()) return;

    const std::shared_ptr<cNetworkElement> held = element->shared_from_this();  // until all is undone that points to it
    const auto* drawn = dynamic_cast<cTQNetworkElement*>(element);
    std::erase_if(combis, [&](const auto& combi) { return combi.second == element; });
    if (drawn != nullptr && drawn->hasPanel() && drawn->isPanel(currentPanel)) hidePanel();
    elements.erase(std::string(entry->first));
    if (dynamic_cast<cTQQueue*>(element) != nullptr) tellFusionQueues({}, {});
    setModified(true);
}

void tsApp::tellNewType(const std::string& newName, const std::string& oldName) {
    forEachElement([&](cNetworkElement& element) {
        if (auto* drawn = dynamic_cast<cTQNetworkElement*>(&element)) drawn->populateResCB(newName, oldName);
    });
}

void tsApp::editResourceTypes() {
    dialogRes->refresh();
    dialogRes->exec();
}

void tsApp::showResources() {
    if (!canEditModel()) return;
    dialogRes->setModal(true);
    dialogRes->refresh();
    dialogRes->show();
    setModified(true);
}

void tsApp::showGlobalCode() {
    if (!canEditModel()) return;
    setModified(true);
    globalCodeDialog->showGlobalCode();
}
