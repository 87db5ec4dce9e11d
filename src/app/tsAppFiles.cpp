// Documents: new, open, save, and the question before something is lost.

#include "app/globalCodeDialog.h"
#include "app/haltBar.h"
#include "app/tsApp.h"
#include "editor/animation.h"
#include "editor/dialogRes.h"
#include "editor/tqView.h"
#include "kernel/element.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStatusBar>
#include <vector>

namespace {

constexpr int statusTime = 2000;  // milliseconds

}  // namespace

/// @return whether what is on the canvas may be given up.
bool tsApp::maybeSave() {
    if (!modified || isClosedByController) return true;
    const QMessageBox::StandardButton answer = QMessageBox::warning(
        this, tr("TIMBERSIM"), tr("The document has been modified.\nDo you want to save your changes?"),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes) return save();
    return answer == QMessageBox::No;
}

void tsApp::newFile() {
    if (canEditModel() && maybeSave()) beginEmptyModel();
}

void tsApp::beginEmptyModel() {
    clearModel();
    setCurrentFile({});
    dialogRes->addResType(QStringLiteral("Default"), QLatin1String(typeKindWord::generic));
    setModified(false);
}

void tsApp::open() {
    if (!canEditModel() || !maybeSave()) return;
    const QString path = QFileDialog::getOpenFileName(this, tr("Open TIMBERSIM Model"), QStringLiteral("."),
                                                      tr("TIMBERSIM Files (*.tbsmx)"));
    if (path.isEmpty()) return;
    loadModel(path.toStdString());
    setModified(false);
}

bool tsApp::save() { return currentFile.isEmpty() ? saveAs() : writeTo(currentFile); }

bool tsApp::saveAs() {
    QFileDialog dialog(this, tr("Save"), QStringLiteral("."), tr("TIMBERSIM Files(*.tbsmx)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("tbsmx"));  // before the dialog asks whether to replace a file
    return dialog.exec() == QDialog::Accepted && writeTo(dialog.selectedFiles().constFirst());
}

bool tsApp::writeTo(const QString& path) {
    if (!writeModelFile(path)) {
        statusBar()->showMessage(tr("Saving canceled"), statusTime);
        return false;
    }
    setCurrentFile(path);
    statusBar()->showMessage(tr("File saved"), statusTime);
    setModified(false);
    return true;
}

void tsApp::loadModel(const std::string& path) {
    const QString fileName = QString::fromStdString(path);
    clearModel();
    if (!readModelFile(fileName)) {
        beginEmptyModel();
        statusBar()->showMessage(tr("Loading canceled"), statusTime);
        return;
    }
    setCurrentFile(fileName);
    statusBar()->showMessage(tr("File loaded"), statusTime);
}

void tsApp::clearModel() {
    hidePanel();
    clearNetwork();
    haltBar->clearTime();
    globalCodeDialog->setText({});
    combis.clear();
    std::vector<std::shared_ptr<cNetworkElement>> leaving;  // outlive the map: what goes looks at it once more
    for (const auto& [name, element] : elements) leaving.push_back(element);
    elements.clear();
    leaving.clear();
    cNetworkElement::setElementCounter(0);
    dialogRes->resetTypes();
    view->centerOn(0.0, 0.0);
}

void tsApp::setCurrentFile(const QString& path) {
    currentFile = path;
    setWindowModified(false);
    const QString shownName = path.isEmpty() ? tr("Untitled") : QFileInfo(path).fileName();
    setWindowTitle(tr("%1[*] - %2").arg(shownName, tr("TIMBERSIM")));
}

void tsApp::setModified(bool isNowModified) {
    modified = isNowModified;
    setWindowModified(isNowModified);
}

/// A run that is on, held or not, ends where it next returns from event processing; nothing of it is shown any more.
void tsApp::closeEvent(QCloseEvent* event) {
    if (!maybeSave()) {
        event->ignore();
        return;
    }
    settings.isAnimated = animation::isOn;
    settings.animationDelay = animation::delay;
    settings.write(settingsPath);
    stopRequested = true;
    event->accept();
}
