#include "flow/dynafork.h"

#include "support/branchScene.h"

#include <algorithm>

namespace {

/// A Dynafork, F.
class cDynaforkTest : public cBranchScene {
protected:
    cNodeAuxDynafork& fork = network.addDynafork("F", soil);
};

TEST_F(cDynaforkTest, theDefaultNameHasTheNumberOfTheCounter) {
    cNetworkElement::setElementCounter(7);

    const cNodeAuxDynafork other;

    EXPECT_EQ(other.getName(), "Dynafork8");
    EXPECT_EQ(other.getElementId(), 7);
}

TEST_F(cDynaforkTest, aDefaultNameIsTriedOnceAndStaysEmptyOnAClash) {
    cNetworkElement::setElementCounter(7);
    network.elements["Dynafork8"];

    const cNodeAuxDynafork other;

    EXPECT_EQ(other.getName(), "");
    EXPECT_EQ(cNetworkElement::getElementCounter(), 8);
}

// ---- the four operations

TEST_F(cDynaforkTest, allSuccessorsAreToldByNameAlsoThoseThatReceiveNothing) {
    branch(fork, {"1", "0", "0"});

    sendBurst(fork, {amountOf(soil, 1.0)});

    EXPECT_EQ(network.messages, (cTexts{"flowBegin A", "flowBegin B", "flowBegin C", "receive A", "flowEnd A",
                                        "flowEnd B", "flowEnd C", "flowSettle A", "flowSettle B", "flowSettle C"}));
}

TEST_F(cDynaforkTest, onlyTheFirstOpenFlowAndTheLastToCloseAreToldButEverySettling) {
    branch(fork, {"1"});

    fork.flowBegin();
    fork.flowBegin();
    fork.flowEnd();
    const cTexts whileOpen = network.messages;
    fork.flowEnd();
    fork.flowSettle();
    fork.flowSettle();

    EXPECT_EQ(whileOpen, cTexts{"flowBegin A"});
    EXPECT_EQ(network.messages, (cTexts{"flowBegin A", "flowEnd A", "flowSettle A", "flowSettle A"}));
}

TEST_F(cDynaforkTest, aNormalThatReceivesNothingStartsAnEmptyInstance) {
    cNodeActNormal& passedBy = network.addNormal("PassedBy");
    branch(fork, {"1"});
    network.addLink("ToN", fork, passedBy).setRuleText(eLinkRule::strength, "0");

    sendBurst(fork, {amountOf(soil, 1.0)});

    ASSERT_EQ(passedBy.getStatistics().nextInstance, 1);
    EXPECT_TRUE(passedBy.findInstance(0)->getResources().empty());
}

// ---- a choice for each resource

TEST_F(cDynaforkTest, eachResourceIsSentByANumberOfItsOwn) {
    branch(fork, {"1", "1"});
    std::string expected;
    for (const double number : choiceNumbers(1, 20)) expected += number <= 0.5 ? 'A' : 'B';

    sendBurst(fork, {20, amountOf(soil, 1.0)});

    EXPECT_EQ(reached(), expected);
}

TEST_F(cDynaforkTest, noChoiceIsMadeBeforeAResourceComes) {
    branch(fork, {"GET(\"a\")"});

    fork.flowBegin();
    fork.flowEnd();
    fork.flowSettle();

    EXPECT_TRUE(network.askedKeys.empty());
}

TEST_F(cDynaforkTest, aChoiceHasAnInstanceInHandAndNoAmount) {
    branch(fork, {"GET(\"a\")"});
    std::vector<const cRes*> inHand;
    network.onGet = [&](const std::string&) {
        inHand.push_back(network.resourceInHand());
        return 1.0;
    };
    const auto passenger = instanceOf(truck);

    sendBurst(fork, {amountOf(soil, 1.0), passenger});

    EXPECT_EQ(inHand, (std::vector<const cRes*>{nullptr, passenger.get()}));
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cDynaforkTest, strengthsSeeWhatTheResourcesBeforeHaveDone) {
    cNodeQueue& pile = network.addQueue("Pile", soil);
    cNodeQueue& heap = network.addQueue("Heap", soil);
    network.addLink("ToHeap", fork, heap).setRuleText(eLinkRule::strength, "Pile.CurCount>=2");
    network.addLink("ToPile", fork, pile).setRuleText(eLinkRule::strength, "Pile.CurCount<2");
    seedWhere(5, [](const std::vector<double>& numbers) {
        return std::find(numbers.begin(), numbers.end(), 0.0) == numbers.end();
    });

    sendBurst(fork, {5, amountOf(soil, 1.0)});

    EXPECT_EQ(pile.getCurCount(), 2.0);
    EXPECT_EQ(heap.getCurCount(), 3.0);
}

TEST_F(cDynaforkTest, nothingIsTraced) {
    branch(fork, {"1", "1"});

    sendBurst(fork, {amountOf(soil, 1.0), instanceOf(truck)});

    EXPECT_EQ(network.trace.size(), 1U);  // the header
}

// ---- nothing to choose from

TEST_F(cDynaforkTest, strengthsOf0FailAtTheFirstResourceInTheWordsOfAFork) {
    branch(fork, {"0", "0"});
    fork.flowBegin();

    const cException failure = failureOf([&] { fork.receive(*amountOf(soil, 1.0)); });

    EXPECT_EQ(network.messages, (cTexts{"flowBegin A", "flowBegin B"}));
    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, nothingToChoose);
}

