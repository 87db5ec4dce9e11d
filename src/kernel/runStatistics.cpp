#include "kernel/runStatistics.h"

#include "kernel/element.h"
#include "kernel/network.h"
#include "kernel/resultColumns.h"
#include "language/numberText.h"
#include "language/symbols.h"

#include <cstdio>
#include <fstream>
#include <limits>
#include <system_error>

namespace {

constexpr std::size_t flushThreshold = 1000;

}  // namespace

cRunStatistics::cRunStatistics(cNetwork& measured) : network(measured) {
    std::error_code noDirectory;
    const std::filesystem::path directory = std::filesystem::temp_directory_path(noDirectory);
    if (!noDirectory) temporaryPath = directory / "my_temp_file.txt";
}

void cRunStatistics::resetResults() {
    replicationCount = 0;
    pendingLines.clear();
    printTexts.clear();
    fileComplete = true;
    std::error_code notThere;
    std::filesystem::remove(temporaryPath, notThere);
    prepare();
}

void cRunStatistics::prepare() {
    labels.clear();
    results.clear();
    for (const auto& [label, text] : network.resultExpressions) labels.push_back(label);
    names = currentNames();
    means.assign(names.size(), 0.0);
    squaredDeviations.assign(names.size(), 0.0);

    createFile();
}

/// Never through a link that somebody else has left there: the file is a new one.
void cRunStatistics::createFile() {
    std::error_code notThere;
    std::filesystem::remove(temporaryPath, notThere);
    std::string header = "Num";
    for (const std::string& name : names) header += ',' + name;

    std::FILE* file = std::fopen(temporaryPath.string().c_str(), "wbx");
    const bool isWritten = file != nullptr && std::fputs(header.c_str(), file) >= 0;
    const bool isClosed = file != nullptr && std::fclose(file) == 0;
    if (!isWritten || !isClosed) fileComplete = false;
}

std::vector<std::string> cRunStatistics::currentNames() const {
    std::vector<std::string> present{"SimTime"};
    present.insert(present.end(), labels.begin(), labels.end());
    network.forEachElement([&](const cNetworkElement& element) {
        for (const std::string_view suffix : columnSuffixes(element))
            present.push_back(element.getName() + std::string(suffix));
    });
    return present;
}

double cRunStatistics::resultOf(const std::string& label) {
    const std::string text = network.resultExpressions[label];
    const auto known = results.find(label);
    if (known != results.end() && known->second.getText() == text) return known->second.evaluate(*network.symbols);
    return results.insert_or_assign(label, cRenewedExpression(text)).first->second.evaluate(*network.symbols);
}

std::vector<double> cRunStatistics::currentRow() {
    std::vector<double> row{network.simTime};
    for (const std::string& label : labels) row.push_back(resultOf(label));
    network.forEachElement([&](cNetworkElement& element) { appendColumnValues(element, row); });
    row.resize(means.size(), std::numeric_limits<double>::quiet_NaN());  // an element may have gone since the header
    return row;
}

/// Means and squared deviations by Welford's recurrence (1962).
void cRunStatistics::gatherReplication() {
    const std::vector<double> row = currentRow();
    ++replicationCount;
    for (std::size_t column = 0; column < row.size(); ++column) {
        const double delta = row[column] - means[column];
        means[column] += delta / replicationCount;
        squaredDeviations[column] += (row[column] - means[column]) * delta;
    }
    if (temporaryPath.empty()) return;
    pendingLines.push_back(formLine(row));
    if (pendingLines.size() >= flushThreshold) flushLines();
}

std::string cRunStatistics::formLine(const std::vector<double>& row) const {
    std::string line = std::to_string(replicationCount) + ',';
    for (const double value : row) line += fixedText(value) + ',';
    return line;
}

/// The header has no line end, so the first line continues it: the file has always looked like this.
void cRunStatistics::flushLines() {
    std::ofstream file;
    std::error_code notThere;
    if (!std::filesystem::is_symlink(temporaryPath, notThere))
        file.open(temporaryPath, std::ios::binary | std::ios::app);
    if (!file.is_open()) {
        fileComplete = false;
        return;
    }
    for (const std::string& line : pendingLines) file << line << '\n';
    file.close();
    if (!file) fileComplete = false;
    pendingLines.clear();
}
