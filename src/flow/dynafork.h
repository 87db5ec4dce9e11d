#pragma once

#include "flow/branching.h"

/// Sends each resource along an out-link of its own, drawn when it comes. All successors are told of a burst, also
/// those that then receive nothing.
class cNodeAuxDynafork : public cNodeBranching {
public:
    /// Takes the name "Dynafork" and a number, or stays without a name if that one is taken.
    cNodeAuxDynafork() { setName("Dynafork" + std::to_string(getElementCounter())); }

    std::string getKind() const override { return "DYNAFORK"; }

    void flowBegin() override;
    void flowSettle() override;
    void flowEnd() override;

protected:
    void beforeOnFlow() override { chooseBranch(); }
};
