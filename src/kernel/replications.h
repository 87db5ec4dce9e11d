#pragma once

#include <cstdint>
#include <string>
#include <vector>

class cNetwork;

/// Where the steps of a run are shown. All empty here: a host fills in what it has a place for.
class cRunObserver {
public:
    virtual ~cRunObserver() = default;

    /// The store of results was emptied.
    virtual void resultsWereReset() {}
    /// The code has run, and one replication or fewer is to come.
    virtual void singleRunBegins() {}
    /// The code has run, and more than one replication is to come.
    virtual void multipleRunsBegin() {}
    /// A replication of several begins. `index` counts from 0.
    virtual void replicationBegins(std::int32_t index, std::int32_t replications);
    /// A replication has been gathered and not yet reset: its trace still stands.
    virtual void replicationEnds() {}
};

/// The code of a run, besides what the elements have.
struct cRunCode {
    std::vector<std::string> waitingLines;       ///< compiled ahead of the Global Code; empty after the run began
    std::string globalCode;                      ///< text, lines parted by line feeds
    std::vector<std::string> closingStatements;  ///< executed as if they ended the Global Code
};

/// One run: compiles and executes the code, then simulates as many replications as the network has been told to make,
/// gathers each, and resets after each. With more than one, stream 0 is seeded anew for each, with consecutive seeds
/// from the network's clock.
/// @throws cException at the first failure. What was gathered stays; the network is left as the failure found it, and
/// `clearNetwork` readies it for another run.
void runReplications(cNetwork& network, cRunCode& code, cRunObserver& observer);
