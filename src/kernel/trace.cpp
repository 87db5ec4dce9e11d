#include "kernel/trace.h"

#include "kernel/network.h"
#include "language/numberText.h"

namespace {

constexpr std::size_t longestLine = 255;

constexpr std::string_view chosen = "FORKCHOOSE,";
constexpr std::string_view notChosen = "FORKNOCHOOSE,";

}  // namespace

std::string cTrace::lineOf(const cRecord& record) const {
    if (record.form == eForm::text) return texts[static_cast<std::size_t>(record.number)];
    if (record.form == eForm::entry) return "\n";

    const std::string time = fixedText(record.time, 2) + ',';
    const std::string word(record.word);
    const std::string name = record.name.text();
    switch (record.form) {
        case eForm::attempt: return time + "ATTEMPT," + name + ',' + word + ",,,,\n";
        case eForm::end: return time + word + ',' + name + '(' + std::to_string(record.number) + "),,,,\n";
        case eForm::draw:
            return time + "ONDRAWFROM," + name + ",,,," + fixedText(record.first, 2) + ',' +
                   fixedText(record.second, 2) + ",\n";
        default:
            return time + word + name + ",,,,,," + fixedText(record.first, 2) + ',' + record.successor.text() + '\n';
    }
}

void cTrace::addText(std::string line) {
    if (isFull()) return;
    texts.push_back(std::move(line));
    add({.form = eForm::text, .number = static_cast<std::int32_t>(texts.size()) - 1});
}

std::vector<std::string> cTrace::lines() const {
    std::vector<std::string> lines{std::string(traceHeader)};
    lines.reserve(size());
    for (const cRecord& record : records) {
        lines.push_back(lineOf(record));
        if (lines.back().size() > longestLine) lines.back().resize(longestLine);
    }
    return lines;
}

void cNetwork::addTraceLine(std::string line) { trace.addText(std::move(line)); }

void traceAttempt(cNetwork& network, const std::string& combi, std::string_view result) {
    if (network.trace.isFull()) return;
    network.trace.add(
        {.form = cTrace::eForm::attempt, .time = network.simTime, .word = result, .name = cTrace::cName(combi)});
}

void traceEnd(cNetwork& network, std::string_view action, const std::string& activity, std::int32_t instanceId) {
    if (network.trace.isFull()) return;
    network.trace.add({.form = cTrace::eForm::end,
                       .number = instanceId,
                       .time = network.simTime,
                       .word = action,
                       .name = cTrace::cName(activity)});
}

void traceDraw(cNetwork& network, const std::string& queue, double curCount, double totCount) {
    if (network.trace.isFull()) return;
    network.trace.add({.form = cTrace::eForm::draw,
                       .time = network.simTime,
                       .first = curCount,
                       .second = totCount,
                       .name = cTrace::cName(queue)});
}

void traceBranch(cNetwork& network, const std::string& fork, bool isChosen, double runningSum,
                 const std::string& successor) {
    if (network.trace.isFull()) return;
    network.trace.add({.form = cTrace::eForm::branch,
                       .time = network.simTime,
                       .word = isChosen ? chosen : notChosen,
                       .first = runningSum,
                       .name = cTrace::cName(fork),
                       .successor = cTrace::cName(successor)});
}

void traceEntry(cNetwork& network) { network.trace.add({}); }
