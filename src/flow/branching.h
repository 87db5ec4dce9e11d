#pragma once

#include "flow/homogHolder.h"
#include "kernel/receiver.h"

#include <cstdint>
#include <vector>

class cLink;

/// What Fork and Dynafork have in common: what flows in goes on at once, within the same firing, along one out-link
/// that is drawn by strength. They differ in when it is drawn.
class cNodeBranching : public cNodeReceiver, public cHomogHolder {
public:
    /// Runs the ONFLOW code of the branch, an instance in hand, and sends the resource along it.
    /// @throws cException (code 2) if there is no out-link, and as the strengths and the code fail.
    void receive(cRes& resource) override;
    void removeOutLink(cLink* link) override;
    /// Does nothing. A burst that never came to its end stays open, also into later replications.
    void resetElement() override {}

protected:
    struct cBranch {
        cLink* link;
        double strength;
        double runningSum = 0.0;  // of the shares of the strengths, from the first link by name on
    };

    /// Draws `chosenLink` by the strengths as they are now. The number comes from the C library's sequence, which
    /// belongs to the process and is no stream of the model.
    /// @return all branches, by link name.
    /// @throws cException (code 2) if the strengths add up to 0, as they do where there is no out-link.
    std::vector<cBranch> chooseBranch();
    /// The link drawn, or the last one where none is.
    cLink& branch();
    /// A resource has come, and stands in hand if it is an instance.
    virtual void beforeOnFlow() {}

    std::int32_t nSources = 0;    // open flows towards this node
    cLink* chosenLink = nullptr;  // one of the out-links

private:
    [[noreturn]] void failWithoutStrength();
};
