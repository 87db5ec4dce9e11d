#include "batch/batchNetwork.h"

#include "batch/progressLine.h"
#include "batch/seedClock.h"
#include "batch/stopSignal.h"
#include "language/exception.h"

cBatchNetwork::cBatchNetwork(std::optional<std::uint32_t> seed, cAnswers getAnswers, std::ostream& postStream,
                             cProgressLine& progressLine)
    : cNetwork(clockFor(seed)), answers(std::move(getAnswers)), messages(postStream), progress(progressLine) {}

double cBatchNetwork::hostGet(const std::string& key) {
    const auto answer = answers.find(key);
    if (answer != answers.end()) return answer->second;

    const std::string message = "No answer to GET(\"" + key + "\"): give one with --get " + key + "=VALUE.";
    throw cException{failureCode::expression, message, {}, {}};
}

void cBatchNetwork::hostMessage(const std::string& text) {
    progress.erase();
    messages << "MESSAGE " << text << '\n';
}

void cBatchNetwork::processHostEvents() {
    throwIfStopped();
    progress.refresh();
}
