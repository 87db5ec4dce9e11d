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

void cTrace::branch(double time, const std::string& fork, bool isChosen, double runningSum,
                    const std::string& successor) {
    if (full) return;
    add({.form = eForm::branch,
         .time = time,
         .word = isChosen ? chosen : notChosen,
         .first = runningSum,
         .name = cName(fork),
         .successor = cName(successor)});
}
