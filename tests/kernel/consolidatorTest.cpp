#include "kernel/consolidator.h"

#include "support/burst.h"
#include "support/failureOf.h"
#include "support/holdings.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using cTexts = std::vector<std::string>;

/// A Consolidator with the default condition, in a run at time 0, with nothing around it; and Dig, a Combi whose
/// instances the test starts by hand.
class cConsolidatorTest : public ::testing::Test {
protected:
    void SetUp() override { network.simState = 1; }

    cNodeAct::cStatistics statistics() const { return gather.getStatistics(); }
    void receiveAt(double time, const cResPtr& resource) {
        network.simTime = time;
        gather.receive(*resource);
    }
    void receiveSoilAt(double time) { receiveAt(time, amountOf(soil, 1.0)); }
    const cActInstance& instance(int instanceId) const { return *gather.findInstance(instanceId); }
    double held(const cResType& type) const { return gather.countOf("Count", &type); }
    /// Fires when the test answers "fire" with something else than 0.
    void fireOnDemand() { gather.setFiringConditionText("GET(\"fire\")"); }

    cWatchedNetwork network;
    cResTypeGen& soil = network.addGenericType("Soil");
    cResTypeCompound& truck = network.addCompoundType("Truck");
    cNodeActCombi& dig = network.addCombi("Dig");
    cNodeConsolidator& gather = network.addConsolidator("Gather");
};

TEST_F(cConsolidatorTest, theKindWordIsConsolidator) { EXPECT_EQ(gather.getKind(), "CONSOLIDATOR"); }

TEST_F(cConsolidatorTest, theDefaultNameHasTheNumberOfTheCounter) {
    cNetworkElement::setElementCounter(7);

    const cNodeConsolidator consolidator;

    EXPECT_EQ(consolidator.getName(), "Consolidator8");
    EXPECT_EQ(consolidator.getElementId(), 7);
}

TEST_F(cConsolidatorTest, aDefaultNameIsTriedOnceAndStaysEmptyOnAClash) {
    cNetworkElement::setElementCounter(7);
    network.elements["Consolidator8"];

    const cNodeConsolidator consolidator;

    EXPECT_EQ(consolidator.getName(), "");
    EXPECT_EQ(cNetworkElement::getElementCounter(), 8);
}

TEST_F(cConsolidatorTest, theKeywordsAreThoseOfActivities) {
    receiveSoilAt(0.0);

    EXPECT_EQ(gather.getAttribute("CurInst"), 2.0);
    EXPECT_EQ(gather.getAttribute("TotInst"), 2.0);
    EXPECT_EQ(gather.getAttribute("CurCount"), 0.0);
}

// ---- the condition

TEST_F(cConsolidatorTest, theConditionIs1AtFirstAndCanBeReplaced) {
    const std::string before = gather.getFiringConditionText();

    gather.setFiringConditionText("SimTime>10");

    EXPECT_EQ(before, "1");
    EXPECT_EQ(gather.getFiringConditionText(), "SimTime>10");
}

