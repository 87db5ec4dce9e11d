#include "flow/assembler.h"

#include "support/burst.h"
#include "support/failureOf.h"
#include "support/holdings.h"
#include "support/recordingReceiver.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using cTexts = std::vector<std::string>;

/// An Assembler of houses, Frame, whose first out-link L1 leads to First and whose second, L2, to Second: nodes that
/// record. Planks and nails flow in. Work is an activity whose instances the test starts by hand.
class cAssemblerTest : public ::testing::Test {
protected:
    void SetUp() override { network.simState = 1; }

    cResCompound& sent(std::size_t index = 0) { return dynamic_cast<cResCompound&>(*first.received.at(index)); }
    /// Ends an instance of Work that holds planks.
    void fire(const cResList& planks) {
        work.startInstance(holdingsOf(planks), network.simTime, 0.0);
        network.advanceClock();
    }

    cWatchedNetwork network;
    cResTypeGen& nails = network.addGenericType("Nails");
    cResTypeCompound& plank = network.addCompoundType("Plank");
    cResTypeCompound& house = network.addCompoundType("House");
    cRecordingReceiver first{"First", network.messages};
    cRecordingReceiver second{"Second", network.messages};
    cNodeActCombi& work = network.addCombi("Work");
    cNodeAuxAssembler& frame = network.addAssembler("Frame", house);
    cLink& l1 = network.addLink("L1", frame, first);
    cLink& l2 = network.addLink("L2", frame, second);
};

TEST_F(cAssemblerTest, theKindWordIsAssembler) { EXPECT_EQ(frame.getKind(), "ASSEMBLER"); }

TEST_F(cAssemblerTest, noKeywordIsAnswered) {
    const cException failure = failureOf([&] { frame.getAttribute("InContext"); });

    EXPECT_EQ(failure.code, 3);
    EXPECT_EQ(failure.message + failure.location + failure.expressionText, "");
}

TEST_F(cAssemblerTest, theDefaultNameHasTheNumberOfTheCounter) {
    cNetworkElement::setElementCounter(7);

    const cNodeAuxAssembler other;

    EXPECT_EQ(other.getName(), "Assembler8");
    EXPECT_EQ(other.getElementId(), 7);
}

TEST_F(cAssemblerTest, aDefaultNameIsTriedOnceAndStaysEmptyOnAClash) {
    cNetworkElement::setElementCounter(7);
    network.elements["Assembler8"];

    const cNodeAuxAssembler other;

    EXPECT_EQ(other.getName(), "");
    EXPECT_EQ(cNetworkElement::getElementCounter(), 8);
}

// ---- the four operations

TEST_F(cAssemblerTest, theFirstOpenFlowIsToldToAllSuccessorsByName) {
    frame.flowBegin();
    frame.flowBegin();

    EXPECT_EQ(network.messages, (cTexts{"flowBegin First", "flowBegin Second"}));
}

TEST_F(cAssemblerTest, onlyTheFirstOutLinkGetsTheCompoundAndTheEndWhileBeginAndSettlingGoToAll) {
    sendBurst(frame, {instanceOf(plank)});

    EXPECT_EQ(network.messages, (cTexts{"flowBegin First", "flowBegin Second", "receive First", "flowEnd First",
                                        "flowSettle First", "flowSettle Second"}));
}

TEST_F(cAssemblerTest, theFirstOutLinkIsTheFirstByName) {
    network.addLink("Link9", frame, first);
    network.addLink("Link10", frame, second);
    network.elements.erase("L1");
    network.elements.erase("L2");

    sendBurst(frame, {});

    EXPECT_EQ(second.received.size(), 1U);
    EXPECT_TRUE(first.received.empty());
}

TEST_F(cAssemblerTest, everySettlingIsPassedOn) {
    frame.flowSettle();
    frame.flowSettle();

    EXPECT_EQ(network.messages,
              (cTexts{"flowSettle First", "flowSettle Second", "flowSettle First", "flowSettle Second"}));
}

