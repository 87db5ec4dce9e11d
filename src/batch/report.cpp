#include "batch/report.h"

#include "kernel/network.h"
#include "kernel/resultText.h"
#include "kernel/runStatistics.h"
#include "language/exception.h"
#include "language/words.h"
#include "model/modelReader.h"

#include <algorithm>

namespace {

using cRow = std::vector<std::string>;

constexpr std::size_t queueTextColumns = 2;     // name and resource type
constexpr std::size_t activityTextColumns = 1;  // name
constexpr std::size_t gap = 2;

/// The places that a text takes on the screen: UTF-8 has one byte per character that doesn't continue another.
std::size_t widthOf(const std::string& text) {
    const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
    return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, continues));
}

/// The headings as rows: the first lines of all, then the second ones.
std::vector<cRow> headingRows(const cRow& headings) {
    std::vector<cRow> rows;
    for (std::size_t column = 0; column < headings.size(); ++column) {
        const std::vector<std::string> lines = splitLines(headings[column]);
        if (rows.size() < lines.size()) rows.resize(lines.size(), cRow(headings.size()));
        for (std::size_t line = 0; line < lines.size(); ++line) rows[line][column] = lines[line];
    }
    return rows;
}

std::string alignedRow(const cRow& row, const std::vector<std::size_t>& widths, std::size_t textColumns) {
    std::string text;
    for (std::size_t column = 0; column < row.size(); ++column) {
        const std::string padding(widths[column] - widthOf(row[column]), ' ');
        if (column > 0) text.append(gap, ' ');
        text += column < textColumns ? row[column] + padding : padding + row[column];
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text + '\n';
}

std::string printSection(const std::string& key, const std::string& text) {
    std::string section = '\n' + key + '\n' + std::string(widthOf(key), '-') + '\n' + text;
    if (!section.ends_with('\n')) section += '\n';
    return section;
}

std::string tableSection(const cResultTable& table, std::size_t textColumns) {
    const std::string text = alignedTable(table, textColumns);
    return text.empty() ? text : '\n' + text;
}

}  // namespace

std::string alignedTable(const cResultTable& table, std::size_t textColumns) {
    if (table.rows.empty()) return {};

    std::vector<cRow> rows = headingRows(table.headings);
    rows.insert(rows.end(), table.rows.begin(), table.rows.end());
    std::vector<std::size_t> widths(table.headings.size());
    for (const cRow& row : rows)
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], widthOf(row[column]));

    std::string text;
    for (const cRow& row : rows) text += alignedRow(row, widths, textColumns);
    return text;
}

std::string reportText(const cNetwork& network, bool isPartial) {
    const std::int32_t count = network.runStatistics->getReplicationCount();
    std::string text;
    if (isPartial || count == 0) text += partialNote(count) + '\n';
    if (count > 0) {
        text += resultLabel(network);
        text += tableSection(queueTable(network), queueTextColumns);
        text += tableSection(activityTable(network), activityTextColumns);
    }
    for (const auto& [key, print] : network.runStatistics->printTexts) text += printSection(key, print);
    return text;
}

std::string partialNote(std::int32_t replicationCount) {
    if (replicationCount == 0) return "No results: no replication came to its end.";
    return "Partial results: " + std::to_string(replicationCount) +
           (replicationCount == 1 ? " replication" : " replications");
}

std::string warningLines(const std::string& path, const cModelReading& reading) {
    std::string lines;
    if (!reading.isRunnable) lines = path + ": holds no model: there is no element and no code\n";
    for (const cModelWarning& warning : reading.warnings)
        lines += path + ':' + std::to_string(warning.line) + ": " + warning.message + '\n';
    return lines;
}

std::string failureText(const cException& failure) {
    std::string message = failure.message;
    if (message.empty())
        message = failure.code == failureCode::noKeywords ? "An element was asked for an attribute, and has none."
                                                          : "The expression can't be evaluated.";
    if (!message.ends_with('\n')) message += '\n';
    if (!failure.location.empty()) message += failure.location + '\n';
    if (!failure.expressionText.empty()) message += "Expression: " + failure.expressionText + '\n';
    return message;
}
