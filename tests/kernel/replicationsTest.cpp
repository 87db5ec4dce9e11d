#include "kernel/replications.h"

#include "kernel/trace.h"
#include "language/rounding.h"
#include "support/failureOf.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace {

using cTexts = std::vector<std::string>;

/// Writes the steps of a run into the list of what POST says, and calls back at the end of each replication.
class cRecordingObserver : public cRunObserver {
public:
    explicit cRecordingObserver(cTexts& stepLog) : log(stepLog) {}

    void resultsWereReset() override { log.push_back("results reset"); }
    void singleRunBegins() override { log.push_back("single run"); }
    void multipleRunsBegin() override { log.push_back("multiple runs"); }
    void replicationBegins(std::int32_t index, std::int32_t replications) override {
        log.push_back("replication " + std::to_string(index) + " of " + std::to_string(replications));
        if (onBegin) onBegin();
    }
    void replicationEnds() override {
        log.push_back("gathered");
        if (onEnd) onEnd();
    }

    std::function<void()> onBegin;
    std::function<void()> onEnd;

private:
    cTexts& log;
};

/// A queue of soil in front of a Combi that takes 2 to dig one unit, and a clock that stands at 1000.
class cReplicationsTest : public ::testing::Test {
protected:
    void SetUp() override {
        network.addLink("L", pile, dig);
        dig.setDurationText("2");
    }

    void run(const std::string& globalCode) {
        code.globalCode = globalCode;
        runReplications(network, code, observer);
    }
    std::string fileContent() const {
        std::ifstream file(network.runStatistics->getTemporaryPath(), std::ios::binary);
        std::ostringstream content;
        content << file.rdbuf();
        return content.str();
    }
    double meanOf(const std::string& column) const {
        const cTexts names = network.runStatistics->columnNames();
        const auto index = std::ranges::find(names, column) - names.begin();
        return network.runStatistics->getMeans().at(static_cast<std::size_t>(index));
    }

    std::int64_t now = 1000;
    int clockReadings = 0;
    cWatchedNetwork network{cNetwork::cClock([this] {
        ++clockReadings;
        return now;
    })};
    cResType& soil = network.addGenericType("Soil");
    cNodeQueue& pile = network.addQueue("Pile", soil);
    cNodeActCombi& dig = network.addCombi("Dig");
    cRecordingObserver observer{network.messages};
    cRunCode code;
};

// ---- the order of the steps

TEST_F(cReplicationsTest, aSingleRunTakesItsStepsInOrder) {
    pile.setInitialContentText("1");
    code.waitingLines = {"POST waiting;"};
    code.closingStatements = {"POST closing"};

    run("POST global;\nONENTRY Pile POST init;\nBEFORETIMEADVANCE POST simulate;\nONSTART Dig POST start;\n"
        "ONEND Dig POST end;\n");

    const cTexts expected{"results reset", "waiting ", "global ",   "closing ", "single run", "init ",
                          "simulate ",     "start ",   "simulate ", "end ",     "gathered"};
    EXPECT_EQ(network.messages, expected);
}

TEST_F(cReplicationsTest, everyReplicationOfManyTakesItsSteps) {
    pile.setInitialContentText("1");

    run("POST global;\nMULTISIM 2;\nBEFORETIMEADVANCE POST advance;\n");

    EXPECT_EQ(network.messages,
              (cTexts{"results reset", "global ", "multiple runs", "replication 0 of 2", "advance ", "advance ",
                      "gathered", "replication 1 of 2", "advance ", "advance ", "gathered"}));
}

TEST_F(cReplicationsTest, theRunIsOnFromTheFirstStepAndUntilTheNetworkIsCleared) {
    std::int32_t stateInCode = 0;
    network.onMessage = [&](const std::string&) { stateInCode = network.simState; };

    run("POST x;\n");
    EXPECT_EQ(stateInCode, 1);
    EXPECT_EQ(network.simState, 1);
    network.clearNetwork();

    EXPECT_EQ(network.simState, 0);
}

