#pragma once

#include "kernel/replications.h"

#include <QCoreApplication>
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

private:
    QMainWindow& window;
    QLabel& status;
    QAction& pause;
    const std::function<void()> forgetResults;
};
