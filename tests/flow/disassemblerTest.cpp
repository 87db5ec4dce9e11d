#include "flow/disassembler.h"

#include "support/burst.h"
#include "support/failureOf.h"
#include "support/holdings.h"
#include "support/recordingReceiver.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using cTexts = std::vector<std::string>;

/// A Disassembler of houses, Strip. Planks leave it by way of L1 to First, nails by way of L2 to Second: nodes that
/// record.
class cDisassemblerTest : public ::testing::Test {
protected:
    void SetUp() override { network.simState = 1; }

    cShared<cResCompound> houseOf(const cResList& parts) {
        auto made = instanceOf(house);
        made->contents = holdingsOf(parts);
        return made;
    }
    double held(const cResType& type) const { return strip.countOf("Count", &type); }
    static std::vector<double> amountsOf(const cRecordingReceiver& node) {
        std::vector<double> amounts;
        for (const cResPtr& resource : node.received) amounts.push_back(resource->quantity());
        return amounts;
    }

    cWatchedNetwork network;
    cResTypeGen& nails = network.addGenericType("Nails");
    cResTypeCompound& plank = network.addCompoundType("Plank");
    cResTypeCompound& house = network.addCompoundType("House");
    cRecordingReceiver first{"First", network.messages};
    cRecordingReceiver second{"Second", network.messages};
    cNodeAuxDisAssembler& strip = network.addDisassembler("Strip", house);
    cLink& l1 = network.addLink("L1", strip, first, plank);
    cLink& l2 = network.addLink("L2", strip, second, nails);
};

TEST_F(cDisassemblerTest, theKindWordIsDisassembler) { EXPECT_EQ(strip.getKind(), "DISASSEMBLER"); }

TEST_F(cDisassemblerTest, noKeywordIsAnswered) {
    const cException failure = failureOf([&] { strip.getAttribute("InContext"); });

    EXPECT_EQ(failure.code, 3);
    EXPECT_EQ(failure.message + failure.location + failure.expressionText, "");
}

TEST_F(cDisassemblerTest, theDefaultNameHasTheNumberOfTheCounter) {
    cNetworkElement::setElementCounter(998);

    const cNodeAuxDisAssembler other;

    EXPECT_EQ(other.getName(), "Disassembler999");
    EXPECT_EQ(other.getElementId(), 998);
}

TEST_F(cDisassemblerTest, aDefaultNameIsTriedOnceAndStaysEmptyOnAClash) {
    cNetworkElement::setElementCounter(7);
    network.elements["Disassembler8"];

    const cNodeAuxDisAssembler other;

    EXPECT_EQ(other.getName(), "");
    EXPECT_EQ(cNetworkElement::getElementCounter(), 8);
}

TEST_F(cDisassemblerTest, aDefaultNameThatIsTooLongLeavesTheElementWithoutOne) {
    cNetworkElement::setElementCounter(999);

    EXPECT_EQ(cNodeAuxDisAssembler().getName(), "");
}

// ---- the four operations

TEST_F(cDisassemblerTest, everyOperationReachesAllSuccessorsByName) {
    sendBurst(strip, {houseOf({amountOf(nails, 2.0), instanceOf(plank)})});

    EXPECT_EQ(network.messages, (cTexts{"flowBegin First", "flowBegin Second", "receive First", "receive Second",
                                        "flowEnd First", "flowEnd Second", "flowSettle First", "flowSettle Second"}));
}

TEST_F(cDisassemblerTest, onlyTheFirstOpenFlowAndTheLastToCloseAreToldButEverySettling) {
    network.elements.erase("L2");

    strip.flowBegin();
    strip.flowBegin();
    strip.flowEnd();
    const cTexts whileOpen = network.messages;
    strip.flowEnd();
    strip.flowSettle();
    strip.flowSettle();

    EXPECT_EQ(whileOpen, cTexts{"flowBegin First"});
    EXPECT_EQ(network.messages, (cTexts{"flowBegin First", "flowEnd First", "flowSettle First", "flowSettle First"}));
}

TEST_F(cDisassemblerTest, theMarkStandsWhileACompoundIsTakenApartAndNoLonger) {
    network.execute("ONFLOW L1 POST flow;\n");
    bool marked = false;
    network.onMessage = [&](const std::string&) { marked = strip.activeMark; };

    strip.flowBegin();
    const bool afterBegin = strip.activeMark;
    strip.receive(*houseOf({instanceOf(plank)}));

    EXPECT_FALSE(afterBegin);
    EXPECT_TRUE(marked);
    EXPECT_FALSE(strip.activeMark);
}

