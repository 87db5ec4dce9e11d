#include "flow/branching.h"

#include "flow/link.h"
#include "language/symbols.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace {

/// A number in [0, 1] of the 32768 that a C library with the smallest range allowed can give.
double cLibraryNumber() {
    constexpr int smallestRange = 32767;
    constexpr int width = RAND_MAX / (smallestRange + 1) + 1;
    return std::rand() / width / static_cast<double>(smallestRange);  // NOLINT: this generator is the contract
}

}  // namespace

std::vector<cNodeBranching::cBranch> cNodeBranching::chooseBranch() {
    chosenLink = nullptr;
    std::vector<cBranch> branches;
    double sum = 0.0;
    for (const auto& [name, link] : getOutLinks()) {
        branches.push_back({link, link->evaluateStrength()});
        sum += branches.back().strength;
    }
    if (sum == 0.0) failWithoutStrength();

    double runningSum = 0.0;
    for (cBranch& candidate : branches) candidate.runningSum = runningSum += candidate.strength / sum;
    const double number = cLibraryNumber();
    const auto chosen =
        std::ranges::find_if(branches, [&](const cBranch& candidate) { return candidate.runningSum >= number; });
    chosenLink = chosen == branches.end() ? branches.back().link : chosen->link;
    return branches;
}

cLink& cNodeBranching::branch() {
    if (chosenLink != nullptr) return *chosenLink;
    if (getOutLinks().empty()) failWithoutStrength();
    return *getOutLinks().rbegin()->second;
}

void cNodeBranching::receive(cRes& resource) {
    {
        std::optional<cSymbols::cResourceInHand> inHand;
        if (resource.asInstance() != nullptr) inHand.emplace(*network().symbols, &resource);
        beforeOnFlow();
        branch().runOnFlowStatements();
    }
    branch().passOn(resource);
}

void cNodeBranching::removeOutLink(cLink* link) {
    if (link == chosenLink) chosenLink = nullptr;
    cNodeReceiver::removeOutLink(link);
}

void cNodeBranching::failWithoutStrength() {
    elementError.code = failureCode::expression;
    elementError.message = "All outlinks of Fork \"" + getName() + "\" equate to 0, causing a logical error.";
    throw cException{elementError};
}