TEST_F(cReplicationsTest, waitingLinesAreCompiledOnceAndForgotten) {
    code.waitingLines = {"POST waiting;"};

    run("");
    run("");

    EXPECT_EQ(std::ranges::count(network.messages, "waiting "), 1);
    EXPECT_TRUE(code.waitingLines.empty());
}

TEST_F(cReplicationsTest, namesOfTheWaitingLinesAreThereForTheGlobalCode) {
    code.waitingLines = {"SAVEVALUE x 5;"};

    run("POST \"%d\" x;\n");

    EXPECT_EQ(network.messages.at(1), "5");
}

TEST_F(cReplicationsTest, theNumberOfTheClosingStatementsIsTheLastWord) {
    code.closingStatements = {"MULTISIM 3"};

    run("MULTISIM 2;\n");

    EXPECT_EQ(network.runStatistics->getReplicationCount(), 3);
}

TEST_F(cReplicationsTest, theStatementsOfTheGlobalCodeRunOnceAndTheRestInEachReplication) {
    pile.setInitialContentText("2");
    cTexts repeated;
    observer.onBegin = [&] {
        repeated.clear();
        for (const auto& statement : network.statements) repeated.push_back(statement->getText());
    };

    run("MULTISIM 2;\nSAVEVALUE x 1;\n");

    EXPECT_EQ(repeated, (cTexts{"INIT Pile 2.000000", "SIMULATE"}));
    EXPECT_TRUE(network.statements.empty());
}

TEST_F(cReplicationsTest, queuesAreFilledInTheOrderOfTheirNamesAndEmptyOnesNotAtAll) {
    network.addQueue("Heap", soil).setInitialContentText("1/3");
    network.addQueue("Zone", soil).setInitialContentText("2");
    pile.setInitialContentText("1-1");
    cTexts statements;
    observer.onBegin = [&] {
        statements.clear();
        for (const auto& statement : network.statements) statements.push_back(statement->getText());
    };

    run("MULTISIM 2;\n");

    EXPECT_EQ(statements, (cTexts{"INIT Heap 0.333333", "INIT Zone 2.000000", "SIMULATE"}));
}

TEST_F(cReplicationsTest, aNegativeContentFailsAsTheNumberOfItsStatementIsNoFormula) {
    pile.setInitialContentText("(0-1)");

    const cException failure = failureOf([&] { run(""); });

    EXPECT_EQ(failure.code, failureCode::expression);
    EXPECT_EQ(failure.expressionText, "-1.000000");
}

TEST_F(cReplicationsTest, aRandomContentIsDrawnOncePerRun) {
    pile.setInitialContentText("Uniform(1,1000)");
    std::vector<double> totals;
    observer.onEnd = [&] { totals.push_back(pile.getAttribute("TotCount")); };

    run("MULTISIM 3;\nSIMULATECONDITION 1;\n");

    ASSERT_EQ(totals.size(), 3U);
    EXPECT_GT(totals.at(0), 1.0);
    EXPECT_EQ(totals.at(1), totals.at(0));
    EXPECT_EQ(totals.at(2), totals.at(0));
}

TEST_F(cReplicationsTest, aSimulateInTheGlobalCodeIsARunOfItsOwn) {
    run("INIT Pile 2;\nSIMULATE;\nPOST \"%f %d\" SimTime Dig.TotInst;\n");

    EXPECT_EQ(network.messages.at(1), "2.000000 2");
    EXPECT_EQ(network.runStatistics->getReplicationCount(), 1);
}

TEST_F(cReplicationsTest, aReplicationIsGatheredBeforeItIsResetAndItsTraceStillStandsForTheObserver) {
    pile.setInitialContentText("1");
    cTexts trace;
    double timeAtEnd = 0.0;
    observer.onEnd = [&] {
        trace = network.traceLines();
        timeAtEnd = network.simTime;
    };

    run("");

    EXPECT_EQ(timeAtEnd, 2.0);
    EXPECT_EQ(trace.back(), "2.00,ONEND,Dig(0),,,,\n");
    EXPECT_EQ(network.traceLines(), cTexts{std::string(traceHeader)});
    EXPECT_EQ(network.simTime, 0.0);
    EXPECT_EQ(meanOf("SimTime"), 2.0);
}

