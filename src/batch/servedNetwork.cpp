#include "batch/servedNetwork.h"

#include "batch/fileError.h"
#include "batch/inputFile.h"
#include "batch/report.h"
#include "batch/seedClock.h"
#include "batch/stopSignal.h"
#include "channel/errorLine.h"
#include "channel/wholeWrite.h"
#include "kernel/element.h"
#include "kernel/replications.h"
#include "model/engineBuilder.h"
#include "model/modelReader.h"

#include <new>
#include <sstream>
#include <unistd.h>
#include <utility>

namespace {

/// How many times a run lets us look around until we see whether somebody still reads the replies.
constexpr int turnsPerLook = 256;
constexpr std::int32_t withoutCode = 0;

}  // namespace

cServedNetwork::cServedNetwork(std::optional<std::uint32_t> seed, std::ostream& failureStream)
    : cNetwork(clockFor(seed)), failures(failureStream), channel(*this, *this), input(STDIN_FILENO) {}

bool cServedNetwork::open(const std::string& path) {
    isOpening = true;
    channel.handle("LOAD " + path + ';');
    return isLoaded;
}

void cServedNetwork::serve() {
    while (!ending) {
        const std::optional<std::string> message = nextMessage();
        if (!message) return;
        channel.handle(*message);
        throwIfStopped();  // it ended a run only
    }
}

void cServedNetwork::clearNetwork() {
    cNetwork::clearNetwork();
    waitingStatements.clear();
}

/// A run that nobody will hear of any more is broken off.
void cServedNetwork::processHostEvents() {
    if (++turnsSinceLook >= turnsPerLook) {
        turnsSinceLook = 0;
        if (isReaderGone(STDOUT_FILENO)) ending = true;
    }
    throwIfEnding();
}

void cServedNetwork::throwIfEnding() const {
    throwIfStopped();
    if (ending) throw cException{failureCode::userStop, "The controller ended the program.\n", {}, {}};
}

void cServedNetwork::load(const std::string& path) {
    clearModel();
    isLoaded = attempt([&] { readModelFile(path); });
    if (!isLoaded) clearModel();
}

bool cServedNetwork::attempt(const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const cFileError& error) {
        failures << errorLine(withoutCode, error.message) << std::flush;
    } catch (const cException& failure) {
        tellFailure(failure);
    } catch (const std::bad_alloc&) {
        tellFailure({failureCode::statement, "The model needs more memory than there is.\n", {}, {}});
    }
    return false;
}

void cServedNetwork::readModelFile(const std::string& path) {
    std::istringstream text(std::exchange(isOpening, false) ? readFile(path) : readPlainFile(path));
    cEngineBuilder builder(*this);
    const cModelReading reading = readModel(text, builder);
    failures << warningLines(path, reading) << std::flush;
    globalCode = reading.globalCode;
}

void cServedNetwork::clearModel() {
    clearNetwork();
    globalCode.clear();
    removeElements();
    cNetworkElement::setElementCounter(0);
}

void cServedNetwork::run() {
    cRunCode code{waitingStatements, globalCode, {}};
    waitingStatements.clear();
    cRunObserver nobody;
    if (!attempt([&] { runReplications(*this, code, nobody); })) clearNetwork();
}

/// The end of the program, which breaks a run off, is none of its failures.
void cServedNetwork::tellFailure(const cException& failure) {
    if (!ending) failures << errorLine(failure.code, failure.message) << std::flush;
}

void cServedNetwork::send(const std::string& line) {
    if (!writeWhole(STDOUT_FILENO, line)) ending = true;
}

void cServedNetwork::awaitMessages() {
    throwIfEnding();
    const std::optional<std::string> message = nextMessage();
    if (!message) throw cException{failureCode::expression, "The input ended before the answer to a GET came.", {}, {}};
    channel.handle(*message);
    throwIfEnding();
}

/// @return nothing at the end of input. @throws cException (code 5) at Ctrl-C.
std::optional<std::string> cServedNetwork::nextMessage() {
    for (;;) {
        if (std::optional<std::string> line = input.next()) return line;
        awaitInput(STDIN_FILENO);
        if (!input.receive()) return input.rest();
    }
}
