// The channel to a controlling program: what comes in is handed on, and what the channel asks is done.

#include "app/animationBar.h"
#include "app/pythonReceiver.h"
#include "app/tsApp.h"
#include "channel/channel.h"
#include "channel/errorLine.h"
#include "channel/wholeWrite.h"
#include "editor/messageBox.h"
#include "language/exception.h"

#include <QCoreApplication>
#include <QDebug>
#include <QThread>
#include <QTimer>
#include <unistd.h>

namespace {

constexpr unsigned long pauseInWait = 10;  // milliseconds between two looks for an answer

void writeToLog(const QString& text) { qDebug().noquote() << text; }

void tellController(std::int32_t code, const QString& text) {
    writeWhole(STDERR_FILENO, errorLine(code, text.toStdString()));
}

}  // namespace

void tsApp::startPythonReceiver() {
    if (receiver != nullptr) return;
    messageBox::listener = tellController;
    cChannelHost& host = *this;
    channel = std::make_unique<cChannel>(*this, host);
    connect(this, &tsApp::pythonMessageReceived, this, &tsApp::handlePythonMessage, Qt::QueuedConnection);
    connect(this, &tsApp::controllerGone, this, &tsApp::endWithoutController, Qt::QueuedConnection);
    receiver = std::make_unique<cPythonReceiver>([this](const QString& line) { Q_EMIT pythonMessageReceived(line); },
                                                 [this] { Q_EMIT controllerGone(); });
    receiver->start();
    writeToLog(QStringLiteral("Python Receiver Thread Started!"));
}

void tsApp::stopPythonReceiver() {
    if (receiver == nullptr) return;
    receiver.reset();
    messageBox::listener = nullptr;
}

void tsApp::handlePythonMessage(const QString& message) {
    writeToLog(QStringLiteral("Handling Python Message in Main Thread: ") + message);
    if (message.isNull() || channel == nullptr) return;
    channel->handle(message.toStdString());
}

/// Nobody will ever close the window for a controller that is gone, nor answer what it was asked. What the user has in
/// the window is kept.
void tsApp::endWithoutController() {
    if (modified)
        onStop();
    else
        quit();
}

/// What waits for the end of a run is served behind whatever began it.
void tsApp::serveHeldSoon() {
    if (channel != nullptr) QTimer::singleShot(0, this, [this] { channel->serveHeld(); });
}

void tsApp::load(const std::string& path) {
    try {
        loadModel(path);
    } catch (const cException& failure) {
        showFailure(failure);
        beginEmptyModel();
    }
    setModified(false);
}

/// The statistics stay for the controller, who resets the model when it has read them; after a failure there are none.
void tsApp::run() {
    if (runToTheEnd())
        showRunState(true, false, false);
    else
        clearNetwork();
}

void tsApp::animate(bool isWanted) { animationBar->setAnimated(isWanted); }

void tsApp::keepStatement(const std::string& line) { waitingStatements.append(QString::fromStdString(line)); }

/// The window closes as if the user had closed it, and asks nothing.
void tsApp::quit() {
    isClosedByController = true;
    close();
    QCoreApplication::exit();
}

void tsApp::send(const std::string& line) { writeWhole(STDOUT_FILENO, line); }

void tsApp::awaitMessages() {
    QCoreApplication::processEvents();
    if (isEndAsked()) throwStop();
    QThread::msleep(pauseInWait);
}

void tsApp::log(const std::string& line) { writeToLog(QString::fromStdString(line)); }
