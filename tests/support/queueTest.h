#pragma once

#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

/// A generic queue of soil, Pile, with a Combi behind it, and one of trucks, Yard, with another. Both Combis have
/// nothing to wait for yet.
class cQueueTest : public ::testing::Test {
protected:
    void SetUp() override {
        network.addLink("L1", pile, dig);
        network.addLink("L2", yard, haul);
    }

    void receiveSoil(double amount) { pile.receive(*makeCounted<cResGen>(&soil, amount)); }
    void receiveSoilAt(double time, double amount) {
        network.simTime = time;
        receiveSoil(amount);
    }
    cShared<cResCompound> receiveTruck() {
        auto made = makeCounted<cResCompound>(&truck);
        yard.receive(*made);
        return made;
    }
    /// The numbers of the trucks in the yard, front first.
    std::vector<int> trucksInOrder() const {
        std::vector<int> numbers;
        for (const cResPtr& waiting : yard.getContents())
            numbers.push_back(dynamic_cast<const cResChar&>(*waiting).getResNum());
        return numbers;
    }

    cWatchedNetwork network;
    cResTypeGen& soil = network.addGenericType("Soil");
    cResTypeCompound& truck = network.addCompoundType("Truck");
    cNodeQueue& pile = network.addQueue("Pile", soil);
    cNodeQueue& yard = network.addQueue("Yard", truck);
    cNodeActCombi& dig = network.addCombi("Dig");
    cNodeActCombi& haul = network.addCombi("Haul");
};
