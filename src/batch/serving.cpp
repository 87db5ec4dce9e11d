#include "batch/serving.h"

#include "batch/commandLine.h"
#include "batch/exitStatus.h"
#include "batch/programName.h"
#include "batch/servedNetwork.h"
#include "batch/stopSignal.h"
#include "kernel/runStatistics.h"
#include "language/exception.h"

#include <new>

int serveController(const cRunOptions& options, std::ostream& failures) {
    try {
        cServedNetwork network(options.seed, failures);
        network.runStatistics->setTemporaryPath({});  // nobody can ask for the lines, nor clear up behind a kill
        if (!options.modelPath.empty() && !network.open(options.modelPath))
            return isStopRaised() ? exitStatus::stopped : exitStatus::fileTrouble;
        network.serve();
        return exitStatus::done;
    } catch (const cException&) {
        return exitStatus::stopped;
    } catch (const std::bad_alloc&) {
        tell(failures, "there is not enough memory");
        return exitStatus::modelFailed;
    }
}
