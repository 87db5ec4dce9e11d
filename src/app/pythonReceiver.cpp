#include "app/pythonReceiver.h"

#include "channel/wholeWrite.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr int pauseAfterLook = 50;  // milliseconds
constexpr int withoutLimit = -1;

}  // namespace

cPythonReceiver::cPythonReceiver(std::function<void(const QString&)> onLine, std::function<void()> onGone)
    : lineArrived(std::move(onLine)),
      controllerWent(std::move(onGone)),
      input(STDIN_FILENO),
      stopFlag(eventfd(0, EFD_CLOEXEC)) {}

cPythonReceiver::~cPythonReceiver() {
    eventfd_write(stopFlag, 1);
    wait();
    close(stopFlag);
}

void cPythonReceiver::run() {
    do {
        if (const std::optional<std::string> line = nextLine()) lineArrived(QString::fromStdString(*line));
    } while (!endsWithin(pauseAfterLook));
}

/// Waits for a line. @return nothing at the end of input or of the thread.
std::optional<std::string> cPythonReceiver::nextLine() {
    for (;;) {
        if (std::optional<std::string> line = input.next()) return line;
        if (!hasInput()) return std::nullopt;
        if (input.receive()) continue;
        lookForController();
        return input.rest();
    }
}

/// Waits for input or its end. @return false if the thread is to end.
bool cPythonReceiver::hasInput() const {
    std::array<pollfd, 2> awaited{pollfd{STDIN_FILENO, POLLIN, 0}, pollfd{stopFlag, POLLIN, 0}};
    while (poll(awaited.data(), awaited.size(), withoutLimit) == -1 && errno == EINTR) continue;
    return awaited[1].revents == 0;
}

bool cPythonReceiver::endsWithin(int milliseconds) const {
    pollfd awaited{stopFlag, POLLIN, 0};
    return poll(&awaited, 1, milliseconds) > 0;
}

void cPythonReceiver::lookForController() {
    if (wentIsTold || !isReaderGone(STDOUT_FILENO)) return;
    wentIsTold = true;
    controllerWent();
}