TEST_F(cConsolidatorTest, aConditionThatIsNoFormulaFailsAndStays) {
    const cException failure = failureOf([&] { gather.setFiringConditionText("1+2)"); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(gather.getFiringConditionText(), "1+2)");
}

TEST_F(cConsolidatorTest, aResetKeepsTheCondition) {
    gather.setFiringConditionText("SimTime>10");

    gather.resetElement();

    EXPECT_EQ(gather.getFiringConditionText(), "SimTime>10");
}

struct cConditionCase {
    double value;
    bool fires;
};

class cFiringConditionTest : public cConsolidatorTest, public ::testing::WithParamInterface<cConditionCase> {};

TEST_P(cFiringConditionTest, firesUnlessItIs0) {
    fireOnDemand();
    network.answers["fire"] = GetParam().value;

    receiveSoilAt(4.0);

    EXPECT_EQ(gather.findInstance(1) != nullptr, GetParam().fires);
    EXPECT_EQ(held(soil), GetParam().fires ? 0.0 : 1.0);
}

INSTANTIATE_TEST_SUITE_P(values, cFiringConditionTest,
                         ::testing::Values(cConditionCase{0.0, false}, cConditionCase{-0.0, false},
                                           cConditionCase{1.0, true}, cConditionCase{-1.0, true},
                                           cConditionCase{0.5, true},
                                           cConditionCase{std::numeric_limits<double>::quiet_NaN(), true}));

TEST_F(cConsolidatorTest, theConditionIsTestedForEachResourceAndCanFireInTheMidstOfABurst) {
    fireOnDemand();
    network.onGet = [&](const std::string&) { return network.askedKeys.size() == 3 ? 1.0 : 0.0; };
    cResList trucks;
    for (int i = 0; i < 5; ++i) trucks.push_back(instanceOf(truck));

    sendBurst(gather, trucks);

    EXPECT_EQ(network.askedKeys.size(), 5U);
    EXPECT_EQ(instance(1).getResources().size(), 3U);
    EXPECT_EQ(gather.getHoldings(&truck), (cResList{trucks[3], trucks[4]}));
}

TEST_F(cConsolidatorTest, theConditionRunsOnBehalfOfNobody) {
    network.addLink("L1", dig, gather, soil);
    gather.setFiringConditionText("PredNode.InContext");
    dig.startInstance({}, 0.0, 2.0);  // and PredNode would be marked active at its end

    network.advanceClock();

    EXPECT_EQ(gather.findInstance(1), nullptr);
    EXPECT_EQ(held(soil), 1.0);
}

TEST_F(cConsolidatorTest, aFailingConditionLeavesWhatCame) {
    gather.setFiringConditionText("1/(SimTime-9)");
    network.execute("ONSTART Gather POST start;\n");

    const cException first = failureOf([&] { receiveSoilAt(9.0); });
    const cException second = failureOf([&] { receiveSoilAt(9.0); });

    EXPECT_EQ(first.message, "Division by 0.");
    EXPECT_EQ(second.message, "Division by 0.");
    EXPECT_EQ(held(soil), 2.0);
    EXPECT_EQ(network.messages, cTexts{"start "});  // it gathers from the first on
}

// ---- the first arrival

TEST_F(cConsolidatorTest, withTheDefaultConditionTheFirstResourceFiresAtOnce) {
    receiveSoilAt(3.0);
    const int totalBefore = statistics().nextInstance;
    const int currentBefore = statistics().curInst;

    network.advanceClock();

    EXPECT_EQ(totalBefore, 2);
    EXPECT_EQ(currentBefore, 2);
    EXPECT_EQ(statistics().nextInstance, 2);
    EXPECT_EQ(statistics().curInst, 1);
    EXPECT_EQ(network.simTime, 3.0);
}

TEST_F(cConsolidatorTest, theFirstInstanceIsCountedTwiceAndHasTheNumber1) {
    for (const double time : {1.0, 2.0, 3.0}) receiveSoilAt(time);

    EXPECT_EQ(gather.findInstance(0), nullptr);
    for (const int number : {1, 2, 3}) EXPECT_NE(gather.findInstance(number), nullptr);
    EXPECT_EQ(statistics().nextInstance, 4);
    EXPECT_EQ(statistics().curInst, 4);
}

TEST_F(cConsolidatorTest, startCodeRunsAtTheFirstArrivalAndAtEachFiring) {
    fireOnDemand();
    network.execute("ONSTART Gather POST \"%d %d\" Gather.CurInst Gather.TotInst;\n");
    std::vector<bool> hasInstance;
    network.onMessage = [&](const std::string&) { hasInstance.push_back(network.symbols->currentInstance != nullptr); };

    receiveSoilAt(1.0);
    receiveSoilAt(2.0);
    const std::size_t whileGathering = network.messages.size();
    network.answers["fire"] = 1.0;
    receiveSoilAt(3.0);
    receiveSoilAt(4.0);

    EXPECT_EQ(whileGathering, 1U);
    EXPECT_EQ(network.messages, (cTexts{"1 1", "1 1", "2 2"}));
    EXPECT_EQ(hasInstance, (std::vector<bool>{false, true, true}));
}

TEST_F(cConsolidatorTest, theFirstResourceIsHeldAlreadyInTheStartCode) {
    network.execute("ONSTART Gather POST start;\n");
    double heldThen = 0.0;
    network.onMessage = [&](const std::string&) {
        if (network.messages.size() == 1) heldThen = held(soil);
    };

    receiveSoilAt(1.0);

    EXPECT_EQ(heldThen, 1.0);
}

TEST_F(cConsolidatorTest, startCodeThatFailsLeavesTheGatheringToTheNextArrival) {
    fireOnDemand();
    network.execute("ONSTART Gather POST \"%f\" 1/(SimTime-9);\n");

    const cException failure = failureOf([&] { receiveSoilAt(9.0); });
    receiveSoilAt(12.0);
    network.answers["fire"] = 1.0;
    receiveSoilAt(13.0);

    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(statistics().nextInstance, 3);
    EXPECT_EQ(instance(2).getStartTime(), 12.0);
    EXPECT_EQ(amountHeld(instance(2).getResources(), soil), 3.0);
}

TEST_F(cConsolidatorTest, anAmountOf0SetsOffTheGathering) {
    fireOnDemand();

    receiveAt(4.0, amountOf(soil, 0.0));
    network.answers["fire"] = 1.0;
    receiveAt(6.0, amountOf(soil, 2.0));

    EXPECT_EQ(instance(1).getStartTime(), 4.0);
    ASSERT_EQ(instance(1).getResources().size(), 1U);
    EXPECT_EQ(amountHeld(instance(1).getResources(), soil), 2.0);
}

// ---- batches

TEST_F(cConsolidatorTest, anInstanceCoversTheTimeOfGathering) {
    gather.setFiringConditionText("SimTime>10");
    for (const double time : {4.0, 8.0, 12.0}) receiveAt(time, instanceOf(truck));

    EXPECT_EQ(instance(1).getStartTime(), 4.0);
    EXPECT_EQ(instance(1).getDuration(), 8.0);
    EXPECT_EQ(instance(1).getEndTime(), 12.0);
    EXPECT_EQ(heldOf(instance(1).getResources(), truck).size(), 3U);
    EXPECT_EQ(statistics().nextInstance, 2);
}

TEST_F(cConsolidatorTest, aSecondReplicationKeepsTheFirstArrivalAndRunsNoStartCodeForIt) {
    gather.setFiringConditionText("SimTime>10");
    for (const double time : {4.0, 8.0, 12.0}) receiveSoilAt(time);
    network.resetRun();
    network.execute("ONSTART Gather POST \"%d %d\" Gather.CurInst Gather.TotInst;\n");

    for (const double time : {5.0, 9.0, 13.0}) receiveSoilAt(time);

    EXPECT_EQ(network.messages, cTexts{"0 0"});  // of the firing alone
    EXPECT_EQ(instance(0).getStartTime(), 4.0);
    EXPECT_EQ(instance(0).getDuration(), 9.0);
    EXPECT_EQ(statistics().nextInstance, 1);
}

TEST_F(cConsolidatorTest, gatheringIsNeverLoweredSoLaterBatchesStartInThePastAndGrow) {
    for (const double time : {5.0, 7.0, 12.0}) receiveSoilAt(time);

    for (const int number : {1, 2, 3}) EXPECT_EQ(instance(number).getStartTime(), 5.0);
    EXPECT_EQ(instance(1).getDuration(), 0.0);
    EXPECT_EQ(instance(2).getDuration(), 2.0);
    EXPECT_EQ(instance(3).getDuration(), 7.0);
    EXPECT_EQ(statistics().firstStart, 5.0);
    EXPECT_EQ(statistics().lastStart, 5.0);
}

TEST_F(cConsolidatorTest, theDurationExpressionHasNoSay) {
    gather.setDurationText("99");

    receiveSoilAt(5.0);
    receiveSoilAt(7.0);

    EXPECT_EQ(instance(2).getDuration(), 2.0);
}

TEST_F(cConsolidatorTest, aClockThatRanBackwardsByOneLeavesTheDurationToTheExpression) {
    gather.setDurationText("99");
    receiveSoilAt(5.0);

    receiveSoilAt(4.0);

    EXPECT_EQ(instance(2).getDuration(), 99.0);
}

TEST_F(cConsolidatorTest, amountsOfATypeMergeOverFiringsAndInstancesStandSideBySide) {
    fireOnDemand();
    cResType& sand = network.addGenericType("Sand");

    for (int i = 0; i < 2; ++i)
        sendBurst(gather, {amountOf(soil, 1.5), instanceOf(truck), amountOf(sand, 1.0), instanceOf(truck)});

    EXPECT_EQ(held(soil), 3.0);
    EXPECT_EQ(held(sand), 2.0);
    EXPECT_EQ(held(truck), 4.0);
    EXPECT_EQ(gather.getHoldings(&soil).size(), 1U);
}

TEST_F(cConsolidatorTest, theHoldingsAreEmptyBehindAFiring) {
    receiveSoilAt(1.0);

    EXPECT_TRUE(gather.getHoldings(&soil).empty());
    EXPECT_EQ(instance(1).getResources().size(), 1U);
}

TEST_F(cConsolidatorTest, burstsMeanNothingToIt) {
    fireOnDemand();

    gather.flowBegin();
    const bool marked = gather.activeMark;
    gather.flowEnd();
    gather.activeMark = true;
    gather.flowSettle();

    EXPECT_FALSE(marked);
    EXPECT_TRUE(gather.activeMark);
    EXPECT_EQ(statistics().nextInstance, 0);
}

TEST_F(cConsolidatorTest, theMarkIsRaisedByAnEndAlone) {
    network.execute("ONSTART Gather POST start;\nBEFOREEND Gather POST before;\nONEND Gather POST end;\n");
    std::vector<bool> marked;
    network.onMessage = [&](const std::string&) { marked.push_back(gather.activeMark); };

    receiveSoilAt(1.0);
    network.advanceClock();

    EXPECT_EQ(network.messages, (cTexts{"start ", "start ", "before ", "end "}));
    EXPECT_EQ(marked, (std::vector<bool>{false, false, true, true}));
    EXPECT_FALSE(gather.activeMark);
}

/// A Consolidator that counts how often it would be drawn anew.
class cDrawnConsolidator : public cNodeConsolidator {
public:
    void refreshElement() override { ++refreshed; }

    int refreshed = 0;
};

TEST_F(cConsolidatorTest, aDrawnConsolidatorIsRefreshedByAFiringAndNotByAnArrival) {
    cDrawnConsolidator drawn;
    drawn.setFiringConditionText("SimTime>10");

    drawn.receive(*amountOf(soil, 1.0));
    const int afterArrival = drawn.refreshed;
    network.simTime = 12.0;
    drawn.receive(*amountOf(soil, 1.0));

    EXPECT_EQ(afterArrival, 0);
    EXPECT_EQ(drawn.refreshed, 1);
}

// ---- ends, whole runs, and whose the resources are

TEST_F(cConsolidatorTest, theInstanceEndsInTheAdvanceOfTheClockThatStartedIt) {
    cNodeQueue& heap = network.addQueue("Heap", soil);
    network.addLink("L1", dig, gather, soil);
    network.addLink("Out", gather, heap).setRuleText(eLinkRule::releaseAmt, "PredNode.Soil.Count");
    dig.startInstance({}, 0.0, 2.0);

    network.advanceClock();

    EXPECT_EQ(heap.getCurCount(), 1.0);
    EXPECT_EQ(network.traceLines().back(), "2.00,ONEND,Gather(1),,,,\n");
}

TEST_F(cConsolidatorTest, whatComesBetweenAFiringAndTheEndOfItsInstanceCeasesToExist) {
    fireOnDemand();
    network.onGet = [&](const std::string&) { return network.askedKeys.size() == 1 ? 1.0 : 0.0; };
    const cResPtr late = instanceOf(truck);
    sendBurst(gather, {instanceOf(truck), late});
    const std::uint32_t during = late.holderCount();

    network.advanceClock();

    EXPECT_EQ(during, 2U);
    EXPECT_EQ(late.holderCount(), 1U);
    EXPECT_EQ(held(truck), 0.0);
}

TEST_F(cConsolidatorTest, aResetLetsGoOfWhatWasGathered) {
    fireOnDemand();
    const cResPtr waiting = instanceOf(truck);
    gather.receive(*waiting);
    const std::uint32_t gathered = waiting.holderCount();

    network.resetRun();

    EXPECT_EQ(gathered, 2U);
    EXPECT_EQ(waiting.holderCount(), 1U);
}

TEST_F(cConsolidatorTest, aResetLetsGoOfInstancesOnTheCalendar) {
    const cResPtr waiting = instanceOf(truck);
    gather.receive(*waiting);
    const std::uint32_t onCalendar = waiting.holderCount();

    network.resetRun();

    EXPECT_EQ(onCalendar, 2U);
    EXPECT_EQ(waiting.holderCount(), 1U);
    EXPECT_FALSE(network.advanceClock());
}

TEST_F(cConsolidatorTest, theTotalOfInstancesIsOneMoreInTheFirstReplicationOnly) {
    cNodeQueue& pile = network.addQueue("Pile", soil);
    pile.setInitialContentText("3");
    network.addLink("In", pile, dig);
    network.addLink("L1", dig, gather, soil);
    dig.setDurationText("Dig.TotInst+1");

    network.run("MULTISIM 2;\nADDTORESULTS total Gather.TotInst;\nADDTORESULTS running Gather.CurInst;\n");

    EXPECT_EQ(network.runStatistics->getReplicationCount(), 2);
    EXPECT_EQ(network.runStatistics->getMeans().at(1), 0.5);  // running: 1, then 0
    EXPECT_EQ(network.runStatistics->getMeans().at(2), 3.5);  // total: 4, then 3
}

}  // namespace
