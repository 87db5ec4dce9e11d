#pragma once

#include <array>
#include <string>
#include <vector>

class cNetwork;

/// The results of a run as texts: what a window and a batch program show and save alike. All of it is read from the
/// store of the network, whose elements give the rows, by name.

/// One table: a heading for each column, with a line feed in it where the heading breaks, and one text for each cell.
struct cResultTable {
    std::vector<std::string> headings;
    std::vector<std::vector<std::string>> rows;
};

/// The title of the results: of a single simulation or of many.
std::string resultTitle(const cNetwork& network);
/// What heads the results: how they came about, SimTime, and the ADDTORESULTS entries, a line each.
std::string resultLabel(const cNetwork& network);
/// Eight columns for each queue: name, type, and six figures with two decimals.
cResultTable queueTable(const cNetwork& network);
/// Eleven columns for each activity: name and ten figures; the count of current instances is always 0.
cResultTable activityTable(const cNetwork& network);

/// The text that a single run is saved as: the label, then both tables with headings of their own, every field followed
/// by a comma.
std::string resultCsv(const cNetwork& network);

/// One entry of the results for other programs.
struct cResultEntry {
    std::string key;
    double value = 0.0;
    bool isCount = false;  ///< a whole number, to be written as one
};

/// SimTime, the ADDTORESULTS entries and every column by name, and a constant count ".CurInst" of 0 for each activity.
/// Empty while no replication was gathered. A key that comes twice means its last value.
std::vector<cResultEntry> resultEntries(const cNetwork& network);
