#include "flow/fork.h"

#include "flow/link.h"
#include "kernel/trace.h"

void cNodeAuxFork::flowBegin() {
    ++nSources;
    for (const cBranch& candidate : chooseBranch()) {
        const cNode* successor = candidate.link->getSuccNode();
        network().trace.branch(network().simTime, getName(), candidate.link == chosenLink, candidate.runningSum,
                               successor == nullptr ? std::string() : successor->getName());
    }
    branch().forSuccessor<&cNodeReceiver::flowBegin>();
}

void cNodeAuxFork::flowSettle() {
    if (chosenLink != nullptr) chosenLink->forSuccessor<&cNodeReceiver::flowSettle>();
    chosenLink = nullptr;
}

void cNodeAuxFork::flowEnd() {
    if (--nSources == 0) branch().forSuccessor<&cNodeReceiver::flowEnd>();
}