TEST_F(cAssemblerTest, theMarkIsRaisedByTheFirstOpenFlowAndNeverLowered) {
    frame.flowBegin();
    const bool afterBegin = frame.activeMark;
    frame.flowEnd();
    frame.flowSettle();
    const bool afterBurst = frame.activeMark;
    frame.resetElement();

    EXPECT_TRUE(afterBegin);
    EXPECT_TRUE(afterBurst);
    EXPECT_TRUE(frame.activeMark);
}

TEST_F(cAssemblerTest, aFlowThatOpensLaterLeavesTheMarkAlone) {
    frame.flowBegin();
    frame.activeMark = false;

    frame.flowBegin();

    EXPECT_FALSE(frame.activeMark);
}

TEST_F(cAssemblerTest, nothingIsSentBeforeTheLastOpenFlowCloses) {
    frame.flowBegin();
    frame.flowBegin();
    frame.receive(*instanceOf(plank));
    frame.flowEnd();
    const std::size_t early = first.received.size();
    frame.flowEnd();

    EXPECT_EQ(early, 0U);
    EXPECT_EQ(first.received.size(), 1U);
}

TEST_F(cAssemblerTest, aResetLeavesAnOpenBurstAndWhatCameAsTheyAre) {
    frame.flowBegin();
    frame.receive(*instanceOf(plank));

    frame.resetElement();
    frame.flowEnd();

    ASSERT_EQ(first.received.size(), 1U);
    EXPECT_EQ(sent().contents.size(), 1U);
}

// ---- the compound

TEST_F(cAssemblerTest, threeInstancesAndAnAmountGiveFourEntries) {
    const cResList planks{instanceOf(plank), instanceOf(plank), instanceOf(plank)};

    sendBurst(frame, {planks[0], amountOf(nails, 2.0), planks[1], planks[2]});

    EXPECT_EQ(sent().contents.size(), 4U);
    EXPECT_EQ(heldOf(sent().contents, plank), planks);
    EXPECT_EQ(amountHeld(sent().contents, nails), 2.0);
}

TEST_F(cAssemblerTest, amountsOfATypeMergeIntoOnePart) {
    sendBurst(frame, {amountOf(nails, 2.0), amountOf(nails, 0.5), amountOf(nails, 0.0)});

    ASSERT_EQ(sent().contents.size(), 1U);
    EXPECT_EQ(amountHeld(sent().contents, nails), 2.5);
}

TEST_F(cAssemblerTest, anAmountOf0IsAPart) {
    sendBurst(frame, {amountOf(nails, 0.0)});

    EXPECT_EQ(sent().contents.size(), 1U);
    EXPECT_EQ(amountHeld(sent().contents, nails), 0.0);
}

TEST_F(cAssemblerTest, theCompoundIsOfTheAssemblersTypeAndBornAtTheEndOfTheFirstBurst) {
    house.setSaveProps({"rooms"});
    network.simTime = 3.0;
    frame.flowBegin();
    network.simTime = 4.0;

    frame.flowEnd();

    EXPECT_EQ(sent().getResType(), &house);
    EXPECT_EQ(sent().getInstanceName(), "House_1");
    EXPECT_EQ(sent().getResNum(), 1);
    EXPECT_EQ(sent().getBirthTime(), 4.0);
    EXPECT_EQ(sent().props, (std::map<std::string, double>{{"rooms", 0.0}}));
}

TEST_F(cAssemblerTest, aBurstInWhichNothingArrivesSendsAnEmptyCompound) {
    sendBurst(frame, {instanceOf(plank)});
    sendBurst(frame, {});

    EXPECT_EQ(first.received.size(), 2U);
    EXPECT_TRUE(sent(1).contents.empty());
}

TEST_F(cAssemblerTest, twoBurstsSendTheSameObjectWithTheNewPartsOnly) {
    const auto later = instanceOf(plank);
    network.simTime = 1.0;
    sendBurst(frame, {instanceOf(plank), amountOf(nails, 2.0)});
    network.simTime = 2.0;
    sendBurst(frame, {later});

    ASSERT_EQ(first.received.size(), 2U);
    EXPECT_EQ(first.received[0], first.received[1]);
    EXPECT_EQ(sent().getInstanceName(), "House_1");
    EXPECT_EQ(sent().getResNum(), 1);
    EXPECT_EQ(sent().getBirthTime(), 1.0);
    ASSERT_EQ(sent().contents.size(), 1U);
    EXPECT_EQ(heldOf(sent().contents, plank), cResList{later});
    EXPECT_EQ(house.instanceCount, 1);
}

