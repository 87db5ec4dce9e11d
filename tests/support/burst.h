#pragma once

#include "kernel/receiver.h"

#include <memory>
#include <vector>

/// What flows in tests, and a burst of it by hand.

inline cResPtr amountOf(cResType& type, double amount) { return std::make_shared<cResGen>(&type, amount); }

inline std::shared_ptr<cResCompound> instanceOf(cResTypeCompound& type) {
    return std::make_shared<cResCompound>(&type);
}

/// A burst as the end of an activity with one link would send it.
inline void sendBurst(cNodeReceiver& node, const std::vector<cResPtr>& resources) {
    node.flowBegin();
    for (const cResPtr& resource : resources) node.receive(resource);
    node.flowEnd();
    node.flowSettle();
}
