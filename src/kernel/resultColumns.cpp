#include "kernel/resultColumns.h"

#include "kernel/activity.h"
#include "kernel/queue.h"

#include <array>

namespace {

constexpr std::array<std::string_view, 6> queueSuffixes{".CurCount", ".TotCount", ".AveWait",
                                                        ".AveCont",  ".MinCont",  ".MaxCont"};

constexpr std::array<std::string_view, 9> activitySuffixes{".TotInst", ".AveDur", ".SDDur",  ".MinDur", ".MaxDur",
                                                           ".AveInt",  ".SDInt",  ".MinInt", ".MaxInt"};

}  // namespace

std::span<const std::string_view> columnSuffixes(const cNetworkElement& element) {
    if (dynamic_cast<const cNodeAct*>(&element) != nullptr) return activitySuffixes;
    if (dynamic_cast<const cNodeQueue*>(&element) != nullptr) return queueSuffixes;
    return {};
}

void appendColumnValues(cNetworkElement& element, std::vector<double>& row) {
    if (const auto* activity = dynamic_cast<const cNodeAct*>(&element)) {
        const cNodeAct::cStatistics s = activity->getStatistics();
        row.insert(row.end(), {static_cast<double>(s.nextInstance), s.aveDur, s.sdDur, s.minDur, s.maxDur, s.aveInter,
                               s.sdInter, s.minInter, s.maxInter});
    } else if (auto* queue = dynamic_cast<cNodeQueue*>(&element)) {
        for (const std::string_view suffix : queueSuffixes)  // a queue answers its columns by keyword
            row.push_back(queue->getAttribute(std::string(suffix.substr(1))));
    }
}
