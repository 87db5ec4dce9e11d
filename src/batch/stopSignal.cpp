#include "batch/stopSignal.h"

#include "language/exception.h"

#include <atomic>
#include <csignal>
#include <poll.h>

namespace {

std::atomic<bool> stopRaised = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may touch nothing that takes a lock");

extern "C" void raiseStop(int) { stopRaised = true; }

}  // namespace

void installStopSignal() {
    struct sigaction action {};
    action.sa_handler = raiseStop;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
}

bool isStopRaised() { return stopRaised; }

void awaitInput(int descriptor) {
    sigset_t interrupt;
    sigset_t before;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    sigprocmask(SIG_BLOCK, &interrupt, &before);
    pollfd awaited{descriptor, POLLIN, 0};
    if (!stopRaised) ppoll(&awaited, 1, nullptr, &before);
    sigprocmask(SIG_SETMASK, &before, nullptr);
    throwIfStopped();
}

void throwIfStopped() {
    if (stopRaised)
        throw cException{failureCode::userStop, "Simulation stopped.\nSimulation was stopped by user.\n", {}, {}};
}
