#pragma once

#include <cstdint>
#include <string>

class cNetwork;
struct cException;
struct cModelReading;
struct cResultTable;

/// What the user reads on the terminal.

/// A table in columns: headings over the cells, texts of the first `textColumns` columns to the left and all others to
/// the right, two blanks between columns and none at the end of a line. Empty for a table without rows.
std::string alignedTable(const cResultTable& table, std::size_t textColumns);

/// The results of a run: label, tables, and each PRINT text under its key. A run that didn't come to its end is marked
/// as partial, and where no replication was gathered that is said in place of figures.
std::string reportText(const cNetwork& network, bool isPartial);

/// "Partial results: N replications", or that there are none.
std::string partialNote(std::int32_t replicationCount);

/// What the user should know of a file that was read: that it holds no model, and its warnings, a line each, with the
/// path and the number of the line in front.
std::string warningLines(const std::string& path, const cModelReading& reading);

/// The message of a failure, and its location and expression where it has them, a line each.
std::string failureText(const cException& failure);
