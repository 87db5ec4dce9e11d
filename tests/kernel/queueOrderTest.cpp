#include "support/failureOf.h"
#include "support/queueTest.h"

#include <cmath>

namespace {

/// Order keys are the host's answers, by the number of the truck that is in hand.
class cQueueOrderTest : public cQueueTest {
protected:
    void SetUp() override {
        yard.setOrderKeyText("GET(\"key\")");
        network.onGet = [this](const std::string&) {
            askedTrucks.push_back(network.resourceInHand()->getResNum());
            return keys.at(askedTrucks.back());
        };
    }

    std::map<int, double> keys;
    std::vector<int> askedTrucks;
};

TEST_F(cQueueOrderTest, smallerKeysStandInFrontAndEqualOnesInOrderOfArrival) {
    keys = {{1, 2.0}, {2, 1.0}, {3, 2.0}};

    for (int i = 0; i < 3; ++i) receiveTruck();

    EXPECT_EQ(trucksInOrder(), (std::vector<int>{2, 1, 3}));
}

TEST_F(cQueueOrderTest, keysAreWorkedOutAnewAtEachInsertionFromTheFront) {
    keys = {{1, 1.0}, {2, 2.0}, {3, 1.5}};

    for (int i = 0; i < 3; ++i) receiveTruck();

    EXPECT_EQ(askedTrucks, (std::vector<int>{1,           // into the empty queue
                                             2, 1,        // behind 1
                                             3, 1, 2}));  // stops at 2
    EXPECT_EQ(trucksInOrder(), (std::vector<int>{1, 3, 2}));
}

TEST_F(cQueueOrderTest, aKeyThatIsNotANumberGoesToTheEndAndIsPassedByAll) {
    keys = {{1, std::nan("")}, {2, 1.0}, {3, std::nan("")}};

    for (int i = 0; i < 3; ++i) receiveTruck();

    EXPECT_EQ(trucksInOrder(), (std::vector<int>{1, 2, 3}));
}

TEST_F(cQueueOrderTest, theStackIsEmptyAgainAfterwards) {
    keys = {{1, 1.0}, {2, 1.0}};

    for (int i = 0; i < 2; ++i) receiveTruck();

    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cQueueTest, theDefaultKeyMeansNothingAndKeepsTheOrderOfArrival) {
    EXPECT_EQ(yard.getOrderKeyText(), "TimeIn");
    for (const double time : {9.0, 3.0, 6.0}) {
        network.simTime = time;
        receiveTruck();
    }

    EXPECT_EQ(trucksInOrder(), (std::vector<int>{1, 2, 3}));
}

TEST_F(cQueueTest, aRandomKeyDrawsOnceForTheNewcomerAndOncePerEntryVisited) {
    yard.setOrderKeyText("Rnd()");
    receiveTruck();
    cRandomGenerator twin = network.symbols->randomStreams().first();

    receiveTruck();

    twin.uniform();
    twin.uniform();
    EXPECT_EQ(network.symbols->randomStreams().first().getState(), twin.getState());
}

TEST_F(cQueueTest, aLongWalkToAPlaceCanBeStopped) {
    yard.setOrderKeyText("0*Rnd()");
    network.stopAtHostEvent = 1;

    const cException failure = failureOf([&] {
        for (int i = 0; i < 500; ++i) receiveTruck();
    });

    EXPECT_EQ(failure.code, failureCode::userStop);
}

TEST_F(cQueueTest, aFailingKeyComesOutOfReceive) {
    yard.setOrderKeyText("1/(1-SimTime)");
    network.simTime = 1.0;

    const cException failure = failureOf([&] { receiveTruck(); });

    EXPECT_EQ(failure.message, "Division by 0.");
}

}  // namespace