TEST_F(cAssemblerTest, aSecondAssemblerBuildsACompoundOfItsOwn) {
    cNodeAuxAssembler& other = network.addAssembler("Other", house);
    network.addLink("M", other, first);

    sendBurst(frame, {});
    sendBurst(other, {});

    EXPECT_NE(first.received[0], first.received[1]);
    EXPECT_EQ(sent(1).getInstanceName(), "House_2");
}

TEST_F(cAssemblerTest, theSentCompoundOutlivesTheHoldingsOfTheAssembler) {
    sendBurst(frame, {instanceOf(plank), amountOf(nails, 1.0)});

    EXPECT_EQ(frame.countOf("Count", &plank), 0.0);
    EXPECT_EQ(frame.countOf("Count", &nails), 0.0);
    EXPECT_EQ(sent().contents.size(), 2U);
}

// ---- the first out-link

TEST_F(cAssemblerTest, neitherTheFlowCodeNorARuleOfTheOutLinkHasASay) {
    network.execute("ONFLOW L1 POST flow;\nONFLOW L2 POST flow;\n");
    for (const cLinkRule& rule : linkRules) l1.setRuleText(rule.rule, "1/0");
    l1.setResType(&nails);

    sendBurst(frame, {instanceOf(plank)});

    EXPECT_EQ(first.received.size(), 1U);
    EXPECT_EQ(std::count(network.messages.begin(), network.messages.end(), "flow "), 0);
}

TEST_F(cAssemblerTest, aNormalBehindTheSecondOutLinkNeverStarts) {
    cNodeActNormal& started = network.addNormal("Started");
    cNodeActNormal& waiting = network.addNormal("Waiting");
    l1.setSuccNode(&started);
    l2.setSuccNode(&waiting);

    sendBurst(frame, {instanceOf(plank)});
    sendBurst(frame, {});

    EXPECT_EQ(started.getStatistics().nextInstance, 2);
    EXPECT_EQ(heldOf(started.findInstance(0)->getResources(), house).size(), 1U);
    EXPECT_EQ(waiting.getStatistics().nextInstance, 0);
}

TEST_F(cAssemblerTest, withoutAnOutLinkTheBurstEndsWithoutATrace) {
    network.elements.erase("L1");
    network.elements.erase("L2");

    EXPECT_NO_THROW(sendBurst(frame, {instanceOf(plank)}));
    EXPECT_EQ(frame.countOf("Count", &plank), 0.0);
}

TEST_F(cAssemblerTest, anAssemblerThatLeadsToItselfKeepsItsBurstOpenAndFailsAtTheSettling) {
    network.addLink("Again", frame, frame);

    frame.flowBegin();
    frame.receive(*instanceOf(plank));
    frame.flowEnd();
    const cException failure = failureOf([&] { frame.flowSettle(); });

    EXPECT_TRUE(first.received.empty());
    EXPECT_EQ(frame.countOf("Count", &plank), 1.0);
    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Endless flow through link \"Again\".");
}

// ---- the stack of resources in hand

TEST_F(cAssemblerTest, theFirstBurstLeavesTheStackAsItWas) {
    const auto below = instanceOf(plank);
    network.symbols->pushResource(below.get());

    sendBurst(frame, {});

    EXPECT_EQ(network.resourceInHand(), below.get());
}

