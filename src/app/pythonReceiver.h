#pragma once

#include "channel/messageInput.h"

#include <QString>
#include <QThread>
#include <functional>

/// The thread that waits for the controller's lines on standard input, and passes some twenty a second on at most. A
/// line that is no UTF-8 has replacement characters in place of what can't be understood.
///
/// It never keeps the program alive: it waits for its end as much as for input. The end of input is none of its own: it
/// looks for more every now and then.
class cPythonReceiver : public QThread {
public:
    /// @param onLine is called for each line, and `onGone` once when the input is at its end and nobody reads standard
    /// output any more; both on this thread.
    cPythonReceiver(std::function<void(const QString&)> onLine, std::function<void()> onGone);
    /// Ends the thread, and waits for that.
    ~cPythonReceiver() override;

protected:
    void run() override;

private:
    std::optional<std::string> nextLine();
    bool hasInput() const;
    bool endsWithin(int milliseconds) const;
    void lookForController();

    const std::function<void(const QString&)> lineArrived;
    const std::function<void()> controllerWent;
    cMessageInput input;
    bool wentIsTold = false;
    int stopFlag = -1;  // an event counter of the system, which a wait for input can wait for too; raised to end
};
