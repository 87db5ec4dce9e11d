#include "kernel/trace.h"

#include "kernel/network.h"
#include "language/numberText.h"

namespace {

constexpr std::size_t longestLine = 255;

constexpr std::string_view chosen = "FORKCHOOSE,";
constexpr std::string_view notChosen = "FORKNOCHOOSE,";

std::string lineOf(const cTrace::cRecord& record) {
    using eForm = cTrace::eForm;
    if (record.form == eForm::text) return record.name;
    if (record.form == eForm::entry) return "\n";

    const std::string time = fixedText(record.time, 2) + ',';
    const std::string word(record.word);
    switch (record.form) {
        case eForm::attempt: return time + "ATTEMPT," + record.name + ',' + word + ",,,,\n";
        case eForm::end: return time + word + ',' + record.name + '(' + std::to_string(record.instanceId) + "),,,,\n";
        case eForm::draw:
            return time + "ONDRAWFROM," + record.name + ",,,," + fixedText(record.first, 2) + ',' +
                   fixedText(record.second, 2) + ",\n";
        default:
            return time + word + record.name + ",,,,,," + fixedText(record.first, 2) + ',' + record.successor + '\n';
    }
}

}  // namespace

std::vector<std::string> cTrace::lines() const {
    std::vector<std::string> lines{std::string(traceHeader)};
    lines.reserve(size());
    for (const cRecord& record : records) {
        lines.push_back(lineOf(record));
        if (lines.back().size() > longestLine) lines.back().resize(longestLine);
    }
    return lines;
}

void cNetwork::addTraceLine(std::string line) { trace.add({.form = cTrace::eForm::text, .name = std::move(line)}); }

void traceAttempt(cNetwork& network, const std::string& combi, std::string_view result) {
    if (network.trace.isFull()) return;
    network.trace.add({.form = cTrace::eForm::attempt, .time = network.simTime, .word = result, .name = combi});
}

void traceEnd(cNetwork& network, std::string_view action, const std::string& activity, std::int32_t instanceId) {
    if (network.trace.isFull()) return;
    network.trace.add({.form = cTrace::eForm::end,
                       .time = network.simTime,
                       .word = action,
                       .instanceId = instanceId,
                       .name = activity});
}

void traceDraw(cNetwork& network, const std::string& queue, double curCount, double totCount) {
    if (network.trace.isFull()) return;
    network.trace.add(
        {.form = cTrace::eForm::draw, .time = network.simTime, .first = curCount, .second = totCount, .name = queue});
}

void traceBranch(cNetwork& network, const std::string& fork, bool isChosen, double runningSum,
                 const std::string& successor) {
    if (network.trace.isFull()) return;
    network.trace.add({.form = cTrace::eForm::branch,
                       .time = network.simTime,
                       .word = isChosen ? chosen : notChosen,
                       .first = runningSum,
                       .name = fork,
                       .successor = successor});
}

void traceEntry(cNetwork& network) { network.trace.add({}); }