TEST_F(cAssemblerTest, fromTheSecondBurstOnWhatStoodOnTopIsTakenOff) {
    sendBurst(frame, {});
    const auto below = instanceOf(plank);
    const auto top = instanceOf(plank);
    network.symbols->pushResource(below.get());
    network.symbols->pushResource(top.get());

    sendBurst(frame, {});
    const cResChar* afterSecond = network.resourceInHand();
    sendBurst(frame, {});
    const bool emptyAfterThird = network.symbols->getResourceStack().empty();
    sendBurst(frame, {});

    EXPECT_EQ(afterSecond, below.get());
    EXPECT_TRUE(emptyAfterThird);
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cAssemblerTest, theReceiverHasNothingInHand) {
    cNodeQueue& yard = network.addQueue("Yard", house);
    l1.setSuccNode(&yard);
    network.execute("ONENTRY Yard POST in;\n");
    std::vector<std::size_t> onStack;
    network.onMessage = [&](const std::string& text) {
        if (text == "in ") onStack.push_back(network.symbols->getResourceStack().size());
    };

    sendBurst(frame, {});
    sendBurst(frame, {});

    EXPECT_EQ(onStack, (std::vector<std::size_t>{1, 1}));  // the queue's own
}

// ---- a type that can't be built

class cAssembledTypeTest : public cAssemblerTest {
protected:
    void expectNoCompoundType() {
        frame.flowBegin();
        frame.receive(*instanceOf(plank));

        const cException failure = failureOf([&] { frame.flowEnd(); });

        EXPECT_EQ(failure.code, 2);
        EXPECT_EQ(failure.message, "Assembler \"Frame\" has no compound resource type.");
        EXPECT_TRUE(first.received.empty());
        EXPECT_EQ(frame.countOf("Count", &plank), 1.0);
        EXPECT_TRUE(network.symbols->getResourceStack().empty());
    }
};

TEST_F(cAssembledTypeTest, noneFailsAtTheEndOfABurst) {
    frame.setResType(nullptr);

    expectNoCompoundType();
}

TEST_F(cAssembledTypeTest, oneOfAmountsFailsAtTheEndOfABurst) {
    frame.setResType(&nails);

    expectNoCompoundType();
}

TEST_F(cAssembledTypeTest, oneOfInstancesWithoutPartsFailsAtTheEndOfABurst) {
    network.resourceTypes["Brick"] = std::make_unique<cResTypeChar>("Brick");
    frame.setResType(network.findResourceType("Brick"));

    expectNoCompoundType();
}

TEST_F(cAssembledTypeTest, aLaterChangeLeavesTheCompoundAsItWasBuilt) {
    sendBurst(frame, {});
    frame.setResType(nullptr);

    sendBurst(frame, {});

    ASSERT_EQ(first.received.size(), 2U);
    EXPECT_EQ(sent(1).getResType(), &house);
}

// ---- fed by activities

TEST_F(cAssemblerTest, twoLinksOfOneActivityGiveOneBurst) {
    network.addLink("In1", work, frame, plank);
    network.addLink("In2", work, frame, nails).setRuleText(eLinkRule::releaseAmt, "3");

    fire({instanceOf(plank), instanceOf(plank)});

    ASSERT_EQ(first.received.size(), 1U);
    EXPECT_EQ(heldOf(sent().contents, plank).size(), 2U);
    EXPECT_EQ(amountHeld(sent().contents, nails), 3.0);
}

TEST_F(cAssemblerTest, activitiesThatEndAtDifferentTimesGiveABurstEach) {
    cNodeActCombi& other = network.addCombi("Other");
    network.addLink("In1", work, frame, plank);
    network.addLink("In2", other, frame, plank);
    work.startInstance(holdingsOf({instanceOf(plank)}), 0.0, 1.0);
    other.startInstance(holdingsOf({instanceOf(plank)}), 0.0, 2.0);

    network.advanceClock();
    const std::size_t afterFirst = first.received.size();
    network.advanceClock();

    EXPECT_EQ(afterFirst, 1U);
    EXPECT_EQ(first.received.size(), 2U);
    EXPECT_EQ(sent().contents.size(), 1U);
}

TEST_F(cAssemblerTest, anActivityThatBringsNothingStillGivesABurst) {
    network.addLink("In1", work, frame, plank);

    fire({});

    ASSERT_EQ(first.received.size(), 1U);
    EXPECT_TRUE(sent().contents.empty());
}

}  // namespace
