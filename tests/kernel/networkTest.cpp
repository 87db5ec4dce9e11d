#include "kernel/network.h"

#include "kernel/trace.h"
#include "support/failureOf.h"
#include "support/recordingReceiver.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <ctime>

namespace {

using cTexts = std::vector<std::string>;

/// An empty model; what POST says is in `network.messages`.
class cNetworkTest : public ::testing::Test {
protected:
    cWatchedNetwork network;
};

TEST_F(cNetworkTest, aNewNetworkIsReadyToRunOneReplication) {
    EXPECT_EQ(network.replications, 1);
    EXPECT_FALSE(network.stopRequested);
    EXPECT_FALSE(network.paused);
    EXPECT_EQ(network.simState, 0);
    EXPECT_EQ(network.simTime, 0.0);
    EXPECT_EQ(network.endCondition.getText(), "0");
    EXPECT_EQ(network.traceLines(), cTexts{std::string(traceHeader)});
    EXPECT_TRUE(network.getCalendar().empty());
    EXPECT_TRUE(network.getCombiOrder().empty());
}

TEST_F(cNetworkTest, elementsFindTheNetworkOfTheProcess) { EXPECT_EQ(&cNetwork::current(), &network); }

TEST_F(cNetworkTest, streamsBeginWithTheClock) {
    const cTestNetwork other(77);

    EXPECT_EQ(other.symbols->randomStreams().getSeed(), 77U);
}

TEST_F(cNetworkTest, streamsBeginWithTheLow32BitsOfTheClock) {
    const cTestNetwork other((std::int64_t{5} << 32) + 9);

    EXPECT_EQ(other.symbols->randomStreams().getSeed(), 9U);
}

// ---- lists of statements

TEST_F(cNetworkTest, statementsRunFromFirstToLastAndStay) {
    compileCode(network, {"POST one;", "POST two;"}, eCompiled::everything);

    network.runStatements();
    network.runStatements();

    EXPECT_EQ(network.messages, (cTexts{"one ", "two ", "one ", "two "}));
    EXPECT_EQ(network.statements.size(), 2U);
}

TEST_F(cNetworkTest, aStatementThatIsAddedWhileTheListRunsRunsToo) {
    compileCode(network, {"POST one;"}, eCompiled::everything);
    network.onMessage = [&](const std::string& text) {
        if (text == "one ") network.statements.push_back(std::make_unique<cStatement>("POST two"));
    };

    network.runStatements();

    EXPECT_EQ(network.messages, (cTexts{"one ", "two "}));
}

TEST_F(cNetworkTest, aFailingStatementEndsTheList) {
    compileCode(network, {"POST one;", "INIT Nope 1;", "POST two;"}, eCompiled::everything);

    failureOf([&] { network.runStatements(); });

    EXPECT_EQ(network.messages, cTexts{"one "});
}

TEST_F(cNetworkTest, timeAdvanceCodeRunsInTheOrderOfTheSource) {
    network.execute(
        "BEFORETIMEADVANCE POST b1;\nBEFORETIMEADVANCE POST b2;\n"
        "AFTERTIMEADVANCE POST a1;\nAFTERTIMEADVANCE POST a2;\n");

    network.runBeforeTimeAdvance();
    network.runAfterTimeAdvance();

    EXPECT_EQ(network.messages, (cTexts{"b1 ", "b2 ", "a1 ", "a2 "}));
}

TEST_F(cNetworkTest, conditionsAreTestedBehindTheAfterTimeAdvanceCode) {
    network.execute("SAVEVALUE x 0;\nIF x==1 POST due;\nAFTERTIMEADVANCE ASSIGN x 1;\n");

    network.runAfterTimeAdvance();

    EXPECT_EQ(network.messages, cTexts{"due "});
}

TEST_F(cNetworkTest, allConditionsAreTestedBeforeAnyStatementRuns) {
    network.execute("SAVEVALUE x 0;\nIF x==0 ASSIGN x 1;\nIF x==0 POST second;\nIF x==1 POST third;\n");

    network.runAfterTimeAdvance();

    EXPECT_EQ(network.messages, cTexts{"second "});
}

TEST_F(cNetworkTest, statementsOfTrueConditionsRunInTheOrderOfTheSource) {
    network.execute("IF 1 POST a;\nIF 0 POST b;\nIF 2 POST c;\nIF (0-1)^0.5 POST nan;\nIF 1 POST d;\n");

    network.runAfterTimeAdvance();

    EXPECT_EQ(network.messages, (cTexts{"a ", "c ", "nan ", "d "}));
}

TEST_F(cNetworkTest, aConditionThatStaysTrueRunsItsStatementEachTime) {
    network.execute("IF 1 POST again;\n");

    network.runAfterTimeAdvance();
    network.runAfterTimeAdvance();

    EXPECT_EQ(network.messages, (cTexts{"again ", "again "}));
}

TEST_F(cNetworkTest, statementsThatRunInsideOneAnotherWithoutEndFail) {
    network.addQueue("Q", network.addGenericType("Soil"));
    network.execute("ONENTRY Q INIT Q 1;\n");

    const cException failure = failureOf([&] { network.execute("INIT Q 1;\n"); });

    EXPECT_EQ(failure.code, failureCode::statement);
    EXPECT_EQ(failure.message, "Endless recursion in statement:\nINIT Q 1 ");
}

TEST_F(cNetworkTest, statementsRunAgainAfterAnEndlessRecursion) {
    cNodeQueue& queue = network.addQueue("Q", network.addGenericType("Soil"));
    network.execute("ONENTRY Q INIT Q 1;\n");
    failureOf([&] { network.execute("INIT Q 1;\n"); });
    network.statements.clear();
    queue.resetElement();

    network.execute("INIT Q 1;\n");

    EXPECT_EQ(queue.getCurCount(), 1.0);
}

// ---- hooks

TEST_F(cNetworkTest, expressionsAskTheHost) {
    network.answers["rate"] = 2.5;

    EXPECT_EQ(network.evaluate("GET(\"rate\")"), 2.5);

    EXPECT_EQ(network.askedKeys, cTexts{"rate"});
}

TEST_F(cNetworkTest, aLoopThatBreathesLetsTheHostInNowAndThen) {
    for (int turn = 0; turn < 100000; ++turn) network.breathe();

    EXPECT_GE(network.hostEvents, 10);   // at least every 10,000 turns
    EXPECT_LE(network.hostEvents, 100);  // at most every 1,000
}

TEST_F(cNetworkTest, theUsersStopComesOutOfALoopThatBreathes) {
    network.stopAtHostEvent = 1;

    const cException failure = failureOf([&] {
        for (int turn = 0; turn < 100000; ++turn) network.breathe();
    });

    EXPECT_EQ(failure.code, failureCode::userStop);
}

// ---- registry

TEST_F(cNetworkTest, walksSkipEntriesWithoutAnElement) {
    network.addQueue("B", network.addGenericType("Soil"));
    network.elements["A"];
    network.elements["C"];
    cTexts visited;

    network.forEachElement([&](const cNetworkElement& element) { visited.push_back(element.getName()); });

    EXPECT_EQ(visited, cTexts{"B"});
}

TEST_F(cNetworkTest, anElementIsFoundByNameAndClass) {
    cNodeQueue& queue = network.addQueue("B", network.addGenericType("Soil"));
    network.elements["Ghost"];

    EXPECT_EQ(network.findElement("B"), &queue);
    EXPECT_EQ(network.findElement<cNodeQueue>("B"), &queue);
    EXPECT_EQ(network.findElement<cNodeAct>("B"), nullptr);
    EXPECT_EQ(network.findElement("Ghost"), nullptr);
    EXPECT_EQ(network.findElement("Nope"), nullptr);
    EXPECT_FALSE(network.elements.contains("Nope"));
}

TEST_F(cNetworkTest, aTypeIsFoundByName) {
    cResType& soil = network.addGenericType("Soil");

    EXPECT_EQ(network.findResourceType("Soil"), &soil);
    EXPECT_EQ(network.findResourceType("Rock"), nullptr);
}

TEST_F(cNetworkTest, codeForAnElementThatIsNotThereLeavesARunUndisturbed) {
    network.addQueue("Q", network.addGenericType("Soil")).setInitialContentText("3");

    network.run("ONSTART Nope POST x;\nIF PredNode.CurCount POST y;\n");

    EXPECT_TRUE(network.elements.contains("Nope"));
    EXPECT_EQ(network.findElement("Nope"), nullptr);
    EXPECT_EQ(network.runStatistics->getMeans().at(1), 3.0);
    EXPECT_TRUE(network.messages.empty());
}

// ---- resetRun and clearNetwork

/// A model in the middle of a replication: at time 4, one of three units of soil is being dug, for 10 units of time.
class cRunningNetworkTest : public cNetworkTest {
protected:
    void SetUp() override {
        network.addLink("L", queue, combi);
        combi.setDurationText("10");
        queue.setInitialContentText("3");
        network.simState = 1;
        network.execute(
            "SEED 5;\nMULTISIM 7;\nSAVEVALUE s 8;\nVARIABLE v s+1;\nADDTORESULTS r s;\nSIMULATECONDITION 9;\n"
            "BEFORETIMEADVANCE POST x;\nAFTERTIMEADVANCE POST x;\nIF 0 POST x;\nINIT Pile 3;\n");
        combi.attempt();
        network.orderCombis();
        network.simTime = 4.0;
        network.paused = true;
        network.stopRequested = true;
        network.statements.push_back(std::make_unique<cStatement>("SIMULATE"));
        truck.instanceCount = 6;
    }