// ---- how many

TEST_F(cReplicationsTest, noReplicationRunsForANumberOf0OrLess) {
    for (const std::int32_t number : {0, -1, -2147483647 - 1}) {
        network.messages.clear();
        network.replications = number;

        run("");

        EXPECT_EQ(network.messages, (cTexts{"results reset", "single run"})) << number;
        EXPECT_TRUE(network.statements.empty()) << number;
        EXPECT_EQ(network.runStatistics->getReplicationCount(), 0) << number;
        EXPECT_TRUE(fileContent().starts_with("Num,SimTime,")) << number;
        EXPECT_TRUE(fileContent().ends_with("Pile.MaxCont")) << number;
    }
}

TEST_F(cReplicationsTest, aSingleRunWritesNoLine) {
    run("");

    EXPECT_TRUE(fileContent().ends_with("Pile.MaxCont"));
}

TEST_F(cReplicationsTest, theNumberIsReadAnewAtEachRoundSoAStatementCanLowerIt) {
    run("MULTISIM 5;\nIF 1 MULTISIM 2;\n");

    EXPECT_EQ(network.runStatistics->getReplicationCount(), 2);
}

TEST_F(cReplicationsTest, theNumberReturnsTo1WhenTheNetworkIsCleared) {
    run("MULTISIM 5;\n");
    network.clearNetwork();

    run("");

    EXPECT_EQ(network.runStatistics->getReplicationCount(), 1);
}

TEST_F(cReplicationsTest, replicationsAreAlikeWhereNothingIsRandom) {
    pile.setInitialContentText("3");
    std::vector<double> averages;
    observer.onEnd = [&] { averages.push_back(dig.getStatistics().aveDur); };

    run("MULTISIM 3;\n");

    EXPECT_EQ(averages, (std::vector<double>{2.0, 2.0, 2.0}));
    EXPECT_EQ(meanOf("Dig.TotInst"), 3.0);
    EXPECT_EQ(meanOf("SimTime"), 2.0);
}

TEST_F(cReplicationsTest, withAStopAskedForTheFurtherReplicationsEndAtTheirFirstRound) {
    pile.setInitialContentText("3");
    std::vector<double> times;
    observer.onEnd = [&] { times.push_back(network.simTime); };

    network.stopRequested = true;
    run("MULTISIM 3;\n");

    EXPECT_EQ(times, (std::vector<double>{0.0, 0.0, 0.0}));
}

// ---- seeds

/// Notes the seed of the streams when a replication begins.
class cReplicationSeedTest : public cReplicationsTest {
protected:
    void SetUp() override {
        cReplicationsTest::SetUp();
        observer.onBegin = [this] { seeds.push_back(network.symbols->randomStreams().getSeed()); };
    }

    std::vector<std::uint32_t> seeds;
};

TEST_F(cReplicationSeedTest, replicationsUseConsecutiveSeedsFromTheClockOn) {
    run("MULTISIM 3;\nSEED 5;\n");

    EXPECT_EQ(seeds, (std::vector<std::uint32_t>{1000, 1001, 1002}));
}

TEST_F(cReplicationSeedTest, theClockIsAskedWhenTheCodeHasRun) {
    network.onMessage = [&](const std::string& text) {
        if (text == "later ") now = 2000;
    };

    run("MULTISIM 2;\nPOST later;\n");

    EXPECT_EQ(seeds, (std::vector<std::uint32_t>{2000, 2001}));
}

TEST_F(cReplicationSeedTest, theClockIsAskedOncePerRun) {
    clockReadings = 0;
    observer.onEnd = [&] { now += 500; };

    run("MULTISIM 3;\n");

    EXPECT_EQ(clockReadings, 1);
    EXPECT_EQ(seeds, (std::vector<std::uint32_t>{1000, 1001, 1002}));
}