TEST_F(cDisassemblerTest, aResetLeavesAnOpenBurstAsItIs) {
    strip.flowBegin();
    network.messages.clear();

    strip.resetElement();
    strip.flowEnd();

    EXPECT_EQ(network.messages, (cTexts{"flowEnd First", "flowEnd Second"}));
}

// ---- taking apart

TEST_F(cDisassemblerTest, eachLinkTakesThePartsOfItsType) {
    const cResList planks{instanceOf(plank), instanceOf(plank)};

    sendBurst(strip, {houseOf({planks[0], amountOf(nails, 2.0), planks[1]})});

    EXPECT_EQ(first.received, planks);
    EXPECT_EQ(amountsOf(second), std::vector<double>{1.0});  // as the default rule of release links says
}

TEST_F(cDisassemblerTest, theRulesOfTheLinksDecide) {
    const auto wanted = instanceOf(plank);
    l1.setRuleText(eLinkRule::releaseWhere, "GET(\"where\")");
    network.onGet = [&](const std::string&) { return network.resourceInHand() == wanted.get() ? 1.0 : 0.0; };
    l2.setRuleText(eLinkRule::releaseAmt, "PredNode.Nails.Count/4");

    sendBurst(strip, {houseOf({instanceOf(plank), wanted, amountOf(nails, 2.0)})});

    EXPECT_EQ(first.received, cResList{wanted});
    EXPECT_EQ(amountsOf(second), std::vector<double>{0.5});
}

TEST_F(cDisassemblerTest, flowCodeHasThePartInHandAndForAmountsTheCompound) {
    const auto part = instanceOf(plank);
    const auto whole = houseOf({part, amountOf(nails, 2.0)});
    network.execute("ONFLOW L1 POST flow;\nONFLOW L2 POST flow;\n");
    std::vector<const cRes*> inHand;
    network.onMessage = [&](const std::string& text) {
        if (text == "flow ") inHand.push_back(network.resourceInHand());
    };

    sendBurst(strip, {whole});

    EXPECT_EQ(inHand, (std::vector<const cRes*>{part.get(), whole.get()}));
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cDisassemblerTest, anAmountThatIsAskedForWhollyIsGoneForTheNextLinkWhichSendsItsOwnAllTheSame) {
    network.addLink("L3", strip, second, nails);
    l2.setRuleText(eLinkRule::releaseAmt, "2");

    sendBurst(strip, {houseOf({amountOf(nails, 2.0)})});

    EXPECT_EQ(amountsOf(second), (std::vector<double>{2.0, 1.0}));
}

TEST_F(cDisassemblerTest, moreThanThePartIsSentAsAskedFor) {
    l2.setRuleText(eLinkRule::releaseAmt, "5");

    sendBurst(strip, {houseOf({amountOf(nails, 2.0)})});

    EXPECT_EQ(amountsOf(second), std::vector<double>{5.0});
    EXPECT_EQ(held(nails), 0.0);
}

TEST_F(cDisassemblerTest, anAmountIsSentAlsoOutOfACompoundWithoutIt) {
    sendBurst(strip, {houseOf({})});

    EXPECT_TRUE(first.received.empty());
    EXPECT_EQ(amountsOf(second), std::vector<double>{1.0});
}

TEST_F(cDisassemblerTest, aLinkSeesWhatTheLinksBeforeItLeft) {
    network.addLink("L3", strip, second, nails).setRuleText(eLinkRule::releaseAmt, "PredNode.Nails.Count");
    l2.setRuleText(eLinkRule::releaseAmt, "0.5");

    sendBurst(strip, {houseOf({amountOf(nails, 2.0)})});

    EXPECT_EQ(amountsOf(second), (std::vector<double>{0.5, 1.5}));
}

TEST_F(cDisassemblerTest, partsThatNoLinkTookAreNotHeldAndStayInTheCompoundAlone) {
    const cResPtr part = instanceOf(plank);
    l1.setRuleText(eLinkRule::releaseUntil, "1");
    auto whole = houseOf({part});

    sendBurst(strip, {whole});

    EXPECT_EQ(held(plank), 0.0);
    EXPECT_EQ(part.holderCount(), 2U);
    whole = nullptr;
    EXPECT_EQ(part.holderCount(), 1U);
}

