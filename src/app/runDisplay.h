#pragma once

#include "kernel/replications.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <functional>

class QAction;
class QLabel;
class QMainWindow;

/// Shows in the window how far a run is.
class cRunDisplay : public cRunObserver {
    Q_DECLARE_TR_FUNCTIONS(cRunDisplay)

public:
    /// @param onReset is called when the results of the run before are dropped.
    cRunDisplay(QMainWindow& shownIn, QLabel& statusLabel, QAction& pauseAction, std::function<void()> onReset);

    void resultsWereReset() override { forgetResults(); }
    void singleRunBegins() override;
    void multipleRunsBegin() override;
    void replicationBegins(std::int32_t index, std::int32_t replications) override;

    /// Tells the label where the run is; to be called where the user can look at it for a while. Replications can
    /// follow each other faster than a label can be told of them.
    void refresh();
    /// The same a few times a second, to be called before each processing of events.
    void refreshNowAndThen();

private:
    QMainWindow& window;
    QLabel& status;
    QAction& pause;
    const std::function<void()> forgetResults;
    std::int32_t begun = 0;  // the replication that the label has not been told of, if `isBehind`
    std::int32_t wanted = 0;
    bool isBehind = false;
    QElapsedTimer sinceRefresh;
};
