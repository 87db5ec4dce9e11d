#pragma once

#include "flow/compound.h"
#include "kernel/receiver.h"

#include <vector>

/// What flows in tests, and a burst of it by hand.

inline cResPtr amountOf(cResType& type, double amount) { return makeCounted<cResGen>(&type, amount); }

inline cShared<cResCompound> instanceOf(cResTypeCompound& type) { return makeCounted<cResCompound>(&type); }

/// A burst as the end of an activity with one link would send it.
inline void sendBurst(cNodeReceiver& node, const cResList& resources) {
    node.flowBegin();
    for (const cResPtr& resource : resources) node.receive(*resource);
    node.flowEnd();
    node.flowSettle();
}
