#include "kernel/replications.h"

#include "kernel/network.h"
#include "kernel/runStatistics.h"
#include "language/compilation.h"
#include "language/symbols.h"
#include "language/words.h"

namespace {

/// Seeds for the replications of a run: the clock is asked once, when the first is needed.
class cReplicationSeeds {
public:
    explicit cReplicationSeeds(const cNetwork::cClock& secondsSource) : clock(secondsSource) {}

    std::uint32_t next() {
        if (!asked) seed = static_cast<std::uint64_t>(clock());
        asked = true;
        return static_cast<std::uint32_t>(seed++);
    }

private:
    const cNetwork::cClock& clock;
    bool asked = false;
    std::uint64_t seed = 0;
};

void executeAndEmpty(cNetwork& network) {
    network.runStatements();
    network.statements.clear();
}

void runCode(cNetwork& network, cRunCode& code) {
    compileCode(network, code.waitingLines, eCompiled::everything);
    code.waitingLines.clear();
    executeAndEmpty(network);

    compileCode(network, splitLines(code.globalCode), eCompiled::everything);
    for (const std::string& text : code.closingStatements)
        network.statements.push_back(std::make_unique<cStatement>(text));
    executeAndEmpty(network);
}

}  // namespace

void cRunObserver::replicationBegins(std::int32_t, std::int32_t) {}

void runReplications(cNetwork& network, cRunCode& code, cRunObserver& observer) {
    network.simState = 1;
    network.runStatistics->resetResults();
    observer.resultsWereReset();
    runCode(network, code);
    addInitialContent(network);
    network.runStatistics->prepare();  // once more: only now the ADDTORESULTS labels are known

    cReplicationSeeds seeds(network.clock);
    if (network.replications > 1)
        observer.multipleRunsBegin();
    else
        observer.singleRunBegins();
    for (std::int32_t i = 0; i < network.replications; ++i) {  // read anew: a statement may change the number
        if (network.replications > 1) {
            network.symbols->randomStreams().setSeed(seeds.next());
            observer.replicationBegins(i, network.replications);
        }
        network.runStatements();
        network.runStatistics->gatherReplication();
        observer.replicationEnds();
        network.resetRun();
        network.breathe();  // a simulation that is over at once lets the host do nothing
    }
    network.statements.clear();
    if (network.replications > 1) network.runStatistics->flushLines();
}
