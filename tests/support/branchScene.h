#pragma once

#include "support/burst.h"
#include "support/failureOf.h"
#include "support/recordingReceiver.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

using cTexts = std::vector<std::string>;

/// The numbers that choices take after `srand(seed)`: the C library's rand(), scaled to 0..32767, over 32767.
inline std::vector<double> choiceNumbers(unsigned seed, int count) {
    std::vector<double> numbers;
    std::srand(seed);
    for (int i = 0; i < count; ++i)
        numbers.push_back(static_cast<int>(std::rand() / (RAND_MAX + 1.0) * 32768) / 32767.0);
    std::srand(seed);
    return numbers;
}

/// The first seed whose numbers satisfy `wanted`; the C library stands at its beginning afterwards.
template <typename cWanted>
unsigned seedWhere(int count, cWanted wanted) {
    for (unsigned seed = 1; seed < 10000000; ++seed)
        if (wanted(choiceNumbers(seed, count))) return seed;
    ADD_FAILURE() << "no seed gives such numbers";
    return 0;
}

/// Three nodes that record, A, B and C, which write into one log, `network.messages`. The links to them have their
/// names with "To" in front; so the order of the links is that of the nodes. Soil flows, or trucks.
class cBranchScene : public ::testing::Test {
protected:
    void SetUp() override { network.simState = 1; }

    /// Draws a branch from `from` to each of A, B, C for which there is a strength.
    void branch(cNode& from, const std::vector<std::string>& strengths) {
        for (std::size_t i = 0; i < strengths.size(); ++i) {
            cLink& link = network.addLink("To" + sinks[i]->getName(), from, *sinks[i]);
            link.setRuleText(eLinkRule::strength, strengths[i]);
        }
    }
    cLink& link(const std::string& name) { return *network.findElement<cLink>(name); }
    /// The names of the nodes in the order in which resources reached them, since it was asked last.
    std::string reached() {
        std::string names;
        for (const std::string& call : network.messages)
            if (call.starts_with("receive ")) names += call.back();
        network.messages.clear();
        return names;
    }
    std::uint32_t streamState() { return network.symbols->randomStreams().first().getState(); }

    static constexpr const char* nothingToChoose = "All outlinks of Fork \"F\" equate to 0, causing a logical error.";

    cWatchedNetwork network;
    cResTypeGen& soil = network.addGenericType("Soil");
    cResTypeCompound& truck = network.addCompoundType("Truck");
    cRecordingReceiver a{"A", network.messages};
    cRecordingReceiver b{"B", network.messages};
    cRecordingReceiver c{"C", network.messages};
    const std::vector<cRecordingReceiver*> sinks{&a, &b, &c};
};
