#include "kernel/trace.h"

#include "support/testNetwork.h"

#include <gtest/gtest.h>

namespace {

using cTexts = std::vector<std::string>;

/// A network that has traced nothing yet.
class cTraceTest : public ::testing::Test {
protected:
    /// The lines behind the header.
    cTexts lines() const { return network.tracedLines(); }
    cTexts lastLines(std::ptrdiff_t count) const {
        const cTexts all = lines();
        return {all.end() - count, all.end()};
    }

    cTestNetwork network;
};

TEST_F(cTraceTest, theFirstLineIsTheHeader) {
    EXPECT_EQ(network.traceLines(),
              cTexts{"*SNo*,*SimTime*,*Action*,*NodeName*,*AttemptResult*,*ActStartTime*,*ActEndTime*,*QCurCount*,"
                     "*QTotCount*,*FStrength*,*FSucc*\n"});
}

// ---- the form of each line

TEST_F(cTraceTest, anAttemptGivesTimeCombiAndResult) {
    network.simTime = 3.0;

    network.trace.attempt(network.simTime, "C", attemptResult::queueSupport);
    network.trace.attempt(network.simTime, "C", attemptResult::semaphore);
    network.trace.attempt(network.simTime, "C", attemptResult::success);

    EXPECT_EQ(lines(), (cTexts{"3.00,ATTEMPT,C,Fail-QueueSupport,,,,\n", "3.00,ATTEMPT,C,Fail-Semaphore,,,,\n",
                               "3.00,ATTEMPT,C,Success,,,,\n"}));
}

TEST_F(cTraceTest, anEndGivesTheNumberOfTheInstance) {
    network.simTime = 12.5;

    network.trace.end(network.simTime, "BEFOREEND", "Work", 1);
    network.trace.end(network.simTime, "ONEND", "Work", 1);

    EXPECT_EQ(lines(), (cTexts{"12.50,BEFOREEND,Work(1),,,,\n", "12.50,ONEND,Work(1),,,,\n"}));
}

TEST_F(cTraceTest, aDrawGivesTheCountsOfTheQueue) {
    network.simTime = 7.0;

    network.trace.draw(network.simTime, "Q", 4.0, 9.0);

    EXPECT_EQ(lines(), cTexts{"7.00,ONDRAWFROM,Q,,,,4.00,9.00,\n"});
}

TEST_F(cTraceTest, anEntryGivesABareLineFeed) {
    network.simTime = 7.0;

    network.trace.entry();

    EXPECT_EQ(lines(), cTexts{"\n"});
}

TEST_F(cTraceTest, aBranchGivesForkRunningSumAndSuccessor) {
    network.simTime = 7.5;

    network.trace.branch(network.simTime, "F", true, 0.25, "Dump");
    network.trace.branch(network.simTime, "F", false, 1.0, "Pile");

    EXPECT_EQ(lines(), (cTexts{"7.50,FORKCHOOSE,F,,,,,,0.25,Dump\n", "7.50,FORKNOCHOOSE,F,,,,,,1.00,Pile\n"}));
}

TEST_F(cTraceTest, timesAndCountsHaveTwoDecimals) {
    network.simTime = 10.004;
    network.trace.draw(network.simTime, "Q", 1.0 / 3.0, 2.005);
    network.simTime = -0.001;
    network.trace.draw(network.simTime, "Q", 0.125, 1e15);

    EXPECT_EQ(lines(), (cTexts{"10.00,ONDRAWFROM,Q,,,,0.33,2.00,\n",  // 2.005 lies a trifle below the half
                               "-0.00,ONDRAWFROM,Q,,,,0.12,1000000000000000.00,\n"}));  // exact halves to even
}

// ---- how much is kept

TEST_F(cTraceTest, aLineIsCutAt255Characters) {
    network.addTraceLine(std::string(255, 'a'));
    network.addTraceLine(std::string(256, 'b'));
    network.addTraceLine(std::string(5000, 'c'));

    EXPECT_EQ(lines(), (cTexts{std::string(255, 'a'), std::string(255, 'b'), std::string(255, 'c')}));
}

TEST_F(cTraceTest, aCutLineLosesItsLineFeed) {
    network.simTime = 2e250;  // 251 digits, a point and two decimals

    network.trace.attempt(network.simTime, "C", attemptResult::success);

    EXPECT_EQ(lines().at(0).size(), 255U);
    EXPECT_TRUE(lines().at(0).ends_with(".00,"));
}

TEST_F(cTraceTest, theTraceStopsAt50000LinesTheHeaderIncluded) {
    for (int i = 0; i < 50010; ++i) network.trace.attempt(network.simTime, std::to_string(i), attemptResult::success);

    EXPECT_EQ(network.trace.size(), 50000U);
    EXPECT_EQ(network.traceLines().front(), traceHeader);
    EXPECT_EQ(network.traceLines().back(), "0.00,ATTEMPT,49998,Success,,,,\n");
}

TEST_F(cTraceTest, aReplicationWithMoreLinesThanTheTraceHoldsRunsOn) {
    cNodeQueue& queue = network.addQueue("Q", network.addGenericType("Soil"));
    cNodeActCombi& combi = network.addCombi("C");
    network.addLink("In", queue, combi);
    network.addLink("Out", combi, queue);
    combi.setDurationText("1");
    network.simState = 1;

    network.execute("INIT Q 1;\nSIMULATECONDITION SimTime>=20000;\nSIMULATE;\n");

    EXPECT_EQ(network.trace.size(), 50000U);
    EXPECT_EQ(combi.getStatistics().nextInstance, 20000);
}

TEST_F(cTraceTest, aResetLeavesTheHeaderAlone) {
    network.trace.entry();

    network.resetRun();

    EXPECT_EQ(network.traceLines(), cTexts{std::string(traceHeader)});
}

TEST_F(cTraceTest, afterARunOnlyTheHeaderIsLeft) {
    network.addQueue("Q", network.addGenericType("Soil")).setInitialContentText("3");

    network.run();

    EXPECT_EQ(network.traceLines(), cTexts{std::string(traceHeader)});
}

// ---- the order of the lines

/// Two queues, A and B, in front of Work, and two behind it; Work lasts 2.
class cTraceOrderTest : public cTraceTest {
protected:
    void SetUp() override {
        cResType& soil = network.addGenericType("Soil");
        cNodeActCombi& work = network.addCombi("Work");
        network.addLink("In1", network.addQueue("A", soil), work);
        network.addLink("In2", network.addQueue("B", soil), work);
        network.addLink("Out1", work, network.addQueue("X", soil));
        network.addLink("Out2", work, network.addQueue("Y", soil));
        work.setDurationText("2");
        network.simState = 1;
    }
};

TEST_F(cTraceOrderTest, aStartGivesTheAttemptThenTheDrawsAndAnEndTheEntriesBetweenItsTwoLines) {
    network.execute("ONSTART Work POST start;\nINIT A 4;\nINIT B 1;\nSIMULATE;\n");

    EXPECT_EQ(lines(), (cTexts{"\n",  // the two initial contents
                               "\n", "0.00,ATTEMPT,Work,Success,,,,\n", "0.00,ONDRAWFROM,A,,,,3.00,4.00,\n",
                               "0.00,ONDRAWFROM,B,,,,0.00,1.00,\n", "0.00,ATTEMPT,Work,Fail-QueueSupport,,,,\n",
                               "2.00,BEFOREEND,Work(0),,,,\n", "\n", "\n", "2.00,ONEND,Work(0),,,,\n"}));
}

TEST_F(cTraceOrderTest, theLineOfAnEndStandsBeforeItsCodeRuns) {
    network.execute("BEFOREEND Work INIT A 1;\nINIT A 1;\nINIT B 1;\nSIMULATECONDITION SimTime>=2;\nSIMULATE;\n");

    const cTexts expected{"2.00,BEFOREEND,Work(0),,,,\n", "\n", "\n", "\n", "2.00,ONEND,Work(0),,,,\n"};
    EXPECT_EQ(lastLines(5), expected);
}

TEST_F(cTraceOrderTest, theLinesOfAForkStandBetweenTheTwoOfAnEndAheadOfTheEntries) {
    cResType& soil = *network.findResourceType("Soil");
    cNodeAuxFork& fork = network.addFork("F", soil);
    network.addLink("Branch", fork, network.addQueue("Dump", soil));
    network.addLink("Out3", *network.findElement<cNodeActCombi>("Work"), fork);

    network.execute("INIT A 1;\nINIT B 1;\nSIMULATE;\n");

    const cTexts expected{"2.00,BEFOREEND,Work(0),,,,\n", "2.00,FORKCHOOSE,F,,,,,,1.00,Dump\n", "\n", "\n", "\n",
                          "2.00,ONEND,Work(0),,,,\n"};
    EXPECT_EQ(lastLines(6), expected);
}

}  // namespace
