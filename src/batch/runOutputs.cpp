#include "batch/runOutputs.h"

#include "batch/commandLine.h"
#include "batch/fileError.h"
#include "batch/programName.h"
#include "batch/report.h"
#include "channel/resultJson.h"
#include "kernel/network.h"
#include "kernel/resultText.h"
#include "kernel/runStatistics.h"

#include <array>
#include <cerrno>
#include <fstream>

namespace {

std::unique_ptr<cOutputFile> open(const std::optional<std::string>& path) {
    return path ? std::make_unique<cOutputFile>(*path) : nullptr;
}

void writeWhole(cOutputFile* file, const std::string& text) {
    if (file == nullptr) return;
    file->write(text);
    file->commit();
}

/// Copies in pieces: the lines of many replications may be more than the memory holds.
void copy(const std::filesystem::path& source, cOutputFile& target) {
    std::ifstream stream(source, std::ios::binary);
    std::array<char, 65536> piece{};
    while (stream.read(piece.data(), piece.size()) || stream.gcount() > 0)
        target.write({piece.data(), static_cast<std::size_t>(stream.gcount())});
    if (!stream.eof()) throw systemFileError("read", source, errno);
}

}  // namespace

cRunOutputs::cRunOutputs(const cRunOptions& options, std::ostream& notesStream)
    : notes(notesStream),
      isQuiet(options.isQuiet),
      table(open(options.usesStandardOutput() ? std::nullopt : std::optional(std::string(standardOutput)))),
      json(open(options.jsonPath)),
      csv(open(options.csvPath)),
      replicationsCsv(open(options.replicationsCsvPath)),
      trace(open(options.tracePath)) {
    if (options.printsPath) prints.emplace(*options.printsPath);
}

void cRunOutputs::appendTrace(const cNetwork& network) {
    if (trace == nullptr) return;
    std::string text;
    for (const std::string& line : network.traceLines()) text += line;
    trace->write(text);
    hasTrace = true;
}

bool cRunOutputs::write(const cNetwork& network, bool isPartial) {
    const bool hasFigures = network.runStatistics->getReplicationCount() > 0;
    if (hasFigures || !isPartial) writeFigures(network);
    attempt([&] { writeTrace(network, isPartial); });
    attempt([&] {
        if (prints) prints->write(network.runStatistics->printTexts);
    });
    attempt([&] { writeWhole(table.get(), reportText(network, isPartial)); });
    return allWritten;
}

template <typename cWriting>
void cRunOutputs::attempt(cWriting writing) {
    try {
        writing();
    } catch (const cFileError& failure) {
        tell(notes, failure.message);
        allWritten = false;
    }
}

void cRunOutputs::writeFigures(const cNetwork& network) {
    const bool hasFigures = network.runStatistics->getReplicationCount() > 0;
    attempt([&] { writeWhole(json.get(), buildResultsJson(network) + '\n'); });
    attempt([&] { writeWhole(csv.get(), hasFigures ? resultCsv(network) : std::string{}); });
    attempt([&] { writeReplicationLines(network); });
}

void cRunOutputs::writeReplicationLines(const cNetwork& network) {
    if (replicationsCsv == nullptr) return;
    const cRunStatistics& statistics = *network.runStatistics;
    if (!statistics.isFileComplete())
        throw cFileError{"can't keep all replication lines in " + statistics.getTemporaryPath().string()};

    copy(statistics.getTemporaryPath(), *replicationsCsv);
    replicationsCsv->commit();
    if (network.replications <= 1 && !isQuiet)
        tell(notes, "a single run has no replication lines: --replications-csv wrote the header alone");
}

/// The lines of a replication that didn't come to its end are those that tell where it failed.
void cRunOutputs::writeTrace(const cNetwork& network, bool isPartial) {
    if (trace == nullptr) return;
    if (isPartial && network.trace.size() > 1) appendTrace(network);
    if (hasTrace || !isPartial) trace->commit();
}
