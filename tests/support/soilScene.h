#pragma once

#include "support/failureOf.h"
#include "support/streamStates.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

/// Soil1 -> Haul -> Soil2, all of soil, joined by Draw1 and Release1; and Yard, a queue of trucks, whose save property
/// is weight. Haul lasts no time and takes one unit of soil. Stream 0 begins with state 1.
class cSoilScene : public ::testing::Test {
protected:
    cSoilScene() { truck.setSaveProps({"weight"}); }

    std::uint32_t state() { return network.symbols->randomStreams().first().getState(); }

    /// Executes one statement, or gives its failure.
    void execute(const std::string& text) { cStatement(text).execute(network); }
    cException failureOfStatement(const std::string& text) {
        return failureOf([&] { execute(text); });
    }

    cTestNetwork network{1};
    cResTypeGen& soil = network.addGenericType("Soil");
    cResTypeCompound& truck = network.addCompoundType("Truck");
    cNodeQueue& soil1 = network.addQueue("Soil1", soil);
    cNodeQueue& soil2 = network.addQueue("Soil2", soil);
    cNodeQueue& yard = network.addQueue("Yard", truck);
    cNodeActCombi& haul = network.addCombi("Haul");
    cLink& draw1 = network.addLink("Draw1", soil1, haul);
    cLink& release1 = network.addLink("Release1", haul, soil2);
};
