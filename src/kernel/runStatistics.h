#pragma once

#include "language/renewedExpression.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

class cNetwork;

/// What a run gathers: the running mean of every figure over the replications, one text line per replication, and the
/// texts of PRINT.
///
/// The figures of a replication form a row: SimTime, the ADDTORESULTS entries by name, then by element name six for
/// each queue and nine for each activity. The columns are those of the last `prepare`. Lines go to a temporary file at
/// most once per 1000 replications, so memory doesn't grow with their number; no row is kept.
class cRunStatistics {
public:
    explicit cRunStatistics(cNetwork& measured);
    cRunStatistics(const cRunStatistics&) = delete;
    cRunStatistics& operator=(const cRunStatistics&) = delete;

    /// Where lines go, into a file that each run makes anew. The default is "my_temp_file.txt" in the system's
    /// temporary directory, which two programs that run at the same time would share. With an empty path there is no
    /// file, and lines go nowhere.
    void setTemporaryPath(std::filesystem::path path) { temporaryPath = std::move(path); }
    const std::filesystem::path& getTemporaryPath() const { return temporaryPath; }

    /// Empties the store before a run.
    void resetResults();
    /// Fixes the columns from the model as it is now, writes the header of the temporary file anew, without a line end,
    /// and zeroes the figures.
    void prepare();
    /// Takes in the present replication.
    /// @throws cException if an ADDTORESULTS expression fails; the replication is then not counted.
    void gatherReplication();
    /// Appends the waiting lines to the temporary file. If it can't be opened, they stay waiting.
    void flushLines();

    std::int32_t getReplicationCount() const { return replicationCount; }
    /// One mean per column; zeros while no replication was gathered.
    const std::vector<double>& getMeans() const { return means; }
    /// The labels of the ADDTORESULTS columns, and the names of all columns, as of the last `prepare`.
    const std::vector<std::string>& getLabels() const { return labels; }
    const std::vector<std::string>& columnNames() const { return names; }
    /// Whether the temporary file took everything since the last `resetResults`.
    bool isFileComplete() const { return fileComplete; }

    std::map<std::string, std::string> printTexts;  ///< what PRINT collected, by key

private:
    void createFile();
    std::vector<std::string> currentNames() const;
    std::vector<double> currentRow();
    double resultOf(const std::string& label);
    std::string formLine(const std::vector<double>& row) const;

    cNetwork& network;
    std::int32_t replicationCount = 0;
    std::vector<std::string> labels;
    std::map<std::string, cRenewedExpression> results;  // of ADDTORESULTS, by label
    std::vector<std::string> names{"SimTime"};
    std::vector<double> means{0.0};
    std::vector<double> squaredDeviations{0.0};  // running sums; shown nowhere
    std::vector<std::string> pendingLines;
    std::filesystem::path temporaryPath;
    bool fileComplete = true;
};