TEST_F(cDisassemblerTest, theCompoundKeepsItsContentsAndGivesThemOutAgain) {
    const auto part = instanceOf(plank);
    const auto whole = houseOf({part, amountOf(nails, 2.0)});

    sendBurst(strip, {whole});
    const std::size_t parts = whole->contents.size();
    sendBurst(strip, {whole});

    EXPECT_EQ(parts, 2U);
    EXPECT_EQ(first.received, (cResList{part, part}));
}

TEST_F(cDisassemblerTest, anAmountThatWasLoweredIsLoweredInTheCompoundToo) {
    const auto whole = houseOf({amountOf(nails, 2.0)});

    sendBurst(strip, {whole});

    EXPECT_EQ(amountHeld(whole->contents, nails), 1.0);
}

TEST_F(cDisassemblerTest, whatIsLeftOfAnAmountIsWhatASecondTakingApartFinds) {
    const auto whole = houseOf({amountOf(nails, 2.0)});
    l2.setRuleText(eLinkRule::releaseAmt, "PredNode.Nails.Count/4");

    for (int i = 0; i < 3; ++i) sendBurst(strip, {whole});

    EXPECT_EQ(amountsOf(second), (std::vector<double>{0.5, 0.375, 0.28125}));
    EXPECT_EQ(amountHeld(whole->contents, nails), 2.0 - 0.5 - 0.375 - 0.28125);
}

TEST_F(cDisassemblerTest, anAmountThatLeftWhollyStaysInTheCompoundAndLeavesAgain) {
    const auto whole = houseOf({amountOf(nails, 2.0)});
    l2.setRuleText(eLinkRule::releaseAmt, "PredNode.Nails.Count");

    for (int i = 0; i < 2; ++i) sendBurst(strip, {whole});

    EXPECT_EQ(amountsOf(second), (std::vector<double>{2.0, 2.0}));
    EXPECT_EQ(amountHeld(whole->contents, nails), 2.0);
}

TEST_F(cDisassemblerTest, anAmountThatTwoLinksTakeInPartsStaysAsTheLastPartialTakingLeftIt) {
    network.addLink("L3", strip, second, nails).setRuleText(eLinkRule::releaseAmt, "PredNode.Nails.Count");
    l2.setRuleText(eLinkRule::releaseAmt, "0.5");
    const auto whole = houseOf({amountOf(nails, 2.0)});

    for (int i = 0; i < 2; ++i) sendBurst(strip, {whole});

    EXPECT_EQ(amountsOf(second), (std::vector<double>{0.5, 1.5, 0.5, 1.0}));
    EXPECT_EQ(amountHeld(whole->contents, nails), 1.0);
}

TEST_F(cDisassemblerTest, whatIsLeftOfAnAmountIsLeftOfItInItsOwnCompoundAlone) {
    const auto one = houseOf({amountOf(nails, 2.0)});
    const auto other = houseOf({amountOf(nails, 5.0)});

    sendBurst(strip, {one, other, one});

    EXPECT_EQ(amountHeld(one->contents, nails), 1.0);  // all that there was left the second time
    EXPECT_EQ(amountHeld(other->contents, nails), 4.0);
}

TEST_F(cDisassemblerTest, severalCompoundsOfABurstAreTakenApartOneByOne) {
    const cResList planks{instanceOf(plank), instanceOf(plank)};
    network.elements.erase("L2");

    sendBurst(strip, {houseOf({planks[0]}), houseOf({planks[1]})});

    EXPECT_EQ(first.received, planks);
    EXPECT_EQ(network.messages,
              (cTexts{"flowBegin First", "receive First", "receive First", "flowEnd First", "flowSettle First"}));
}

TEST_F(cDisassemblerTest, aCompoundOfAnotherTypeIsTakenApartToo) {
    const auto part = instanceOf(plank);
    const auto box = instanceOf(network.addCompoundType("Box"));
    box->contents = holdingsOf({part});

    sendBurst(strip, {box});

    EXPECT_EQ(first.received, cResList{part});
}

TEST_F(cDisassemblerTest, whatIsNoCompoundDisappears) {
    network.resourceTypes["Brick"] = std::make_unique<cResTypeChar>("Brick");
    const cResPtr brick = makeCounted<cResChar>(dynamic_cast<cResTypeChar*>(network.findResourceType("Brick")));
    strip.flowBegin();
    network.messages.clear();

    strip.receive(*amountOf(nails, 2.0));
    strip.receive(*brick);

    EXPECT_TRUE(network.messages.empty());
    EXPECT_EQ(brick.holderCount(), 1U);
    EXPECT_EQ(held(nails), 0.0);
}

