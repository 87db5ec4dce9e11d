#pragma once

#include "flow/branching.h"

/// Sends all of a burst of flow along one out-link, drawn before the first resource arrives.
///
/// It is drawn anew at each `flowBegin`: where one activity has two links to here, the later draw holds, `flowBegin`
/// has gone to both branches, and `flowEnd` goes to the later one alone.
class cNodeAuxFork : public cNodeBranching {
public:
    cNodeAuxFork() { takeDefaultName("Fork"); }

    std::string getKind() const override { return "FORK"; }
    void checkStart() const override { refuseStartWithoutOutLinks("Fork"); }

    void flowBegin() override;
    void flowSettle() override;
    void flowEnd() override;
};