TEST_F(cReplicationSeedTest, seedsAreTheLow32BitsAndWrapAround) {
    now = (std::int64_t{7} << 32) + 0xFFFFFFFF;

    run("MULTISIM 2;\n");

    EXPECT_EQ(seeds, (std::vector<std::uint32_t>{0xFFFFFFFF, 0}));
}

TEST_F(cReplicationSeedTest, stream0BeginsAnewWithEachSeed) {
    run("MULTISIM 2;\nBEFORETIMEADVANCE POST \"%f\" Rnd();\n");

    const auto firstValue = [](std::uint32_t seed) {
        cRandomGenerator generator(seed);
        generator.uniform();  // of the trial
        return std::to_string(roundThroughText(generator.uniform()));
    };
    EXPECT_EQ(network.messages.at(3), firstValue(1000));
    EXPECT_EQ(network.messages.at(6), firstValue(1001));
}

TEST_F(cReplicationSeedTest, aSingleRunKeepsTheSeedThatTheModelSets) {
    clockReadings = 0;

    run("SEED 5;\n");

    EXPECT_EQ(network.symbols->randomStreams().getSeed(), 5U);
    EXPECT_EQ(clockReadings, 0);
    EXPECT_TRUE(seeds.empty());
}

TEST_F(cReplicationSeedTest, aNumberOfReplicationsSetInsideTheFirstTakesTheClockThen) {
    network.onMessage = [&](const std::string&) { now = 3000; };

    run("BEFORETIMEADVANCE POST later;\nAFTERTIMEADVANCE MULTISIM 3;\n");

    EXPECT_EQ(network.runStatistics->getReplicationCount(), 3);
    EXPECT_EQ(seeds, (std::vector<std::uint32_t>{3000, 3001}));
    const cTexts steps{"results reset", "single run",         "later ", "gathered", "replication 1 of 3", "later ",
                       "gathered",      "replication 2 of 3", "later ", "gathered"};
    EXPECT_EQ(network.messages, steps);
    EXPECT_NE(fileContent().find("\n3,"), std::string::npos);  // written at the end, as of many
}

// ---- the columns

TEST_F(cReplicationsTest, headerRowsAndLabelsAgree) {
    network.elements.clear();

    run("SAVEVALUE x 7;\nADDTORESULTS b x;\nADDTORESULTS a 0.5;\nMULTISIM 2;\n");

    EXPECT_EQ(network.runStatistics->getLabels(), (cTexts{"a", "b"}));
    EXPECT_EQ(network.runStatistics->getMeans(), (std::vector<double>{0.0, 0.5, 7.0}));
    EXPECT_EQ(fileContent(), "Num,SimTime,a,b1,0.000000,0.500000,7.000000,\n2,0.000000,0.500000,7.000000,\n");
}

TEST_F(cReplicationsTest, twoRunsWithDifferentEntriesHaveTheirOwnColumns) {
    network.elements.clear();
    run("ADDTORESULTS a 1;\nADDTORESULTS b 2;\n");
    network.clearNetwork();

    run("ADDTORESULTS c 3;\n");

    EXPECT_EQ(network.runStatistics->getLabels(), cTexts{"c"});
    EXPECT_EQ(network.runStatistics->getMeans(), (std::vector<double>{0.0, 3.0}));
}

TEST_F(cReplicationsTest, entriesWithoutAnElementDisturbNeitherHeaderNorRows) {
    run("MULTISIM 2;\nONSTART Nope POST x;\nIF nDraws POST y;\n");

    EXPECT_EQ(network.findElement("Nope"), nullptr);
    EXPECT_EQ(network.runStatistics->getMeans().size(), 1U + 9U + 6U);
    EXPECT_EQ(network.runStatistics->columnNames().size(), 1U + 9U + 6U);
}