TEST_F(cDisassemblerTest, withoutAnOutLinkACompoundIsTakenApartForNobody) {
    network.elements.erase("L1");
    network.elements.erase("L2");
    const auto whole = houseOf({instanceOf(plank)});

    EXPECT_NO_THROW(sendBurst(strip, {whole}));
    EXPECT_EQ(held(plank), 0.0);
    EXPECT_EQ(whole->contents.size(), 1U);
}

TEST_F(cDisassemblerTest, aFailingRulePassesUnchangedAndTheStackIsInStep) {
    l1.setRuleText(eLinkRule::releaseWhere, "1/0");
    strip.flowBegin();

    const cException failure = failureOf([&] { strip.receive(*houseOf({instanceOf(plank)})); });

    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(failure.expressionText, "1/0");
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cDisassemblerTest, afterAFailureTheNextCompoundIsTakenApartWithoutTheRestOfTheLast) {
    l1.setRuleText(eLinkRule::releaseWhere, "1/0");
    strip.flowBegin();
    failureOf([&] { strip.receive(*houseOf({instanceOf(plank)})); });
    l1.setRuleText(eLinkRule::releaseWhere, "1");
    const auto part = instanceOf(plank);

    strip.receive(*houseOf({part}));

    EXPECT_EQ(first.received, cResList{part});
}

// ---- together with an Assembler

/// Frame, an Assembler of houses, behind an activity Work.
class cAssemblyRoundTest : public cDisassemblerTest {
protected:
    void SetUp() override {
        cDisassemblerTest::SetUp();
        network.addLink("In", work, frame, plank);
    }
    void fire(const cResList& planks) {
        work.startInstance(holdingsOf(planks), network.simTime, 0.0);
        network.advanceClock();
    }

    cNodeActCombi& work = network.addCombi("Work");
    cNodeAuxAssembler& frame = network.addAssembler("Frame", house);
};

TEST_F(cAssemblyRoundTest, whatAnAssemblerPutTogetherIsTakenApartWithinTheSameFiring) {
    network.elements.erase("L2");
    network.addLink("Over", frame, strip);
    const cResList planks{instanceOf(plank), instanceOf(plank)};

    fire(planks);

    EXPECT_EQ(first.received, planks);
    EXPECT_EQ(network.messages,
              (cTexts{"flowBegin First", "receive First", "receive First", "flowEnd First", "flowSettle First"}));
}

TEST_F(cAssemblyRoundTest, aPartCanComeBackInALaterBurst) {
    network.elements.erase("L2");
    network.addLink("Over", frame, strip);
    const auto part = instanceOf(plank);

    fire({part});
    fire({part});

    EXPECT_EQ(first.received, (cResList{part, part}));
}

TEST_F(cAssemblyRoundTest, aCircleKeepsItsBurstOpenAndFailsAtTheSettling) {
    network.addLink("Over", frame, strip);
    network.addLink("Back", strip, frame, plank);
    network.messages.clear();

    const cException failure = failureOf([&] { fire({instanceOf(plank)}); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_TRUE(failure.message.starts_with("Endless flow through link \"")) << failure.message;
    EXPECT_EQ(std::count(network.messages.begin(), network.messages.end(), "receive First"), 0);
    EXPECT_EQ(frame.countOf("Count", &plank), 1.0);
}

TEST_F(cAssemblyRoundTest, aDisassemblerThatHandsACompoundToItselfFailsWhenThatIsAmongItsOwnParts) {
    network.addLink("Again", strip, strip, house);
    const auto whole = houseOf({instanceOf(plank)});
    whole->contents.listOf(&house).add(whole);
    strip.flowBegin();

    const cException failure = failureOf([&] { strip.receive(*whole); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Endless flow through link \"Again\".");
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
    whole->contents.clear();
}

TEST_F(cAssemblyRoundTest, aCompoundAmongThePartsIsTakenApartInTheMidstAndLeavesNothingOfTheOuterOne) {
    network.elements.erase("L2");
    network.addLink("Again", strip, strip, house);
    const auto part = instanceOf(plank);
    strip.flowBegin();

    strip.receive(*houseOf({houseOf({part}), instanceOf(plank)}));

    ASSERT_EQ(first.received.size(), 1U);
    EXPECT_EQ(first.received[0], part);
}

}  // namespace
