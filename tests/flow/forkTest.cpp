#include "flow/fork.h"

#include "kernel/trace.h"
#include "support/branchScene.h"
#include "support/holdings.h"

#include <algorithm>

namespace {

constexpr auto firstAThenB = [](const std::vector<double>& numbers) { return numbers[0] <= 0.5 && numbers[1] > 0.5; };

/// A Fork, F, and Work, an activity in front of it by way of In1, whose instances the test starts by hand.
class cForkTest : public cBranchScene {
protected:
    cLink& connectWork(const std::string& name) { return network.addLink(name, work, fork); }
    /// Starts an instance of Work that holds soil, and ends it.
    void fire() {
        work.startInstance(holdingsOf({amountOf(soil, 5.0)}), network.simTime, 0.0);
        network.advanceClock();
    }
    /// The lines of the trace that Forks wrote.
    cTexts forkLines() const {
        cTexts lines;
        for (const std::string& line : network.traceLines())
            if (line.find(",FORK") != std::string::npos) lines.push_back(line);
        return lines;
    }

    cNodeActCombi& work = network.addCombi("Work");
    cNodeAuxFork& fork = network.addFork("F", soil);
};

TEST_F(cForkTest, aDefaultNameIsTriedWithFurtherNumbersUntilItIsAccepted) {
    cNetworkElement::setElementCounter(7);
    network.elements["Fork8"];
    network.elements["Fork9"];

    const cNodeAuxFork other;

    EXPECT_EQ(other.getName(), "Fork10");
    EXPECT_EQ(other.getElementId(), 9);  // the counter before it was raised last
    EXPECT_EQ(cNetworkElement::getElementCounter(), 10);
}

TEST_F(cForkTest, aDefaultNameThatIsFreeLeavesTheNumber) {
    cNetworkElement::setElementCounter(7);

    const cNodeAuxFork other;

    EXPECT_EQ(other.getName(), "Fork8");
    EXPECT_EQ(other.getElementId(), 7);
}

// ---- one choice for a burst

TEST_F(cForkTest, allResourcesOfABurstGoToTheSameSuccessor) {
    branch(fork, {"1", "1"});
    seedWhere(10, [](const std::vector<double>& numbers) {
        return numbers[0] > 0.5 && std::count_if(numbers.begin(), numbers.end(), [](double n) { return n <= 0.5; }) > 4;
    });

    sendBurst(fork, {10, amountOf(soil, 1.0)});

    EXPECT_EQ(reached(), "BBBBBBBBBB");
}

TEST_F(cForkTest, theChosenBranchAloneIsToldInEachOfTheFourWays) {
    branch(fork, {"1", "1"});
    seedWhere(1, [](const std::vector<double>& numbers) { return numbers[0] > 0.5; });

    sendBurst(fork, {amountOf(soil, 1.0)});

    EXPECT_EQ(network.messages, (cTexts{"flowBegin B", "receive B", "flowEnd B", "flowSettle B"}));
}

TEST_F(cForkTest, theBranchIsChosenAheadOfTheResources) {
    branch(fork, {"GET(\"a\")", "GET(\"b\")"});
    network.answers["a"] = 1.0;
    fork.flowBegin();
    network.askedKeys.clear();

    fork.receive(*amountOf(soil, 1.0));
    fork.receive(*instanceOf(truck));

    EXPECT_TRUE(network.askedKeys.empty());
}

TEST_F(cForkTest, theChoiceIsMadeWithNoResourceInHand) {
    branch(fork, {"GET(\"a\")"});
    std::size_t onStack = 9;
    network.onGet = [&](const std::string&) {
        onStack = network.symbols->getResourceStack().size();
        return 1.0;
    };

    sendBurst(fork, {instanceOf(truck)});

    EXPECT_EQ(onStack, 0U);
}

TEST_F(cForkTest, theChoiceIsMadeAnewAtEachFlowBeginAndTheLastOneHolds) {
    branch(fork, {"1", "1"});
    seedWhere(2, firstAThenB);

    fork.flowBegin();
    fork.flowBegin();
    fork.receive(*amountOf(soil, 1.0));
    fork.flowEnd();
    fork.flowEnd();
    fork.flowSettle();
    fork.flowSettle();

    EXPECT_EQ(network.messages, (cTexts{"flowBegin A", "flowBegin B", "receive B", "flowEnd B", "flowSettle B"}));
}

TEST_F(cForkTest, twoLinksOfOneActivityChooseTwiceAndTheFirstChoiceNeverEnds) {
    branch(fork, {"1", "1"});
    connectWork("In1");
    connectWork("In2");
    seedWhere(2, firstAThenB);

    fire();

    EXPECT_EQ(network.messages,
              (cTexts{"flowBegin A", "flowBegin B", "receive B", "receive B", "flowEnd B", "flowSettle B"}));
}

TEST_F(cForkTest, aNormalThatWasToldOfABurstThatWentElsewhereWaitsForItsEnd) {
    cNodeActNormal& first = network.addNormal("First");
    cNodeActNormal& second = network.addNormal("Second");
    network.addLink("ToA", fork, first);
    network.addLink("ToB", fork, second);
    connectWork("In1");
    connectWork("In2");
    seedWhere(2, firstAThenB);

    fire();

    EXPECT_EQ(first.getStatistics().nextInstance, 0);
    EXPECT_TRUE(first.activeMark);
    EXPECT_EQ(second.getStatistics().nextInstance, 1);
}

TEST_F(cForkTest, theEndIsToldWhenTheLastOpenFlowCloses) {
    branch(fork, {"1"});
    fork.flowBegin();
    fork.flowBegin();
    network.messages.clear();

    fork.flowEnd();
    const bool toldEarly = !network.messages.empty();
    fork.flowEnd();

    EXPECT_FALSE(toldEarly);
    EXPECT_EQ(network.messages, cTexts{"flowEnd A"});
}

TEST_F(cForkTest, aSettlingWithoutAChoiceTellsNobody) {
    branch(fork, {"1"});

    fork.flowSettle();
    sendBurst(fork, {});
    network.messages.clear();
    fork.flowSettle();

    EXPECT_TRUE(network.messages.empty());
}

TEST_F(cForkTest, aResourceWithoutAChoiceTakesTheLastLink) {
    branch(fork, {"1", "1", "1"});

    fork.receive(*amountOf(soil, 1.0));

    EXPECT_EQ(reached(), "C");
}

TEST_F(cForkTest, aResetLeavesAnOpenBurstAsItIs) {
    branch(fork, {"1"});
    fork.flowBegin();
    network.messages.clear();

    fork.resetElement();
    fork.receive(*amountOf(soil, 1.0));
    fork.flowEnd();

    EXPECT_EQ(network.messages, (cTexts{"receive A", "flowEnd A"}));
}

// ---- nothing to choose from

class cNothingToChooseTest : public cForkTest, public ::testing::WithParamInterface<cTexts> {};

TEST_P(cNothingToChooseTest, failsAtTheFirstFlowBegin) {
    branch(fork, GetParam());

    const cException failure = failureOf([&] { fork.flowBegin(); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, nothingToChoose);
    EXPECT_EQ(failure.location + failure.expressionText, "");
    EXPECT_TRUE(network.messages.empty());
    EXPECT_TRUE(forkLines().empty());
}

INSTANTIATE_TEST_SUITE_P(strengths, cNothingToChooseTest,
                         ::testing::Values(cTexts{"0", "0"}, cTexts{"0"}, cTexts{"1", "(0-1)"}, cTexts{}));

TEST_F(cForkTest, aFailureInARunEndsItWithTheWordsOfTheFork) {
    branch(fork, {"0"});
    cNodeQueue& pile = network.addQueue("Pile", soil);
    pile.setInitialContentText("1");
    network.addLink("Draw", pile, work);
    connectWork("In1");

    const cException failure = failureOf([&] { network.run(); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, nothingToChoose);
}

TEST_F(cForkTest, aFailingStrengthPassesUnchanged) {
    branch(fork, {"1", "1/0"});

    const cException failure = failureOf([&] { fork.flowBegin(); });

    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(failure.expressionText, "1/0");
}

// ---- the trace

TEST_F(cForkTest, eachOutLinkGivesALineWithTheRunningSumAndTheSuccessor) {
    branch(fork, {"1", "2", "1"});
    network.simTime = 3.5;
    seedWhere(1, [](const std::vector<double>& numbers) { return numbers[0] > 0.25 && numbers[0] <= 0.75; });

    fork.flowBegin();

    EXPECT_EQ(forkLines(), (cTexts{"3.50,FORKNOCHOOSE,F,,,,,,0.25,A\n", "3.50,FORKCHOOSE,F,,,,,,0.75,B\n",
                                   "3.50,FORKNOCHOOSE,F,,,,,,1.00,C\n"}));
}

TEST_F(cForkTest, runningSumsOfNegativeStrengthsStandThereAsTheyAre) {
    branch(fork, {"3", "(0-1)"});

    fork.flowBegin();

    EXPECT_EQ(forkLines(), (cTexts{"0.00,FORKCHOOSE,F,,,,,,1.50,A\n", "0.00,FORKNOCHOOSE,F,,,,,,1.00,B\n"}));
}

TEST_F(cForkTest, everyChoiceIsTracedAndNothingElse) {
    branch(fork, {"1"});
    connectWork("In1");
    connectWork("In2");

    fire();

    EXPECT_EQ(forkLines(), cTexts(2, "0.00,FORKCHOOSE,F,,,,,,1.00,A\n"));
}

TEST_F(cForkTest, theLinesStandThereBeforeTheFlowGoesOn) {
    cNodeAuxFork& next = network.addFork("Next", soil);
    branch(next, {"1"});
    network.addLink("Between", fork, next);

    fork.flowBegin();

    EXPECT_EQ(forkLines(), (cTexts{"0.00,FORKCHOOSE,F,,,,,,1.00,Next\n", "0.00,FORKCHOOSE,Next,,,,,,1.00,A\n"}));
}

TEST_F(cForkTest, aFullTraceTakesNoMoreLines) {
    branch(fork, {"1", "1"});
    while (network.trace.size() < traceCapacity - 1) network.addTraceLine("x");

    fork.flowBegin();

    EXPECT_EQ(network.trace.size(), traceCapacity);
    EXPECT_TRUE(network.traceLines().back().ends_with(",A\n"));
}

// ---- many Forks

TEST_F(cForkTest, aChainOf900ForksIsPassed) {
    cNodeAuxFork* last = &fork;
    for (int i = 0; i < 899; ++i) {
        cNodeAuxFork& next = network.addFork("F" + std::to_string(i), soil);
        network.addLink("C" + std::to_string(i), *last, next);
        last = &next;
    }
    branch(*last, {"1"});
    connectWork("In1");

    fire();

    EXPECT_EQ(network.messages, (cTexts{"flowBegin A", "receive A", "flowEnd A", "flowSettle A"}));
}

TEST_F(cForkTest, aCircleOfForksFailsAtTheFlowBegin) {
    cNodeAuxFork& other = network.addFork("G", soil);
    network.addLink("There", fork, other);
    network.addLink("Back", other, fork);
    connectWork("In1");

    const cException failure = failureOf([&] { fire(); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Endless flow through link \"Back\".");
}

TEST_F(cForkTest, aForkThatLeadsToItselfFails) {
    network.addLink("Self", fork, fork);

    const cException failure = failureOf([&] { fork.flowBegin(); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Endless flow through link \"Self\".");
}

TEST_F(cForkTest, aCircleThatTheChoiceLeavesEnds) {
    branch(fork, {"1"});
    network.addLink("Back", fork, fork).setRuleText(eLinkRule::strength, "0");
    seedWhere(1, [](const std::vector<double>& numbers) { return numbers[0] > 0.0; });

    sendBurst(fork, {amountOf(soil, 1.0)});

    EXPECT_EQ(reached(), "A");
}

}  // namespace
