#pragma once

#include "batch/outputFile.h"
#include "batch/printFolder.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

class cNetwork;
struct cRunOptions;

/// Everything that a run is asked to write. All of it is opened before the model is read, so that a place that can't be
/// written to is known before hours of simulation; nothing takes its place before the run is over.
class cRunOutputs {
public:
    /// @param notesStream takes what the user is to know beside the results.
    /// @throws cFileError if one of the outputs can't be written. Nothing has been touched then.
    cRunOutputs(const cRunOptions& options, std::ostream& notesStream);

    /// Appends the trace of the present replication.
    void appendTrace(const cNetwork& network);
    /// Writes what the run gave. A run that failed or was stopped is partial: a file of results that it gathered
    /// nothing for stays as it was. One output that can't be written doesn't keep back the others.
    /// @return whether all could be written; if not, the notes tell.
    bool write(const cNetwork& network, bool isPartial);

private:
    using cOutput = std::unique_ptr<cOutputFile>;

    template <typename cWriting>
    void attempt(cWriting writing);
    void writeFigures(const cNetwork& network);
    void writeReplicationLines(const cNetwork& network);
    void writeTrace(const cNetwork& network, bool isPartial);

    std::ostream& notes;
    const bool isQuiet;
    cOutput table;  // the tables, on standard output; not wanted where another output goes there
    cOutput json;
    cOutput csv;
    cOutput replicationsCsv;
    cOutput trace;
    std::optional<cPrintFolder> prints;
    bool hasTrace = false;
    bool allWritten = true;
};