    cResTypeCompound& truck = network.addCompoundType("Truck");
    cNodeQueue& queue = network.addQueue("Pile", network.addGenericType("Soil"));
    cNodeActCombi& combi = network.addCombi("Dig");
};

TEST_F(cRunningNetworkTest, resetReadiesTheNextReplication) {
    network.resetRun();

    EXPECT_FALSE(network.paused);
    EXPECT_TRUE(network.getCalendar().empty());
    EXPECT_TRUE(network.getCombiOrder().empty());
    EXPECT_EQ(network.simTime, 0.0);
    EXPECT_EQ(network.traceLines(), cTexts{std::string(traceHeader)});
    EXPECT_EQ(truck.instanceCount, 0);
    EXPECT_EQ(queue.getCurCount(), 0.0);
    EXPECT_EQ(combi.getStatistics().nextInstance, 0);
}

TEST_F(cRunningNetworkTest, resetKeepsWhatHoldsForTheWholeRun) {
    const std::uint32_t state = network.symbols->randomStreams().first().getState();

    network.resetRun();

    EXPECT_EQ(network.replications, 7);
    EXPECT_EQ(network.simState, 1);
    EXPECT_TRUE(network.stopRequested);
    EXPECT_EQ(network.endCondition.getText(), "9");
    EXPECT_EQ(network.statements.size(), 1U);
    EXPECT_EQ(network.beforeTimeAdvance.size(), 1U);
    EXPECT_EQ(network.afterTimeAdvance.size(), 1U);
    EXPECT_EQ(network.conditionalStatements.size(), 1U);
    EXPECT_EQ(network.evaluate("v"), 9.0);
    EXPECT_EQ(network.resultExpressions.at("r"), "s");
    EXPECT_EQ(combi.getDurationText(), "10");
    EXPECT_EQ(queue.getInitialContentText(), "3");
    EXPECT_EQ(network.symbols->randomStreams().first().getState(), state);
}

TEST_F(cRunningNetworkTest, clearingEmptiesWhatARunHasMade) {
    network.clearNetwork();

    EXPECT_EQ(network.simTime, 0.0);
    EXPECT_TRUE(network.getCalendar().empty());
    EXPECT_EQ(network.replications, 1);
    EXPECT_TRUE(network.symbols->getDeclaredNames().empty());
    EXPECT_TRUE(network.variables.empty());
    EXPECT_TRUE(network.saveValues.empty());
    EXPECT_TRUE(network.resultExpressions.empty());
    EXPECT_TRUE(network.statements.empty());
    EXPECT_EQ(network.endCondition.getText(), "0");
    EXPECT_EQ(network.endCondition.evaluate(), 0.0);
    EXPECT_TRUE(network.afterTimeAdvance.empty());
    EXPECT_TRUE(network.beforeTimeAdvance.empty());
    EXPECT_TRUE(network.conditionalStatements.empty());
    EXPECT_EQ(network.simState, 0);
}

TEST_F(cRunningNetworkTest, clearingKeepsTheDrawnModel) {
    network.clearNetwork();

    EXPECT_EQ(network.elements.size(), 3U);
    EXPECT_EQ(network.combis.size(), 1U);
    EXPECT_EQ(network.resourceTypes.size(), 2U);
    EXPECT_TRUE(network.stopRequested);
    EXPECT_EQ(combi.getDurationText(), "10");
}

TEST_F(cNetworkTest, resetReachesEveryElementByNameOrderAndSkipsEmptyEntries) {
    cTexts log;
    for (const char* name : {"C", "A", "B"}) network.elements[name] = std::make_shared<cRecordingReceiver>(name, log);
    network.elements["Ab"];

    network.resetRun();

    EXPECT_EQ(log, (cTexts{"resetElement A", "resetElement B", "resetElement C"}));
}

TEST_F(cNetworkTest, characterizedResourcesThatInitMadeAreForgottenWithTheReplication) {
    const cNodeQueue& yard = network.addQueue("Yard", network.addCompoundType("Truck"));
    network.execute("INIT Yard 2;\n");
    ASSERT_EQ(yard.getContents().size(), 2U);
    const cResPtr second = yard.getContents()[1];

    network.resetRun();

    EXPECT_TRUE(yard.getContents().empty());
    EXPECT_EQ(second.holderCount(), 1U);
}

TEST(cNetworkEndTest, aNetworkIsDestroyedCleanlyInTheMiddleOfARun) {
    auto network = std::make_unique<cTestNetwork>();
    cNodeQueue& yard = network->addQueue("Yard", network->addCompoundType("Truck"));
    cNodeActCombi& combi = network->addCombi("Haul");
    network->addLink("L", yard, combi);
    network->addLink("Back", combi, yard);
    combi.setDurationText("5");
    network->simState = 1;
    network->execute("ONENTRY Yard POST in;\nONSTART Haul POST out;\nINIT Yard 3;\n");
    combi.attempt();
    ASSERT_EQ(network->getCalendar().size(), 1U);

    network.reset();

    cTestNetwork next;
    EXPECT_EQ(&cNetwork::current(), &next);
}

TEST(cCalendarClockTest, givesTheSecondsOfTheSystemClock) {
    const std::int64_t before = std::time(nullptr);

    const std::int64_t now = cNetwork::calendarSeconds();

    EXPECT_GE(now, before - 1);
    EXPECT_LE(now, std::time(nullptr) + 1);  // the two clocks may read an edge of a second differently
}

}  // namespace
