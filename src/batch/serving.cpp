#include "batch/serving.h"

#include "batch/commandLine.h"
#include "batch/exitStatus.h"
#include "batch/fileError.h"
#include "batch/programName.h"
#include "batch/servedNetwork.h"
#include "batch/stopSignal.h"
#include "batch/temporaryFolder.h"
#include "kernel/runStatistics.h"
#include "language/exception.h"

#include <new>

int serveController(const cRunOptions& options, std::ostream& failures) {
    try {
        const cTemporaryFolder store;  // of the replication lines
        cServedNetwork network(options.seed, failures);
        network.runStatistics->setTemporaryPath(store.getPath() / "replications.csv");
        if (!options.modelPath.empty() && !network.open(options.modelPath))
            return isStopRaised() ? exitStatus::stopped : exitStatus::fileTrouble;
        network.serve();
        return exitStatus::done;
    } catch (const cFileError& error) {
        tell(failures, error.message);
        return exitStatus::fileTrouble;
    } catch (const cException&) {
        return exitStatus::stopped;
    } catch (const std::bad_alloc&) {
        tell(failures, "there is not enough memory");
        return exitStatus::modelFailed;
    }
}
