#include "kernel/normal.h"

#include "support/burst.h"
#include "support/failureOf.h"
#include "support/holdings.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

namespace {

using cTexts = std::vector<std::string>;

/// A Normal that lasts 5, with nothing around it, in a run at time 0; and Dig, a Combi whose instances the test starts
/// by hand.
class cNormalTest : public ::testing::Test {
protected:
    void SetUp() override {
        network.simState = 1;
        haul.setDurationText("5");
    }

    cNodeAct::cStatistics statistics() const { return haul.getStatistics(); }
    /// What an instance of the Normal holds of a type: the amount, or the number of instances.
    double heldBy(int instanceId, const cResType& type) const {
        const cActInstancePtr instance = haul.findInstance(instanceId);
        const auto count = static_cast<double>(heldOf(instance->getResources(), type).size());
        return amountHeld(instance->getResources(), type).value_or(count);
    }
    /// How many holdings an instance has.
    std::size_t holdingCount(int instanceId) const { return haul.findInstance(instanceId)->getResources().size(); }
    double held(const cResType& type) const { return haul.countOf("Count", &type); }

    cWatchedNetwork network;
    cResTypeGen& soil = network.addGenericType("Soil");
    cResTypeCompound& truck = network.addCompoundType("Truck");
    cNodeActCombi& dig = network.addCombi("Dig");
    cNodeActNormal& haul = network.addNormal("Haul");
};

TEST_F(cNormalTest, theKindWordIsNormal) { EXPECT_EQ(haul.getKind(), "NORMAL"); }

TEST_F(cNormalTest, aDefaultNameThatIsTakenGivesWayToTheNextNumber) {
    cNetworkElement::setElementCounter(7);
    network.elements["Normal8"];

    const cNodeActNormal normal;

    EXPECT_EQ(normal.getName(), "Normal9");
    EXPECT_EQ(normal.getElementId(), 8);
    EXPECT_EQ(cNetworkElement::getElementCounter(), 9);
}

TEST_F(cNormalTest, theKeywordsAreThoseOfActivities) {
    sendBurst(haul, {});

    EXPECT_EQ(haul.getAttribute("CurInst"), 1.0);
    EXPECT_EQ(haul.getAttribute("TotInst"), 1.0);
    EXPECT_EQ(haul.getAttribute("AveDur"), 5.0);
    EXPECT_EQ(haul.getAttribute("CurCount"), 0.0);
}

// ---- the four operations

TEST_F(cNormalTest, theFirstOpenFlowAloneRaisesTheMark) {
    haul.flowBegin();
    const bool afterFirst = haul.activeMark;
    haul.activeMark = false;
    haul.flowBegin();

    EXPECT_TRUE(afterFirst);
    EXPECT_FALSE(haul.activeMark);
}

TEST_F(cNormalTest, theSettlingLowersTheMarkAndNothingElseDoes) {
    haul.flowBegin();
    haul.receive(*amountOf(soil, 1.0));
    haul.flowEnd();
    const bool afterEnd = haul.activeMark;
    haul.flowSettle();

    EXPECT_TRUE(afterEnd);
    EXPECT_FALSE(haul.activeMark);
}

TEST_F(cNormalTest, amountsOfATypeMergeAndInstancesStandSideBySide) {
    cResType& sand = network.addGenericType("Sand");

    for (const double amount : {1.5, 2.0}) haul.receive(*amountOf(soil, amount));
    haul.receive(*amountOf(sand, 4.0));
    for (int i = 0; i < 2; ++i) haul.receive(*instanceOf(truck));

    EXPECT_EQ(held(soil), 3.5);
    EXPECT_EQ(held(sand), 4.0);
    EXPECT_EQ(held(truck), 2.0);
    EXPECT_EQ(haul.getHoldings(&soil).size(), 1U);
}

TEST_F(cNormalTest, anAmountOf0IsIgnored) {
    haul.receive(*amountOf(soil, 0.0));
    haul.receive(*amountOf(soil, -0.0));

    EXPECT_TRUE(haul.getHoldings(&soil).empty());
}

TEST_F(cNormalTest, aNegativeAmountIsTaken) {
    haul.receive(*amountOf(soil, -2.0));

    EXPECT_EQ(held(soil), -2.0);
}

TEST_F(cNormalTest, anInstanceStartsWhenTheLastOpenFlowCloses) {
    network.simTime = 3.0;
    for (int i = 0; i < 3; ++i) haul.flowBegin();
    haul.receive(*amountOf(soil, 2.0));
    haul.flowEnd();
    haul.flowEnd();
    const int before = statistics().nextInstance;
    haul.flowEnd();

    EXPECT_EQ(before, 0);
    ASSERT_EQ(statistics().nextInstance, 1);
    EXPECT_EQ(haul.findInstance(0)->getStartTime(), 3.0);
    EXPECT_EQ(haul.findInstance(0)->getDuration(), 5.0);
    EXPECT_EQ(heldBy(0, soil), 2.0);
}

TEST_F(cNormalTest, theHoldingsAreEmptyBehindTheStart) {
    sendBurst(haul, {amountOf(soil, 2.0), instanceOf(truck)});

    EXPECT_EQ(held(soil), 0.0);
    EXPECT_EQ(held(truck), 0.0);
    EXPECT_EQ(holdingCount(0), 2U);
}

TEST_F(cNormalTest, theDurationIsEvaluatedForEachInstance) {
    network.answers["d"] = 4.0;
    haul.setDurationText("GET(\"d\")");

    sendBurst(haul, {});
    network.answers["d"] = 6.0;
    sendBurst(haul, {});

    EXPECT_EQ(haul.findInstance(0)->getDuration(), 4.0);
    EXPECT_EQ(haul.findInstance(1)->getDuration(), 6.0);
}

TEST_F(cNormalTest, startCodeHasTheInstanceAndSeesTheCountsAsTheyWereBefore) {
    network.execute("ONSTART Haul POST \"%f %d %d\" Haul.Duration Haul.CurInst Haul.TotInst;\n");

    sendBurst(haul, {});
    sendBurst(haul, {});

    EXPECT_EQ(network.messages, (cTexts{"5.000000 0 0", "5.000000 1 1"}));
}

TEST_F(cNormalTest, aFailingDurationLeavesTheHoldings) {
    haul.setDurationText("1/(SimTime-9)");
    network.simTime = 9.0;
    haul.flowBegin();
    haul.receive(*amountOf(soil, 2.0));

    const cException failure = failureOf([&] { haul.flowEnd(); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(held(soil), 2.0);
}

/// A Normal that tells when it would be drawn anew, and with how much soil in its holdings.
class cDrawnNormal : public cNodeActNormal {
public:
    cDrawnNormal(std::vector<double>& heldThen, const cResType& heldType) : soilThen(heldThen), soil(heldType) {}

    void refreshElement() override { soilThen.push_back(countOf("Count", &soil)); }

private:
    std::vector<double>& soilThen;
    const cResType& soil;
};

TEST_F(cNormalTest, aDrawnNormalIsRefreshedBehindTheStartAndAheadOfTheEmptying) {
    std::vector<double> soilThen;
    cDrawnNormal drawn(soilThen, soil);

    sendBurst(drawn, {amountOf(soil, 2.0)});

    EXPECT_EQ(soilThen, std::vector<double>{2.0});
}

TEST_F(cNormalTest, aResetClosesAllFlowsAndForgetsWhatCame) {
    haul.flowBegin();
    haul.flowBegin();
    haul.receive(*amountOf(soil, 2.0));

    haul.resetElement();
    sendBurst(haul, {});

    EXPECT_EQ(statistics().nextInstance, 1);
    EXPECT_EQ(holdingCount(0), 0U);
}

TEST_F(cNormalTest, aResetKeepsTheDuration) {
    haul.resetElement();

    EXPECT_EQ(haul.getDurationText(), "5");
}

// ---- fed by activities

TEST_F(cNormalTest, twoLinksOfOneActivityGiveOneInstanceThatHoldsBoth) {
    network.addLink("L1", dig, haul, soil);
    network.addLink("L2", dig, haul, truck);
    dig.startInstance(holdingsOf({amountOf(soil, 1.0), instanceOf(truck)}), 0.0, 2.0);

    network.advanceClock();

    EXPECT_EQ(statistics().nextInstance, 1);
    EXPECT_EQ(heldBy(0, soil), 1.0);
    EXPECT_EQ(heldBy(0, truck), 1.0);
}

TEST_F(cNormalTest, twoActivitiesThatEndAtTheSameTimeGiveTwoInstances) {
    cNodeActCombi& load = network.addCombi("Load");
    network.addLink("L1", dig, haul, soil);
    network.addLink("L2", load, haul, soil);
    dig.startInstance(holdingsOf({amountOf(soil, 1.0)}), 0.0, 2.0);
    load.startInstance(holdingsOf({amountOf(soil, 1.0)}), 0.0, 2.0);

    network.advanceClock();

    EXPECT_EQ(statistics().nextInstance, 2);
    EXPECT_EQ(heldBy(0, soil), 1.0);
    EXPECT_EQ(heldBy(1, soil), 1.0);
}

TEST_F(cNormalTest, twoInstancesOfOneActivityGiveTwo) {
    network.addLink("L1", dig, haul, soil);
    for (int i = 0; i < 2; ++i) dig.startInstance({}, 0.0, 2.0);

    network.advanceClock();

    EXPECT_EQ(statistics().nextInstance, 2);
}

TEST_F(cNormalTest, aNormalOfLength0EndsInTheSameAdvanceOfTheClock) {
    haul.setDurationText("0");
    network.addLink("L1", dig, haul, soil);
    dig.startInstance({}, 0.0, 2.0);

    network.advanceClock();

    EXPECT_EQ(statistics().nextInstance, 1);
    EXPECT_EQ(statistics().curInst, 0);
    EXPECT_EQ(network.traceLines().back(), "2.00,ONEND,Haul(0),,,,\n");
    EXPECT_FALSE(network.advanceClock());
}

TEST_F(cNormalTest, anAmountOf0GivesAnInstanceWithoutAHolding) {
    network.addLink("L1", dig, haul, soil).setRuleText(eLinkRule::releaseAmt, "0");
    dig.startInstance(holdingsOf({amountOf(soil, 1.0)}), 0.0, 2.0);

    network.advanceClock();

    EXPECT_EQ(statistics().nextInstance, 1);
    EXPECT_EQ(holdingCount(0), 0U);
}

TEST_F(cNormalTest, aFiringThatBringsNothingGivesAnEmptyInstance) {
    network.addLink("L1", dig, haul, truck);
    dig.startInstance({}, 0.0, 2.0);

    network.advanceClock();

    EXPECT_EQ(statistics().nextInstance, 1);
    EXPECT_EQ(holdingCount(0), 0U);
}

TEST_F(cNormalTest, aLinkAndAForkFromOneActivityGiveOneInstance) {
    cNodeAuxFork& fork = network.addFork("Fork", soil);
    network.addLink("Branch", fork, haul);
    network.addLink("L1", dig, fork);
    network.addLink("L2", dig, haul, soil);
    dig.startInstance(holdingsOf({amountOf(soil, 2.0)}), 0.0, 2.0);

    network.advanceClock();

    EXPECT_EQ(statistics().nextInstance, 1);
    EXPECT_EQ(heldBy(0, soil), 2.0);
    EXPECT_FALSE(haul.activeMark);
}

TEST_F(cNormalTest, theInstanceStartsAheadOfTheEndCodeOfTheActivityThatFedIt) {
    network.addLink("L1", dig, haul, soil);
    network.execute("ONEND Dig POST \"%d\" Haul.TotInst;\n");
    dig.startInstance({}, 0.0, 2.0);

    network.advanceClock();

    EXPECT_EQ(network.messages, cTexts{"1"});
}

TEST_F(cNormalTest, aNormalThatFeedsItselfStartsAnew) {
    network.addLink("Again", haul, haul, truck);
    const auto passenger = instanceOf(truck);
    sendBurst(haul, {passenger});

    network.advanceClock();
    network.advanceClock();

    EXPECT_EQ(network.simTime, 10.0);
    EXPECT_EQ(statistics().curInst, 1);
    EXPECT_EQ(haul.latestInstance()->getStartTime(), 10.0);
    ASSERT_EQ(holdingCount(2), 1U);
    EXPECT_EQ(heldOf(haul.latestInstance()->getResources(), truck), cResList{passenger});
}

// ---- whole runs, and whose the resources are

TEST_F(cNormalTest, whatNoLinkTakesCeasesToExistAtTheEnd) {
    const cResPtr passenger = instanceOf(truck);
    sendBurst(haul, {passenger});
    const std::uint32_t during = passenger.holderCount();

    network.advanceClock();

    EXPECT_EQ(during, 2U);
    EXPECT_EQ(passenger.holderCount(), 1U);
}

TEST_F(cNormalTest, aResetLetsGoOfInstancesOnTheCalendarWithoutEndingThem) {
    network.execute("BEFOREEND Haul POST before;\nONEND Haul POST end;\n");
    const cResPtr passenger = instanceOf(truck);
    sendBurst(haul, {passenger});
    const std::uint32_t during = passenger.holderCount();

    network.resetRun();

    EXPECT_EQ(during, 2U);
    EXPECT_EQ(passenger.holderCount(), 1U);
    EXPECT_TRUE(network.messages.empty());
    EXPECT_FALSE(network.advanceClock());
}

TEST_F(cNormalTest, aRunThatStopsWithInstancesOnTheCalendarCanBeRunAgain) {
    cNodeQueue& pile = network.addQueue("Pile", soil);
    pile.setInitialContentText("3");
    network.addLink("In", pile, dig);
    network.addLink("L1", dig, haul, soil);
    network.addLink("Out", haul, network.addQueue("Heap", soil));
    dig.setDurationText("1");
    const std::string code =
        "SIMULATECONDITION SimTime>=1;\nBEFOREEND Haul POST before;\nONEND Dig POST \"%d %d\" "
        "Haul.CurInst Haul.TotInst;\n";

    network.run(code);
    network.run(code);

    EXPECT_EQ(network.messages, (cTexts{"1 1", "2 2", "3 3", "1 1", "2 2", "3 3"}));
}

TEST_F(cNormalTest, everyReplicationStartsTheSameNumberOfInstances) {
    cNodeQueue& pile = network.addQueue("Pile", soil);
    pile.setInitialContentText("3");
    network.addLink("In", pile, dig);
    network.addLink("L1", dig, haul, soil);
    network.addLink("Out", haul, network.addQueue("Heap", soil));

    network.run("MULTISIM 3;\nADDTORESULTS hauls Haul.TotInst;\nADDTORESULTS heap Heap.CurCount;\n");

    EXPECT_EQ(network.runStatistics->getReplicationCount(), 3);
    EXPECT_EQ(network.runStatistics->getMeans().at(1), 3.0);
    EXPECT_EQ(network.runStatistics->getMeans().at(2), 3.0);
}

}  // namespace
