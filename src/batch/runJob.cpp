#include "batch/runJob.h"

#include "batch/batchNetwork.h"
#include "batch/commandLine.h"
#include "batch/exitStatus.h"
#include "batch/fileError.h"
#include "batch/inputFile.h"
#include "batch/programName.h"
#include "batch/progressLine.h"
#include "batch/report.h"
#include "batch/runCode.h"
#include "batch/runOutputs.h"
#include "batch/temporaryFolder.h"
#include "kernel/replications.h"
#include "kernel/runStatistics.h"
#include "language/exception.h"
#include "model/engineBuilder.h"
#include "model/modelReader.h"

#include <new>
#include <sstream>

namespace {

/// Shows how far a run is, and saves the trace of each replication before it is reset.
class cBatchObserver : public cRunObserver {
public:
    cBatchObserver(cNetwork& watched, cProgressLine& progressLine, cRunOutputs& runOutputs)
        : network(watched), progress(progressLine), outputs(runOutputs) {}

    void multipleRunsBegin() override { progress.begin(); }
    void replicationBegins(std::int32_t index, std::int32_t replications) override {
        progress.advance(index, replications);
    }
    void replicationEnds() override { outputs.appendTrace(network); }

private:
    cNetwork& network;
    cProgressLine& progress;
    cRunOutputs& outputs;
};

/// One run of one model, from its file on.
class cRunJob {
public:
    cRunJob(const cRunOptions& runOptions, std::ostream& messageStream, bool isTerminal)
        : options(runOptions),
          messages(messageStream),
          outputs(runOptions, messageStream),
          progress(messageStream, isTerminal && !runOptions.isQuiet),
          network(runOptions.seed, runOptions.answers, messageStream, progress),
          observer(network, progress, outputs) {
        network.runStatistics->setTemporaryPath(store.getPath() / "replications.csv");
    }

    int run();

private:
    cRunCode readCode();
    std::string readGlobalCode();
    int simulate();
    int report(int status);

    const cRunOptions& options;
    std::ostream& messages;
    cRunOutputs outputs;
    cTemporaryFolder store;  // of the replication lines
    cProgressLine progress;
    cBatchNetwork network;
    cBatchObserver observer;
};

int cRunJob::run() { return report(simulate()); }

/// Files are read in the order in which their code is executed.
cRunCode cRunJob::readCode() {
    std::vector<std::string> codeTexts;
    codeTexts.reserve(options.codePaths.size());
    for (const std::string& path : options.codePaths) codeTexts.push_back(readFile(path));

    cRunCode code;
    code.waitingLines = leadingLines(codeTexts, options.statements);
    code.globalCode = readGlobalCode();
    if (options.replications) code.closingStatements = {"MULTISIM " + std::to_string(*options.replications)};
    return code;
}

/// Fills the network. @return the Global Code of the model. @throws cFileError if there is nothing to run.
std::string cRunJob::readGlobalCode() {
    std::istringstream text(readFile(options.modelPath));
    cEngineBuilder builder(network);
    const cModelReading reading = readModel(text, builder);
    messages << warningLines(options.modelPath, reading);
    if (!reading.isRunnable) throw cFileError{"nothing to run in " + options.modelPath};
    return reading.globalCode;
}

/// Reads and runs. The stop and a lack of memory can come in both. @return the exit status so far.
int cRunJob::simulate() {
    int status = exitStatus::done;
    std::string failed;
    try {
        cRunCode code = readCode();
        runReplications(network, code, observer);
    } catch (const cException& failure) {
        status = failure.code < failureCode::userStop ? exitStatus::modelFailed : exitStatus::stopped;
        failed = failureText(failure);
    } catch (const std::bad_alloc&) {
        status = exitStatus::modelFailed;
        failed = "The model needs more memory than there is.\n";
    }
    progress.erase();
    if (status == exitStatus::modelFailed) tell(messages, "the model failed.");
    messages << failed;
    return status;
}

int cRunJob::report(int status) {
    const bool isPartial = status != exitStatus::done;
    if (isPartial) {
        messages << partialNote(network.runStatistics->getReplicationCount()) << '\n';
        network.runStatistics->flushLines();
    }
    return outputs.write(network, isPartial) ? status : exitStatus::fileTrouble;
}

}  // namespace

int runJob(const cRunOptions& options, std::ostream& messages, bool isTerminal) {
    try {
        return cRunJob(options, messages, isTerminal).run();
    } catch (const cFileError& error) {
        tell(messages, error.message);
        return exitStatus::fileTrouble;
    } catch (const cException& stopped) {  // while an output kept us waiting for its reader
        messages << failureText(stopped);
        return exitStatus::stopped;
    } catch (const std::bad_alloc&) {
        tell(messages, "there is not enough memory");
        return exitStatus::modelFailed;
    }
}
