#include "kernel/resultText.h"

#include "kernel/activity.h"
#include "kernel/figures.h"
#include "kernel/network.h"
#include "kernel/queue.h"
#include "kernel/resultColumns.h"
#include "kernel/runStatistics.h"

#include <algorithm>
#include <span>

namespace {

using cFigure = std::string (*)(double);

bool isSingle(const cNetwork& network) { return network.replications == 1; }

/// Calls `visit` with each element that has columns and with their means. The model may have changed since the run: an
/// element that is new has no columns, and those of one that is gone are passed over.
template <typename cVisit>
void forEachMeasured(const cNetwork& network, cVisit visit) {
    const std::span<const double> means = network.runStatistics->getMeans();
    const std::span<const std::string> names = network.runStatistics->columnNames();
    std::size_t column = 1 + network.runStatistics->getLabels().size();
    network.forEachElement([&](cNetworkElement& element) {
        const auto suffixes = columnSuffixes(element);
        if (suffixes.empty()) return;
        const auto found = std::ranges::find(names.subspan(column), element.getName() + std::string(suffixes.front()));
        if (found == names.end()) return;
        column = static_cast<std::size_t>(found - names.begin());
        visit(element, means.subspan(column, suffixes.size()));
        column += suffixes.size();
    });
}

void appendFigures(std::vector<std::string>& row, std::span<const double> figures, cFigure figure) {
    for (const double value : figures) row.push_back(figure(value));
}

std::string csvRows(const cResultTable& table) {
    std::string text;
    for (const std::vector<std::string>& row : table.rows) {
        for (const std::string& cell : row) text += cell + ',';
        text += '\n';
    }
    return text;
}

}  // namespace

std::string resultTitle(const cNetwork& network) {
    return isSingle(network) ? "Single Simulation Results" : "Multiple Simulation Results";
}

std::string resultLabel(const cNetwork& network) {
    const cRunStatistics& statistics = *network.runStatistics;
    std::string label =
        isSingle(network) ? "Simulation has ended. \nSimTime = "
                          : "The following results are the averages of multiple simulation runs. \nAverage SimTime = ";
    label += generalFigure(statistics.getMeans().front()) + '\n';
    for (std::size_t i = 0; i < statistics.getLabels().size(); ++i)
        label += statistics.getLabels()[i] + " : " + generalFigure(statistics.getMeans()[i + 1]) + '\n';
    return label;
}

cResultTable queueTable(const cNetwork& network) {
    cResultTable table{{"Queue\nName", "Resource\nType", "Current\nCount", "Total\nCount", "Average\nWait",
                        "Average\nContent", "Minimum\nContent", "Maximum\nContent"},
                       {}};
    forEachMeasured(network, [&](const cNetworkElement& element, std::span<const double> means) {
        const auto* queue = dynamic_cast<const cNodeQueue*>(&element);
        if (queue == nullptr) return;
        const cResType* type = queue->getResType();
        table.rows.push_back({queue->getName(), type == nullptr ? std::string{} : type->getTypeName()});
        appendFigures(table.rows.back(), means, fixedFigure);
    });
    return table;
}

cResultTable activityTable(const cNetwork& network) {
    cResultTable table{{"Activity\nName", "Total\nInstances", "Current\nInstances", "Average\nDuration",
                        "Std.Dev.\nDuration", "Minimum\nDuration", "Maximum\nDuration", "Average\nInterval",
                        "Std. Dev.\nInterval", "Minimum\nInterval", "Maximumn\nInterval"},
                       {}};
    forEachMeasured(network, [&](const cNetworkElement& element, std::span<const double> means) {
        if (dynamic_cast<const cNodeAct*>(&element) == nullptr) return;
        table.rows.push_back({element.getName(), generalFigure(means.front()), "0"});
        appendFigures(table.rows.back(), means.subspan(1), generalFigure);
    });
    return table;
}

std::string resultCsv(const cNetwork& network) {
    return resultLabel(network) +
           "\n*QueueName*,*ResourceType*,*CurrentCount*,*TotalCount*,*AverageWait*,*AverageContent*,"
           "*MinimumContent*,*MaximumContent*\n" +
           csvRows(queueTable(network)) +
           "\n*ActName*,*TotalInstances*,*CurrentInstances*,*AverageDuration*,*StdDevDuration*,*MinimumDuration*,"
           "*MaximumDuration*,*AverageInterval*,*StdDevInterval*,*MinimumInterval*,*MaximumInterval*\n" +
           csvRows(activityTable(network));
}

std::vector<cResultEntry> resultEntries(const cNetwork& network) {
    const cRunStatistics& statistics = *network.runStatistics;
    if (statistics.getReplicationCount() == 0) return {};

    std::vector<cResultEntry> entries{{"SimTime", statistics.getMeans().front()}};
    for (std::size_t i = 0; i < statistics.getLabels().size(); ++i)
        entries.push_back({statistics.getLabels()[i], statistics.getMeans()[i + 1]});
    forEachMeasured(network, [&](const cNetworkElement& element, std::span<const double> means) {
        const auto suffixes = columnSuffixes(element);
        for (std::size_t i = 0; i < means.size(); ++i)
            entries.push_back({element.getName() + std::string(suffixes[i]), means[i]});
        if (dynamic_cast<const cNodeAct*>(&element) != nullptr)
            entries.push_back({element.getName() + ".CurInst", 0.0, true});
    });
    return entries;
}
