#include "flow/resourceOrder.h"

#include "language/rounding.h"
#include "support/failureOf.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

/// Trucks, numbered from 1. Keys are the host's answers, by the number of the truck in hand.
class cResourceOrderTest : public ::testing::Test {
protected:
    void SetUp() override {
        network.onGet = [this](const std::string&) {
            askedTrucks.push_back(network.resourceInHand()->getResNum());
            return keys.at(askedTrucks.back());
        };
    }

    cResList trucks(int count) {
        cResList made;
        for (int i = 0; i < count; ++i) made.push_back(makeCounted<cResCompound>(&truck));
        return made;
    }
    static std::vector<int> numbersOf(const cResList& resources) {
        std::vector<int> numbers;
        for (const cResPtr& resource : resources)
            numbers.push_back(dynamic_cast<const cResChar&>(*resource).getResNum());
        return numbers;
    }
    /// The trucks 1 to n by the key.
    std::vector<int> ordered(int count, const std::string& keyText) {
        const cExpression key(*network.symbols, keyText, cExpression::eTrial::skip);
        return numbersOf(orderedByKey(trucks(count), key, {}, *network.symbols));
    }

    cWatchedNetwork network;
    cResTypeCompound& truck = network.addCompoundType("Truck");
    std::map<int, double> keys;
    std::vector<int> askedTrucks;
};

TEST_F(cResourceOrderTest, nothingIsOrderedToNothing) {
    EXPECT_TRUE(ordered(0, "GET(\"key\")").empty());
    EXPECT_TRUE(askedTrucks.empty());
}

TEST_F(cResourceOrderTest, theOrderIsAscendingByKey) {
    keys = {{1, 3.0}, {2, -1.0}, {3, 2.0}};

    EXPECT_EQ(ordered(3, "GET(\"key\")"), (std::vector<int>{2, 3, 1}));
}

TEST_F(cResourceOrderTest, equalKeysKeepTheirOrder) {
    keys = {{1, 2.0}, {2, 1.0}, {3, 2.0}, {4, 1.0}};

    EXPECT_EQ(ordered(4, "GET(\"key\")"), (std::vector<int>{2, 4, 1, 3}));
}

TEST_F(cResourceOrderTest, aKeyIsWorkedOutForTheCandidateThenForEachElementFromTheFront) {
    keys = {{1, 1.0}, {2, 2.0}, {3, 1.5}, {4, 0.5}};

    ordered(4, "GET(\"key\")");

    EXPECT_EQ(askedTrucks, (std::vector<int>{1,        // into the empty list
                                             2, 1,     // behind 1
                                             3, 1, 2,  // stops at 2
                                             4, 1}));  // stops at 1
}

TEST_F(cResourceOrderTest, aKeyThatIsNotANumberGoesToTheEndAndIsPassedByAll) {
    keys = {{1, std::nan("")}, {2, 5.0}, {3, 1.0}, {4, std::nan("")}};

    EXPECT_EQ(ordered(4, "GET(\"key\")"), (std::vector<int>{1, 3, 2, 4}));
}

TEST_F(cResourceOrderTest, whatBelongsToTheResourceMeansNothingToAKey) {
    EXPECT_EQ(ordered(3, "0-ResNum"), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(ordered(3, "ResNum"), (std::vector<int>{4, 5, 6}));
}

TEST_F(cResourceOrderTest, theStackIsEmptyAfterwards) {
    ordered(3, "1");

    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cResourceOrderTest, theStackIsEmptyAfterAFailureToo) {
    EXPECT_EQ(failureOf([&] { ordered(3, "1/0"); }).message, "Division by 0.");

    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cResourceOrderTest, aKeyRunsOnBehalfOfItsOwner) {
    cNodeQueue& yard = network.addQueue("Yard", truck);
    network.addLink("L", yard, network.addCombi("Haul"));
    yard.receive(*makeCounted<cResCompound>(&truck));
    const cExpression key(*network.symbols, "PredNode.CurCount", cExpression::eTrial::skip);

    EXPECT_EQ(keyOf(*yard.getContents().front(), key, "L", *network.symbols), 1.0);
}

/// The method told in its plainest form, with a generator of its own.
std::vector<int> shuffledByTwin(int count, cRandomGenerator& generator) {
    const auto draw = [&] { return roundThroughText(generator.uniform()); };
    std::vector<int> sorted;
    for (int candidate = 1; candidate <= count; ++candidate) {
        const double key = draw();
        std::size_t place = 0;
        while (place < sorted.size() && !(draw() > key)) ++place;
        sorted.insert(sorted.begin() + static_cast<std::ptrdiff_t>(place), candidate);
    }
    return sorted;
}

TEST_F(cResourceOrderTest, aRandomKeyShufflesWithOneNumberPerEvaluation) {
    cRandomGenerator twin = network.symbols->randomStreams().first();

    const std::vector<int> order = ordered(30, "Rnd()");

    EXPECT_EQ(order, shuffledByTwin(30, twin));
    EXPECT_EQ(network.symbols->randomStreams().first().getState(), twin.getState());
    std::vector<int> inOrder(30);
    std::iota(inOrder.begin(), inOrder.end(), 1);
    EXPECT_NE(order, inOrder);
}

TEST_F(cResourceOrderTest, aKeyThatIsTheSameForAllIsWorkedOutOnceAndKeepsTheOrder) {
    network.execute("SAVEVALUE level 4");

    for (const char* key : {"1", "1+level", "SimTime", "TimeIn", "level/3", "nan"}) {
        const std::vector<int> order = ordered(100, key);

        EXPECT_EQ(order.size(), 100U) << key;
        EXPECT_TRUE(std::ranges::is_sorted(order)) << key;
    }
}

TEST_F(cResourceOrderTest, aLongOrderingCanBeStopped) {
    network.stopAtHostEvent = 1;

    const cException failure = failureOf([&] { ordered(2000, "Rnd()"); });

    EXPECT_EQ(failure.code, failureCode::userStop);
}

}  // namespace
