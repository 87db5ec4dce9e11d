#include "kernel/queue.h"

#include "kernel/trace.h"
#include "support/failureOf.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using cTexts = std::vector<std::string>;

/// A queue that counts how often it would be drawn anew.
class cDrawnQueue : public cNodeQueue {
public:
    void redrawQueue() override { ++redraws; }

    int redraws = 0;
};

/// A generic queue of soil, Pile, with a Combi behind it, and one of trucks, Yard, with another. Both Combis have
/// nothing to wait for yet.
class cQueueTest : public ::testing::Test {
protected:
    void SetUp() override {
        network.addLink("L1", pile, dig);
        network.addLink("L2", yard, haul);
    }

    void receiveSoil(double amount) { pile.receive(std::make_shared<cResGen>(&soil, amount)); }
    void receiveSoilAt(double time, double amount) {
        network.simTime = time;
        receiveSoil(amount);
    }
    std::shared_ptr<cResCompound> receiveTruck() {
        auto made = std::make_shared<cResCompound>(&truck);
        yard.receive(made);
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

// ---- what comes in

TEST_F(cQueueTest, amountsAddUp) {
    receiveSoil(2.5);
    receiveSoil(0.25);

    EXPECT_EQ(pile.getCurCount(), 2.75);
    EXPECT_EQ(pile.getAttribute("TotCount"), 2.75);
    ASSERT_EQ(pile.getContents().size(), 1U);
    EXPECT_EQ(pile.getContents().front()->quantity(), 2.75);
}

TEST_F(cQueueTest, anAmountThatComesInStaysAsItIs) {
    const auto load = std::make_shared<cResGen>(&soil, 2.0);
    receiveSoil(3.0);

    pile.receive(load);

    EXPECT_EQ(load->getAmount(), 2.0);
}

TEST_F(cQueueTest, resourcesCountOneEach) {
    receiveTruck();
    receiveTruck();

    EXPECT_EQ(yard.getCurCount(), 2.0);
    EXPECT_EQ(yard.getAttribute("TotCount"), 2.0);
    EXPECT_EQ(yard.getContents().size(), 2U);
}

TEST_F(cQueueTest, aResourceKnowsWhereItWaitsAndSinceWhen) {
    network.simTime = 7.0;

    const auto made = receiveTruck();

    EXPECT_EQ(made->timeIn, 7.0);
    EXPECT_EQ(made->holderElement, &yard);
}

TEST_F(cQueueTest, theMaximumGrowsOnlyWhenItIsPassed) {
    receiveSoil(4.0);
    pile.drawAmount(4.0);

    receiveSoil(4.0);

    EXPECT_EQ(pile.getAttribute("MaxCont"), 4.0);
    EXPECT_EQ(pile.getAttribute("TotCount"), 8.0);
}

TEST_F(cQueueTest, aQueueWithoutOutLinksReceivesAndCounts) {
    cNodeQueue& dump = network.addQueue("Dump", soil);

    dump.receive(std::make_shared<cResGen>(&soil, 3.0));
    dump.flowSettle();
    const double drawn = dump.drawAmount(1.0);

    EXPECT_EQ(drawn, 1.0);
    EXPECT_EQ(dump.getCurCount(), 2.0);
}

TEST_F(cQueueTest, aQueueWithoutATypeTakesNothingIn) {
    cNodeQueue queue;
    network.simTime = 3.0;

    queue.receive(std::make_shared<cResGen>(&soil, 3.0));

    EXPECT_EQ(queue.getCurCount(), 0.0);
    EXPECT_EQ(queue.getAttribute("TotCount"), 0.0);
    EXPECT_TRUE(queue.getContents().empty());
}

TEST_F(cQueueTest, aCharacterizedResourceIsRefusedByAGenericQueue) {
    const cException failure = failureOf([&] { pile.receive(std::make_shared<cResCompound>(&truck)); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_TRUE(failure.message.starts_with("Queue ")) << failure.message;
    EXPECT_NE(failure.message.find("Pile"), std::string::npos);
    EXPECT_NE(failure.message.find("Soil"), std::string::npos);
}

TEST_F(cQueueTest, anAmountIsRefusedByACharacterizedQueue) {
    const cException failure = failureOf([&] { yard.receive(std::make_shared<cResGen>(&soil, 1.0)); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_TRUE(failure.message.starts_with("Queue ")) << failure.message;
    EXPECT_NE(failure.message.find("Yard"), std::string::npos);
    EXPECT_NE(failure.message.find("Truck"), std::string::npos);
    EXPECT_TRUE(yard.getContents().empty());
}

TEST_F(cQueueTest, anAmountWithoutATypeIsRefusedByACharacterizedQueue) {
    const cException failure = failureOf([&] { yard.receive(std::make_shared<cResGen>(nullptr, 1.0)); });

    EXPECT_EQ(failure.code, 2);
}

// ---- order

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

TEST_F(cQueueTest, aFailingKeyComesOutOfReceive) {
    yard.setOrderKeyText("1/(1-SimTime)");
    network.simTime = 1.0;

    const cException failure = failureOf([&] { receiveTruck(); });

    EXPECT_EQ(failure.message, "Division by 0.");
}

// ---- what goes out

TEST_F(cQueueTest, aDrawGivesNoMoreThanIsThere) {
    receiveSoil(5.0);

    EXPECT_EQ(pile.drawAmount(7.0), 5.0);

    EXPECT_EQ(pile.getCurCount(), 0.0);
    EXPECT_EQ(pile.getContents().front()->quantity(), 0.0);
}

TEST_F(cQueueTest, aDrawTakesWhatIsAskedFor) {
    receiveSoil(5.0);

    EXPECT_EQ(pile.drawAmount(1.5), 1.5);

    EXPECT_EQ(pile.getCurCount(), 3.5);
    EXPECT_EQ(pile.getAttribute("TotCount"), 5.0);
}

TEST_F(cQueueTest, theMinimumReads0WhateverIsDrawn) {
    receiveSoil(5.0);
    for (const double amount : {2.0, 9.0, -3.0, 1.0}) pile.drawAmount(amount);

    EXPECT_EQ(pile.getAttribute("MinCont"), 0.0);
}

TEST_F(cQueueTest, aCharacterizedDrawLeavesTheMinimumToo) {
    const auto made = receiveTruck();

    yard.drawInstance(made);

    EXPECT_EQ(yard.getAttribute("MinCont"), 0.0);
}

TEST_F(cQueueTest, aResourceIsTakenOutFromAnywhereAndTheGapCloses) {
    receiveTruck();
    const auto second = receiveTruck();
    receiveTruck();

    EXPECT_EQ(yard.drawInstance(second), second);

    EXPECT_EQ(trucksInOrder(), (std::vector<int>{1, 3}));
    EXPECT_EQ(yard.getCurCount(), 2.0);
    EXPECT_EQ(second->holderElement, nullptr);
}

TEST_F(cQueueTest, aResourceThatIsNotThereIsNotGiven) {
    const auto first = receiveTruck();
    yard.drawInstance(first);

    EXPECT_EQ(yard.drawInstance(first), nullptr);

    EXPECT_EQ(yard.getCurCount(), 0.0);
}

TEST_F(cQueueTest, aResourceThatStandsTwiceIsDrawnOnceAtATime) {
    const auto made = receiveTruck();
    yard.receive(made);
    const std::weak_ptr<cRes> watched = made;
    EXPECT_EQ(yard.getCurCount(), 2.0);

    EXPECT_EQ(yard.drawInstance(made), made);
    EXPECT_EQ(yard.getContents(), std::vector<cResPtr>{made});
    EXPECT_EQ(yard.drawInstance(made), made);

    EXPECT_TRUE(yard.getContents().empty());
}

TEST_F(cQueueTest, aResourceThatStandsTwiceIsForgottenCleanly) {
    const std::weak_ptr<cRes> watched = [&] {
        auto made = receiveTruck();
        yard.receive(made);
        return made;
    }();
    ASSERT_FALSE(watched.expired());

    yard.resetElement();

    EXPECT_TRUE(watched.expired());
}

// ---- who is woken

TEST_F(cQueueTest, aDrawnAmountWakesTheCombisBehind) {
    pile.drawAmount(1.0);

    EXPECT_TRUE(dig.mayAttempt());
    EXPECT_FALSE(haul.mayAttempt());
}

TEST_F(cQueueTest, aSuccessfulCharacterizedDrawWakesNobody) {
    yard.drawInstance(receiveTruck());

    EXPECT_FALSE(haul.mayAttempt());
}

TEST_F(cQueueTest, aCharacterizedDrawThatFindsNothingWakesTheCombisBehind) {
    yard.drawInstance(std::make_shared<cResCompound>(&truck));

    EXPECT_TRUE(haul.mayAttempt());
}

TEST_F(cQueueTest, whatComesInWakesNobodyUntilTheFiringIsOver) {
    pile.flowBegin();
    receiveSoil(3.0);
    pile.flowEnd();
    EXPECT_FALSE(dig.mayAttempt());

    pile.flowSettle();

    EXPECT_TRUE(dig.mayAttempt());
}

TEST_F(cQueueTest, everyCombiBehindIsWoken) {
    network.addLink("L3", pile, haul);

    pile.flowSettle();

    EXPECT_TRUE(dig.mayAttempt());
    EXPECT_TRUE(haul.mayAttempt());
}

// ---- entry code and the record of draws

TEST_F(cQueueTest, anEntryLeavesABareLineFeedInTheTraceThenAnEventPointThenItsCode) {
    network.execute("ONENTRY Pile POST \"%f\" Pile.CurCount;\n");
    network.onEventPoint = [&] { network.messages.push_back("event behind " + network.traceLines.back()); };

    receiveSoil(3.0);

    EXPECT_EQ(network.messages, (cTexts{"event behind \n", "3.000000"}));
}

TEST_F(cQueueTest, entryCodeHasTheResourceThatCameIn) {
    network.execute("ONENTRY Yard POST in;\n");
    const cRes* seen = nullptr;
    network.onMessage = [&](const std::string&) { seen = network.symbols->currentResource; };

    const auto made = receiveTruck();

    EXPECT_EQ(seen, made.get());
    EXPECT_EQ(network.symbols->currentResource, nullptr);
}

TEST_F(cQueueTest, entryCodeOfAnAmountHasItTooButNothingOnTheStack) {
    network.execute("ONENTRY Pile POST in;\n");
    double seen = 0.0;
    std::size_t onStack = 9;
    network.onMessage = [&](const std::string&) {
        seen = network.symbols->currentResource->quantity();
        onStack = network.symbols->getResourceStack().size();
    };

    receiveSoil(3.0);

    EXPECT_EQ(seen, 3.0);
    EXPECT_EQ(onStack, 0U);
}

TEST_F(cQueueTest, theResourceStaysOnTheStackWhileTheEntryCodeRuns) {
    network.execute("ONENTRY Yard POST in;\n");
    const cRes* inHand = nullptr;
    network.onMessage = [&](const std::string&) { inHand = network.resourceInHand(); };

    const auto made = receiveTruck();

    EXPECT_EQ(inHand, made.get());
}

TEST_F(cQueueTest, theMaximumIsTakenBehindTheEntryCode) {
    network.execute("ONENTRY Pile POST in;\n");
    double seen = 9.0;
    network.onMessage = [&](const std::string&) { seen = pile.getAttribute("MaxCont"); };

    receiveSoil(3.0);

    EXPECT_EQ(seen, 0.0);
    EXPECT_EQ(pile.getAttribute("MaxCont"), 3.0);
}

TEST_F(cQueueTest, aDrawIsRecordedWithTheCountsBehindItAndThenComesAnEventPoint) {
    receiveSoil(9.0);
    network.simTime = 7.0;
    network.onEventPoint = [&] { network.messages.push_back(network.traceLines.back()); };

    pile.drawAmount(5.0);

    EXPECT_EQ(network.messages, cTexts{"7.00,ONDRAWFROM,Pile,,,,4.00,9.00,\n"});
}

TEST_F(cQueueTest, aDrawRunsNoCode) {
    receiveSoil(9.0);
    network.execute("ONENTRY Pile POST in;\n");

    pile.drawAmount(5.0);

    EXPECT_TRUE(network.messages.empty());
}

TEST_F(cQueueTest, aCharacterizedDrawIsRecordedWhetherItFindsSomethingOrNot) {
    const auto made = receiveTruck();
    network.traceLines.clear();

    yard.drawInstance(made);
    yard.drawInstance(made);

    const std::string line = "0.00,ONDRAWFROM,Yard,,,,0.00,1.00,\n";
    EXPECT_EQ(network.traceLines, (cTexts{line, line}));
}

TEST_F(cQueueTest, everyChangeIsDrawnAnew) {
    cDrawnQueue drawn;
    drawn.setResType(&soil);

    drawn.receive(std::make_shared<cResGen>(&soil, 3.0));
    drawn.drawAmount(1.0);
    EXPECT_EQ(drawn.redraws, 2);

    drawn.setResType(&truck);
    const auto made = std::make_shared<cResCompound>(&truck);
    drawn.receive(made);
    drawn.drawInstance(made);
    drawn.drawInstance(made);
    EXPECT_EQ(drawn.redraws, 5);
}

// ---- statistics

TEST_F(cQueueTest, averagesUseTheAreaAsOfTheLastChange) {
    receiveSoilAt(0.0, 5.0);
    network.simTime = 10.0;
    pile.drawAmount(2.0);
    network.simTime = 20.0;

    EXPECT_EQ(pile.getAttribute("AveCont"), 50.0 / 20.0);  // the segment since time 10 isn't in it
    EXPECT_EQ(pile.getAttribute("AveWait"), 50.0 / 5.0);

    pile.drawAmount(0.0);
    EXPECT_EQ(pile.getAttribute("AveCont"), (50.0 + 30.0) / 20.0);
    EXPECT_EQ(pile.getAttribute("AveWait"), (50.0 + 30.0) / 5.0);
}

TEST_F(cQueueTest, aCharacterizedQueueAveragesLikewise) {
    const auto made = receiveTruck();
    receiveTruck();
    network.simTime = 10.0;
    yard.drawInstance(made);
    network.simTime = 40.0;

    EXPECT_EQ(yard.getAttribute("AveCont"), 20.0 / 40.0);
    EXPECT_EQ(yard.getAttribute("AveWait"), 20.0 / 2.0);
}

TEST_F(cQueueTest, aDrawThatFindsNothingClosesTheSegmentToo) {
    receiveTruck();
    network.simTime = 10.0;

    yard.drawInstance(nullptr);

    EXPECT_EQ(yard.getAttribute("AveCont"), 1.0);
}

TEST_F(cQueueTest, theAverageWaitIs0WhileEverythingHappenedAtTime0) {
    receiveSoil(5.0);
    pile.drawAmount(2.0);
    network.simTime = 20.0;

    EXPECT_EQ(pile.getAttribute("AveWait"), 0.0);
}

TEST_F(cQueueTest, theAverageWaitIsNotANumberWhenNothingCameIn) {
    network.simTime = 3.0;
    pile.drawAmount(1.0);

    EXPECT_TRUE(std::isnan(pile.getAttribute("AveWait")));
}

TEST_F(cQueueTest, theAverageContentIsNotANumberAtTime0) {
    receiveSoil(5.0);

    EXPECT_TRUE(std::isnan(pile.getAttribute("AveCont")));
}

TEST_F(cQueueTest, theAverageContentIs0WhenNothingCameIn) {
    EXPECT_EQ(pile.getAttribute("AveCont"), 0.0);
    EXPECT_EQ(pile.getAttribute("AveWait"), 0.0);
}

TEST_F(cQueueTest, nothingRecordsTheLastAmount) {
    receiveSoil(5.0);

    EXPECT_EQ(pile.getAttribute("LastAmtReceived"), 0.0);
}

class cQueueKeywordTest : public cQueueTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cQueueKeywordTest, isUnknownAndNamedTogetherWithTheQueue) {
    const cException failure = failureOf([&] { pile.getAttribute(GetParam()); });

    EXPECT_EQ(failure.code, 0);
    EXPECT_EQ(failure.message, std::string("Invalid keyword ") + GetParam());
    EXPECT_EQ(failure.location, "In queue Pile");
    EXPECT_EQ(failure.expressionText, "");
}

INSTANTIATE_TEST_SUITE_P(unknown, cQueueKeywordTest,
                         ::testing::Values("", "curcount", "CurCount ", "MaxCount", "MinCount", "AveCount", "Nope"));

// ---- type

TEST_F(cQueueTest, aNewTypeIsRegisteredAndEmptiesTheContent) {
    receiveSoil(5.0);

    pile.setResType(&truck);

    EXPECT_EQ(pile.getResType(), &truck);
    EXPECT_TRUE(pile.isCharacterized());
    EXPECT_TRUE(pile.getContents().empty());
    EXPECT_EQ(truck.getHolders().back(), &pile);
}

TEST_F(cQueueTest, aGenericTypeBringsAnEmptyAmount) {
    receiveTruck();

    yard.setResType(&soil);

    EXPECT_TRUE(yard.isGeneric());
    ASSERT_EQ(yard.getContents().size(), 1U);
    EXPECT_EQ(yard.getContents().front()->quantity(), 0.0);
    EXPECT_EQ(yard.getContents().front()->getResType(), &soil);
}

TEST_F(cQueueTest, theTypeThatItHasChangesNothing) {
    receiveSoil(5.0);
    const std::size_t holders = soil.getHolders().size();

    pile.setResType(&soil);

    EXPECT_EQ(pile.getContents().front()->quantity(), 5.0);
    EXPECT_EQ(soil.getHolders().size(), holders);
}

TEST_F(cQueueTest, aTypeThatIsDestroyedLeavesAnUsableQueueWithoutAType) {
    receiveSoil(5.0);

    network.resourceTypes.erase("Soil");

    EXPECT_EQ(pile.getResType(), nullptr);
    EXPECT_NO_THROW(pile.receive(std::make_shared<cResGen>(nullptr, 1.0)));
    EXPECT_EQ(pile.getCurCount(), 5.0);
    pile.resetElement();
    EXPECT_TRUE(pile.getContents().empty());
}

TEST_F(cQueueTest, aTypeThatIsReplacedWhileResourcesWaitLeavesNothingDangling) {
    receiveTruck();
    auto replacement = std::make_unique<cResTypeCompound>("Truck");

    truck.moveHoldersTo(replacement.get());
    network.resourceTypes["Truck"] = std::move(replacement);

    EXPECT_EQ(yard.getResType(), network.findResourceType("Truck"));
    EXPECT_TRUE(yard.getContents().empty());
}

// ---- reset

TEST_F(cQueueTest, resetEmptiesTheQueueAndItsStatistics) {
    receiveSoilAt(0.0, 5.0);
    network.simTime = 10.0;
    pile.drawAmount(1.0);

    pile.resetElement();

    for (const char* keyword : {"CurCount", "TotCount", "MinCont", "MaxCont", "AveWait", "AveCont"})
        EXPECT_EQ(pile.getAttribute(keyword), 0.0) << keyword;
    ASSERT_EQ(pile.getContents().size(), 1U);
    EXPECT_EQ(pile.getContents().front()->quantity(), 0.0);
}

TEST_F(cQueueTest, resetDestroysWhatWaits) {
    const std::weak_ptr<cRes> waiting = receiveTruck();

    yard.resetElement();

    EXPECT_TRUE(waiting.expired());
    EXPECT_TRUE(yard.getContents().empty());
}

TEST_F(cQueueTest, resetForgetsTheEntryCodeAndKeepsTheTexts) {
    network.execute("ONENTRY Pile POST in;\n");
    pile.setOrderKeyText("5");
    pile.setInitialContentText("6");

    pile.resetElement();
    receiveSoil(1.0);

    EXPECT_TRUE(network.messages.empty());
    EXPECT_EQ(pile.getOrderKeyText(), "5");
    EXPECT_EQ(pile.getInitialContentText(), "6");
}

TEST_F(cQueueTest, aNewQueueStartsWithNothing) {
    const cNodeQueue queue;

    EXPECT_EQ(queue.getInitialContentText(), "0");
    EXPECT_EQ(queue.evaluateInitialContent(), 0.0);
    EXPECT_EQ(queue.getResType(), nullptr);
    EXPECT_FALSE(queue.isReserved());
}

TEST_F(cQueueTest, entryCodeRunsInTheFirstReplicationOnly) {
    pile.setInitialContentText("9");

    network.run("MULTISIM 3;\nONENTRY Pile POST in;\n");

    EXPECT_EQ(network.messages, cTexts{"in "});
}

TEST_F(cQueueTest, theInitialContentCountsAsReceivedAtTime0) {
    pile.setInitialContentText("9");
    dig.setDurationText("1");

    network.run("SIMULATECONDITION SimTime>=1;\n");

    const std::vector<double> means = network.runStatistics->getMeans();
    const std::vector<std::string> names = network.runStatistics->columnNames();
    const auto valueOf = [&](const std::string& name) {
        return means.at(static_cast<std::size_t>(std::ranges::find(names, name) - names.begin()));
    };
    EXPECT_EQ(valueOf("Pile.TotCount"), 9.0);
    EXPECT_EQ(valueOf("Pile.MaxCont"), 9.0);
    EXPECT_EQ(valueOf("Pile.CurCount"), 0.0);
    EXPECT_EQ(valueOf("Pile.AveWait"), 0.0);
}

}  // namespace