TEST_F(cDynaforkTest, withoutAnOutLinkNothingHappensAtAFlowBeginAndTheFirstResourceFails) {
    fork.flowBegin();

    const cException failure = failureOf([&] { fork.receive(*instanceOf(truck)); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, nothingToChoose);
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cDynaforkTest, withoutAnOutLinkABurstThatBringsNothingPasses) { EXPECT_NO_THROW(sendBurst(fork, {})); }

// ---- circles

TEST_F(cDynaforkTest, aCircleFailsAtTheFirstResource) {
    cNodeAuxDynafork& other = network.addDynafork("G", soil);
    network.addLink("There", fork, other);
    network.addLink("Back", other, fork);
    fork.flowBegin();

    const cException failure = failureOf([&] { fork.receive(*amountOf(soil, 1.0)); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Endless flow through link \"There\".");
}

TEST_F(cDynaforkTest, resourcesCanLeaveACircle) {
    network.addLink("Back", fork, fork);
    branch(fork, {"1"});
    std::srand(1);
    fork.flowBegin();

    for (int i = 0; i < 30; ++i) fork.receive(*amountOf(soil, 1.0));

    EXPECT_EQ(reached(), std::string(30, 'A'));
}

TEST_F(cDynaforkTest, aBurstThatCameBackToItsBeginningIsNeverClosed) {
    network.addLink("Back", fork, fork).setRuleText(eLinkRule::strength, "0");
    branch(fork, {"1"});

    fork.flowBegin();
    fork.flowEnd();

    EXPECT_EQ(network.messages, cTexts{"flowBegin A"});
}

TEST_F(cDynaforkTest, settlingInACircleFails) {
    network.addLink("Back", fork, fork).setRuleText(eLinkRule::strength, "0");
    branch(fork, {"1"});

    const cException failure = failureOf([&] { fork.flowSettle(); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Endless flow through link \"Back\".");
}

TEST_F(cDynaforkTest, aChainOf900DynaforksIsPassed) {
    cNodeAuxDynafork* last = &fork;
    for (int i = 0; i < 899; ++i) {
        cNodeAuxDynafork& next = network.addDynafork("F" + std::to_string(i), soil);
        network.addLink("C" + std::to_string(i), *last, next);
        last = &next;
    }
    branch(*last, {"1"});

    sendBurst(fork, {amountOf(soil, 1.0)});

    EXPECT_EQ(network.messages, (cTexts{"flowBegin A", "receive A", "flowEnd A", "flowSettle A"}));
}

}  // namespace
