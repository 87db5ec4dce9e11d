// Run, Pause and Stop, and what a run shows.

#include "app/globalCodeDialog.h"
#include "app/haltBar.h"
#include "app/resultsDialog.h"
#include "app/traceDialog.h"
#include "app/tsApp.h"
#include "channel/channel.h"
#include "editor/animation.h"
#include "editor/messageBox.h"
#include "editor/tqNode.h"
#include "editor/tqView.h"
#include "kernel/runStatistics.h"
#include "language/exception.h"

#include <QAction>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <new>

namespace {

/// How long a run goes on before the window processes its events again. Asking at each advance of the clock would cost
/// many models more than the simulation itself.
constexpr qint64 patience = 10;  // milliseconds
/// How many calls may go by without a look at the clock, which costs as much as some of them do.
constexpr int mostCallsPerLook = 32;
/// How often a run that isn't animated is painted: a large canvas takes some 50 milliseconds each time.
constexpr qint64 paintPause = 500;  // milliseconds

}  // namespace

void tsApp::onRun() {
    if (paused) {
        paused = false;  // the run goes on in the frame that holds it
        showRunState(false, true, true);
        return;
    }
    if (runIsOn || loading) return;

    if (runToTheEnd()) {
        showResults();
        showTraces();
    }
    clearNetwork();
}

/// A run, whoever asked for it. @return whether it came to its end and somebody wants to know; if it failed, that has
/// been told.
bool tsApp::runToTheEnd() {
    simTimeEdit->setText(QStringLiteral("0.00"));
    showRunState(false, true, true);
    stopAsked = false;
    runIsOn = true;
    sincePaint.start();
    bool isDone = false;
    try {
        runReplications();
        isDone = !stopRequested;
    } catch (const cException& failure) {
        breakOff(failure);
    } catch (const std::bad_alloc&) {
        breakOff({failureCode::statement, tr("The model needs more memory than there is.\n").toStdString(), {}, {}});
    }
    runIsOn = false;
    serveHeldSoon();
    return isDone;
}

void tsApp::runReplications() {
    cRunCode code;
    for (const QString& statement : std::as_const(waitingStatements))
        code.waitingLines.push_back(statement.toStdString());
    waitingStatements.clear();
    code.globalCode = globalCodeDialog->text().toStdString();
    ::runReplications(*this, code, *runDisplay);
    runDisplay->refresh();
}

void tsApp::onPause() {
    if (simState != 0 && !paused) holdRun();
}

/// Holds the run at the point that it has reached, until Run, Stop or the end of the program.
void tsApp::holdRun() {
    paused = true;
    runDisplay->refresh();
    view->viewport()->update();
    showSimTime();
    showRunState(true, false, true);
    // Waits for the next event instead of asking without end: a held run leaves the processor to others.
    while (paused && !isEndAsked()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    paused = false;
}

/// Slots can't throw through the event loop that called them. The request is raised where the run next returns from it.
void tsApp::onStop() {
    if (simState != 0) stopAsked = true;
}

void tsApp::throwIfEndAsked() const {
    if (simState != 0 && isEndAsked()) throwStop();
}

void tsApp::throwStop() {
    throw cException{failureCode::userStop, "Simulation stopped.\nSimulation was stopped by user.\n", {}, {}};
}

void tsApp::processHostEvents() {
    if (++callsSinceLook >= callsPerLook) processEventsInTime();
    if (isEndAsked()) throwIfEndAsked();
}

/// Looks at the clock at fewer calls the faster they come: while a look finds less than a tenth of the patience gone
/// since the one before, twice as many calls go by until the next, up to `mostCallsPerLook`.
void tsApp::processEventsInTime() {
    if (loading) return;
    callsSinceLook = 0;
    const qint64 gone = sinceEvents.isValid() ? sinceEvents.elapsed() : patience;
    const bool isFast = gone - goneAtLook <= patience / 10 && gone >= goneAtLook;
    callsPerLook = isFast ? std::min(2 * callsPerLook, mostCallsPerLook) : 1;
    goneAtLook = gone < patience ? gone : 0;
    if (gone < patience) return;

    runDisplay->refreshNowAndThen();
    paintNowAndThen();
    QCoreApplication::processEvents();
    sinceEvents.start();
}

void tsApp::paintNowAndThen() {
    if (!sincePaint.hasExpired(paintPause)) return;
    view->viewport()->update();
    sincePaint.start();
}

void tsApp::eventPoint() {
    if (!haltBar->holdsAtEvents()) return;
    holdRun();
    throwIfEndAsked();
}

void tsApp::runAfterTimeAdvance() {
    cNetwork::runAfterTimeAdvance();
    if (animation::isOn) showSimTime();
    if (!haltBar->holdsAfterTimeAdvance(simTime)) return;
    holdRun();
    throwIfEndAsked();
}

double tsApp::hostGet(const std::string& key) {
    if (channel != nullptr) return channel->get(key);
    const std::string message = "No answer to GET(\"" + key + "\"): no controller is connected.";
    throw cException{failureCode::expression, message, {}, {}};
}

/// A message is for a controlling program; without one nobody hears it.
void tsApp::hostMessage(const std::string& text) {
    if (channel != nullptr) channel->post(text);
}

void tsApp::clearNetwork() {
    cNetwork::clearNetwork();
    stopAsked = false;
    showRunState(true, false, false);
    statusLabel->setText(tr("Status: Edit mode."));
    view->viewport()->update();
    waitingStatements.clear();
    forEachElement([](cNetworkElement& element) {
        auto* drawn = dynamic_cast<cTQNetworkElement*>(&element);
        if (drawn == nullptr) return;
        element.resetElement();
        drawn->setHighlight(0);
    });
    refreshEditable();
}

void tsApp::showRunState(bool canRun, bool canPause, bool canStop) {
    runAction->setEnabled(canRun);
    pauseAction->setEnabled(canPause);
    stopAction->setEnabled(canStop);
    const bool isEditing = simState == 0 && canRun && !canStop;  // what a run stands on stays as it is until it is over
    for (QAction* action : {newAction, openAction, resourcesAction, globalCodeAction}) action->setEnabled(isEditing);
}

void tsApp::showSimTime() { simTimeEdit->setText(QString::number(simTime, 'f', 2)); }

void tsApp::breakOff(const cException& failure) {
    showFailure(failure);
    forEachElement([](cNetworkElement& element) {
        if (auto* node = dynamic_cast<cTQNode*>(&element)) node->forgetBursts();
    });
}

void tsApp::showFailure(const cException& failure) {
    if (stopRequested) return;  // the window is gone
    const QString message = QString::fromStdString(failure.message);
    if (failure.code < failureCode::userStop)
        messageBox::show(this, QMessageBox::Critical, tr("Error"), message, failure.code);
    if (failure.code == failureCode::userStop)
        messageBox::show(this, QMessageBox::Information, tr("Information"), message, failure.code);
}

void tsApp::showResults() { (new cResultsDialog(*this, this))->show(); }

void tsApp::showTraces() {
    for (const auto& [name, text] : runStatistics->printTexts) {
        auto* dialog = new traceDialog(QString::fromStdString(name), QString::fromStdString(text), this);
        traceDialogs.append(dialog);
        dialog->show();
    }
}

void tsApp::forgetTraces() {
    for (const QPointer<traceDialog>& dialog : std::as_const(traceDialogs))
        if (dialog != nullptr) dialog->deleteLater();
    traceDialogs.clear();
}