TEST_F(cReplicationsTest, whatPrintCollectedStaysUntilTheNextRun) {
    run("PRINT log hello;\n");
    EXPECT_EQ(network.runStatistics->printTexts.at("log"), "hello \n");

    run("");

    EXPECT_TRUE(network.runStatistics->printTexts.empty());
}

// ---- numbers of resources

TEST_F(cReplicationsTest, resourcesAreNumberedFrom1InEachReplication) {
    cNodeQueue& yard = network.addQueue("Yard", network.addCompoundType("Truck"));
    yard.setInitialContentText("2");
    std::vector<cTexts> names;
    observer.onEnd = [&] {
        names.emplace_back();
        for (const cResPtr& waiting : yard.getContents())
            names.back().push_back(waiting->asInstance()->getInstanceName());
    };

    run("MULTISIM 2;\n");

    const cTexts both{"Truck_1", "Truck_2"};
    EXPECT_EQ(names, (std::vector<cTexts>{both, both}));
}

// ---- failures

TEST_F(cReplicationsTest, aModelThatIsNotFitToRunFailsAtOnceAndIsReadyAgainWhenCleared) {
    network.addCombi("Lonely");

    const cException failure = failureOf([&] { run("MULTISIM 2;\n"); });
    EXPECT_EQ(failure.code, failureCode::startUp);
    EXPECT_EQ(network.runStatistics->getReplicationCount(), 0);
    network.clearNetwork();

    EXPECT_EQ(network.simState, 0);
    EXPECT_TRUE(network.statements.empty());
    network.elements.erase("Lonely");
    EXPECT_NO_THROW(run(""));
}

TEST_F(cReplicationsTest, theUsersStopEndsTheRunAndWhatWasGatheredStays) {
    pile.setInitialContentText("1");
    network.stopAtHostEvent = 2 + 2 + 1;  // two rounds in each of two replications, and the first of the third

    const cException failure = failureOf([&] { run("MULTISIM 9;\n"); });

    EXPECT_EQ(failure.code, failureCode::userStop);
    EXPECT_EQ(network.runStatistics->getReplicationCount(), 2);
    EXPECT_EQ(meanOf("SimTime"), 2.0);
    EXPECT_EQ(network.messages.back(), "replication 2 of 9");
}

TEST_F(cReplicationsTest, replicationsThatAreOverAtOnceCanBeStopped) {
    network.stopAtHostEvent = 1;

    const cException failure = failureOf([&] { run("SIMULATECONDITION 1;\nMULTISIM 50000;\n"); });

    EXPECT_EQ(failure.code, failureCode::userStop);
    EXPECT_GT(network.runStatistics->getReplicationCount(), 0);
}

TEST_F(cReplicationsTest, aRunCanFollowOneThatWasStopped) {
    network.addLink("Back", dig, pile);
    pile.setInitialContentText("1");
    network.stopAtHostEvent = 10;
    failureOf([&] { run("ONSTART Dig POST start;\n"); });
    network.clearNetwork();
    network.messages.clear();

    run("SIMULATECONDITION SimTime>=4;\n");

    EXPECT_EQ(network.messages, (cTexts{"results reset", "single run", "gathered"}));
    EXPECT_EQ(meanOf("Dig.TotInst"), 2.0);
}

TEST_F(cReplicationsTest, aFailureInTheGlobalCodeComesBeforeAnyReplication) {
    const cException failure = failureOf([&] { run("MULTISIM 0;\n"); });

    EXPECT_EQ(failure.code, failureCode::statement);
    EXPECT_EQ(network.messages, cTexts{"results reset"});
}

TEST_F(cReplicationsTest, aRunWithAnObserverThatIsDeafIsTheSame) {
    pile.setInitialContentText("1");
    cRunObserver deaf;
    code.globalCode = "MULTISIM 2;\n";

    runReplications(network, code, deaf);

    EXPECT_EQ(network.runStatistics->getReplicationCount(), 2);
}

}  // namespace
