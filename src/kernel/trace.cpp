#include "kernel/trace.h"

#include "kernel/network.h"
#include "language/numberText.h"

namespace {

constexpr std::size_t longestLine = 255;

std::string timeField(const cNetwork& network) { return fixedText(network.simTime, 2) + ','; }

}  // namespace

void cNetwork::addTraceLine(std::string line) {
    if (traceLines.size() >= traceCapacity) return;
    if (line.size() > longestLine) line.resize(longestLine);
    traceLines.push_back(std::move(line));
}

void traceAttempt(cNetwork& network, const std::string& combi, std::string_view result) {
    network.addTraceLine(timeField(network) + "ATTEMPT," + combi + ',' + std::string(result) + ",,,,\n");
}

void traceEnd(cNetwork& network, std::string_view action, const std::string& activity, std::int32_t instanceId) {
    network.addTraceLine(timeField(network) + std::string(action) + ',' + activity + '(' + std::to_string(instanceId) +
                         "),,,,\n");
}

void traceDraw(cNetwork& network, const std::string& queue, double curCount, double totCount) {
    network.addTraceLine(timeField(network) + "ONDRAWFROM," + queue + ",,,," + fixedText(curCount, 2) + ',' +
                         fixedText(totCount, 2) + ",\n");
}

void traceBranch(cNetwork& network, const std::string& fork, bool isChosen, double runningSum,
                 const std::string& successor) {
    network.addTraceLine(timeField(network) + (isChosen ? "FORKCHOOSE," : "FORKNOCHOOSE,") + fork + ",,,,,," +
                         fixedText(runningSum, 2) + ',' + successor + '\n');
}

void traceEntry(cNetwork& network) { network.addTraceLine("\n"); }
