#include "app/runDisplay.h"

#include "editor/animation.h"

#include <QAction>
#include <QLabel>
#include <QMainWindow>

namespace {

constexpr qint64 refreshPause = 100;  // milliseconds; laying a text out anew takes a good part of one

}  // namespace

cRunDisplay::cRunDisplay(QMainWindow& shownIn, QLabel& statusLabel, QAction& pauseAction, std::function<void()> onReset)
    : window(shownIn), status(statusLabel), pause(pauseAction), forgetResults(std::move(onReset)) {}

void cRunDisplay::singleRunBegins() {
    isBehind = false;  // as a run that was broken off can have left it
    status.setText(tr("Status: Simulating single run."));
}

void cRunDisplay::multipleRunsBegin() {
    window.setAnimated(false);  // the docks, not the run
    pause.setEnabled(false);
}

void cRunDisplay::replicationBegins(std::int32_t index, std::int32_t replications) {
    begun = index;
    wanted = replications;
    isBehind = true;
    if (animation::isOn) refresh();
}

void cRunDisplay::refreshNowAndThen() {
    if (isBehind && (!sinceRefresh.isValid() || sinceRefresh.hasExpired(refreshPause))) refresh();
}

/// Counts from 0: the first of five replications is 0 of 5.
void cRunDisplay::refresh() {
    if (!isBehind) return;
    isBehind = false;
    sinceRefresh.start();
    status.setText(tr("Status: Simulating multiple runs: %1 of %2").arg(begun).arg(wanted));
}
