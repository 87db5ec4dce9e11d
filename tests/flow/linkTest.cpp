#include "flow/link.h"

#include "support/burst.h"
#include "support/failureOf.h"
#include "support/recordingReceiver.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

namespace {

using cTexts = std::vector<std::string>;

/// A queue of soil with a draw link to a Combi, and a release link from the Combi to a node that records.
class cLinkTest : public ::testing::Test {
protected:
    void SetUp() override { release.setResType(&soil); }

    cWatchedNetwork network;
    cResType& soil = network.addGenericType("Soil");
    cNodeQueue& pile = network.addQueue("Pile", soil);
    cNodeActCombi& dig = network.addCombi("Dig");
    cRecordingReceiver sink{"Sink", network.messages};
    cLink& draw = network.addLink("Draw", pile, dig);
    cLink& release = network.addLink("Release", dig, sink);
};

// ---- a new link

struct cRuleCase {
    eLinkRule rule;
    const char* text;
};

class cNewRuleTest : public cLinkTest, public ::testing::WithParamInterface<cRuleCase> {};

TEST_P(cNewRuleTest, hasItsText) { EXPECT_EQ(cLink().getRuleText(GetParam().rule), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(rules, cNewRuleTest,
                         ::testing::Values(cRuleCase{eLinkRule::enough, "1"}, cRuleCase{eLinkRule::drawUntil, "nDraws"},
                                           cRuleCase{eLinkRule::drawAmt, "1"}, cRuleCase{eLinkRule::drawOrder, "1"},
                                           cRuleCase{eLinkRule::drawWhere, "1"}, cRuleCase{eLinkRule::releaseAmt, "1"},
                                           cRuleCase{eLinkRule::releaseUntil, "0"},
                                           cRuleCase{eLinkRule::releaseOrder, "1"},
                                           cRuleCase{eLinkRule::releaseWhere, "1"},
                                           cRuleCase{eLinkRule::strength, "1"}));

TEST_F(cLinkTest, rulesHaveTheirModelKeysInTheOrderOfModelFiles) {
    cTexts keys;
    for (const cLinkRule& rule : linkRules) keys.emplace_back(rule.modelKey);

    EXPECT_EQ(keys, (cTexts{"ENOUGH", "DRAWUNTIL", "DRAWAMT", "DRAWORDER", "DRAWWHERE", "RELEASEAMT", "RELEASEUNTIL",
                            "RELEASEORDER", "RELEASEWHERE", "STRENGTH"}));
}

TEST_F(cLinkTest, aNewLinkHasNoEndsNoTypeAndNoKind) {
    const cLink link;

    EXPECT_EQ(link.getPredNode(), nullptr);
    EXPECT_EQ(link.getSuccNode(), nullptr);
    EXPECT_EQ(link.getResType(), nullptr);
    EXPECT_EQ(link.getKind(), "");
}

TEST_F(cLinkTest, aLinkTakesTheNameGiven) { EXPECT_EQ(cLink("Haul").getName(), "Haul"); }

TEST_F(cLinkTest, aNameThatIsRefusedLeavesTheLinkWithoutOne) {
    EXPECT_EQ(cLink("1st").getName(), "");
    EXPECT_EQ(cLink("Pile").getName(), "");
}

TEST_F(cLinkTest, anEmptyNameAsksForADefaultOneByTheCounterThen) {
    cNetworkElement::setElementCounter(7);

    const cLink link;

    EXPECT_EQ(link.getName(), "Link8");
    EXPECT_EQ(link.getElementId(), 7);
}

TEST_F(cLinkTest, aDefaultNameThatIsTakenGivesWayToTheNextNumber) {
    cNetworkElement::setElementCounter(7);
    network.elements["Link8"];
    network.elements["Link9"];

    const cLink link;

    EXPECT_EQ(link.getName(), "Link10");
    EXPECT_EQ(cNetworkElement::getElementCounter(), 10);
}

TEST_F(cLinkTest, aLinkKeepsItsNumberWhenItsDefaultNameIsTaken) {
    cNetworkElement::setElementCounter(7);
    network.elements["Link8"];

    const cLink link;

    EXPECT_EQ(link.getElementId(), 7);
}

// ---- kind

struct cKindCase {
    eLinkKind kind;
    const char* word;
};

class cKindWordTest : public cLinkTest, public ::testing::WithParamInterface<cKindCase> {};

TEST_P(cKindWordTest, tellsTheKind) {
    cLink link;

    link.setLinkKind(GetParam().kind);

    EXPECT_EQ(link.getKind(), GetParam().word);
    EXPECT_EQ(link.getLinkKind(), GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(kinds, cKindWordTest,
                         ::testing::Values(cKindCase{kindDraw, "DRAWLINK"}, cKindCase{kindRelease, "RELEASELINK"},
                                           cKindCase{kindFlow, "FLOWLINK"}, cKindCase{kindTypeMismatch, ""},
                                           cKindCase{kindIncomplete, ""}));

TEST(cLinkKindTest, kindsHaveTheirNumbers) {
    EXPECT_EQ(kindDraw, 0);
    EXPECT_EQ(kindRelease, 1);
    EXPECT_EQ(kindFlow, 2);
    EXPECT_EQ(kindTypeMismatch, 3);
    EXPECT_EQ(kindRefused, 7);
    EXPECT_EQ(kindIncomplete, 8);
}

TEST_F(cLinkTest, theKindsOfDrawAndReleaseRenewATextEach) {
    cLink link;
    for (const cLinkRule& rule : linkRules) link.setRuleText(rule.rule, "7");

    link.setLinkKind(kindFlow);
    link.setLinkKind(kindIncomplete);
    EXPECT_EQ(link.getRuleText(eLinkRule::enough), "7");
    EXPECT_EQ(link.getRuleText(eLinkRule::releaseAmt), "7");

    link.setLinkKind(kindDraw);
    EXPECT_EQ(link.getRuleText(eLinkRule::enough), "PredNode.CurCount");
    EXPECT_EQ(link.getRuleText(eLinkRule::releaseAmt), "7");

    link.setLinkKind(kindRelease);
    EXPECT_EQ(link.getRuleText(eLinkRule::enough), "PredNode.CurCount");
    EXPECT_EQ(link.getRuleText(eLinkRule::releaseAmt), "1");
    EXPECT_EQ(link.getRuleText(eLinkRule::drawAmt), "7");
}

// ---- rules

TEST_F(cLinkTest, aRuleTextReplacesTheOneBefore) {
    draw.setRuleText(eLinkRule::enough, "5");

    EXPECT_EQ(draw.getRuleText(eLinkRule::enough), "5");
    EXPECT_EQ(draw.evaluateEnough(), 5.0);
}

TEST_F(cLinkTest, aRuleTextIsNotTried) {
    const std::uint32_t state = network.symbols->randomStreams().first().getState();

    draw.setRuleText(eLinkRule::drawAmt, "Rnd()");
    draw.setRuleText(eLinkRule::drawAmt, "1/0");

    EXPECT_EQ(network.symbols->randomStreams().first().getState(), state);
}

TEST_F(cLinkTest, aRuleTextThatIsNoFormulaFailsAndStays) {
    const cException failure = failureOf([&] { draw.setRuleText(eLinkRule::drawAmt, "1+2)"); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.expressionText, "1+2)");
    EXPECT_EQ(draw.getRuleText(eLinkRule::drawAmt), "1+2)");
}

TEST_F(cLinkTest, rulesMeanTheirOwnLink) {
    pile.receive(*makeCounted<cResGen>(&soil, 3.0));
    cNodeQueue& heap = network.addQueue("Heap", soil);
    const cLink& other = network.addLink("Other", heap, dig);

    EXPECT_EQ(draw.evaluateEnough(), 3.0);
    EXPECT_EQ(other.evaluateEnough(), 0.0);
}

TEST_F(cLinkTest, rulesOfALinkThatWasRenamedMeanItStill) {
    pile.receive(*makeCounted<cResGen>(&soil, 3.0));

    draw.setName("Renamed");

    EXPECT_EQ(draw.evaluateEnough(), 3.0);
}

TEST_F(cLinkTest, rulesReadKeywordsOfThePredecessorThatNoPathReaches) {
    pile.receive(*makeCounted<cResGen>(&soil, 3.0));
    draw.setRuleText(eLinkRule::enough, "PredNode.MaxCont");

    EXPECT_EQ(draw.evaluateEnough(), 3.0);
}

// ---- keywords

TEST_F(cLinkTest, thereAreNoDrawsOutsideADraw) { EXPECT_EQ(draw.getAttribute("nDraws"), 0.0); }

class cLinkKeywordTest : public cLinkTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cLinkKeywordTest, isUnknown) {
    const cException failure = failureOf([&] { draw.getAttribute(GetParam()); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Invalid keyword");
    EXPECT_EQ(failure.location, "In linkDraw");  // the name follows without a blank
    EXPECT_EQ(failure.expressionText, "");
}

INSTANTIATE_TEST_SUITE_P(unknown, cLinkKeywordTest, ::testing::Values("", "ndraws", "NDraws", "CurCount"));

// ---- ONFLOW

TEST_F(cLinkTest, flowCodeRunsInOrder) {
    draw.addOnFlowStatement("POST one");
    draw.addOnFlowStatement("POST two");

    draw.runOnFlowStatements();

    EXPECT_EQ(network.messages, (cTexts{"one ", "two "}));
}

TEST_F(cLinkTest, flowCodeThatIsAddedMeanwhileRunsToo) {
    draw.addOnFlowStatement("POST one");
    network.onMessage = [&](const std::string& text) {
        if (text == "one ") draw.addOnFlowStatement("POST two");
    };

    draw.runOnFlowStatements();

    EXPECT_EQ(network.messages, (cTexts{"one ", "two "}));
}

TEST_F(cLinkTest, resetForgetsTheFlowCodeAndKeepsTheRules) {
    draw.addOnFlowStatement("POST one");
    draw.setRuleText(eLinkRule::drawAmt, "5");

    draw.resetElement();
    draw.runOnFlowStatements();

    EXPECT_TRUE(network.messages.empty());
    EXPECT_EQ(draw.getRuleText(eLinkRule::drawAmt), "5");
    EXPECT_EQ(draw.getPredNode(), &pile);
}

TEST_F(cLinkTest, flowCodeRunsInTheFirstReplicationOnly) {
    pile.setInitialContentText("2");
    network.elements.erase("Release");

    network.run("MULTISIM 3;\nONFLOW Draw POST flow;\n");

    EXPECT_EQ(network.messages, (cTexts{"flow ", "flow "}));
}

// ---- the successor

TEST_F(cLinkTest, theSuccessorIsToldOfAFlow) {
    release.forSuccessor<&cNodeReceiver::flowBegin>();
    release.forSuccessor<&cNodeReceiver::flowEnd>();
    release.forSuccessor<&cNodeReceiver::flowSettle>();

    EXPECT_EQ(network.messages, (cTexts{"flowBegin Sink", "flowEnd Sink", "flowSettle Sink"}));
}

TEST_F(cLinkTest, aResourceIsPassedOnAsItIsAndWithoutTheFlowCode) {
    const cResPtr resource = amountOf(soil, 3.0);
    release.addOnFlowStatement("POST flow");

    release.passOn(*resource);

    EXPECT_EQ(sink.received, cResList{resource});
    EXPECT_EQ(network.messages, cTexts{"receive Sink"});
}

TEST_F(cLinkTest, allSuccessorsAreToldInTheOrderOfTheNamesOfTheLinks) {
    cRecordingReceiver other{"Other", network.messages};
    network.addLink("Link9", dig, sink);
    network.addLink("Link10", dig, other);

    tellSuccessors<&cNodeReceiver::flowEnd>(dig);

    EXPECT_EQ(network.messages, (cTexts{"flowEnd Other", "flowEnd Sink", "flowEnd Sink"}));  // the last by "Release"
}

TEST_F(cLinkTest, aNodeWithoutOutLinksHasNobodyToTell) {
    network.elements.erase("Release");

    tellSuccessors<&cNodeReceiver::flowBegin>(dig);

    EXPECT_TRUE(network.messages.empty());
}

TEST_F(cLinkTest, aSuccessorThatCannotReceiveIsAFailure) {
    const cException told = failureOf([&] { draw.forSuccessor<&cNodeReceiver::flowBegin>(); });
    const cException passed = failureOf([&] { draw.passOn(*amountOf(soil, 1.0)); });

    EXPECT_EQ(told.code, 2);
    EXPECT_EQ(told.message, "Link \"Draw\" leads to no node that can receive.");
    EXPECT_EQ(passed.code, 2);
    EXPECT_EQ(passed.message, told.message);
}

TEST_F(cLinkTest, aMissingSuccessorIsAFailure) {
    release.setSuccNode(nullptr);

    EXPECT_EQ(failureOf([&] { release.forSuccessor<&cNodeReceiver::flowEnd>(); }).code, 2);
    EXPECT_EQ(failureOf([&] { release.passOn(*amountOf(soil, 1.0)); }).code, 2);
}

TEST_F(cLinkTest, everyFlowLetsTheHostBreathe) {
    for (int i = 0; i < 5000; ++i) release.forSuccessor<&cNodeReceiver::flowEnd>();
    const int afterTelling = network.hostEvents;
    for (int i = 0; i < 5000; ++i) release.passOn(*amountOf(soil, 1.0));

    EXPECT_EQ(afterTelling, 1);  // once in 4096
    EXPECT_EQ(network.hostEvents, 2);
}

// ---- flows without end

/// Hands all that comes to the next link of a row, and counts what is under way.
class cRelay : public cRecordingReceiver {
public:
    using cRecordingReceiver::cRecordingReceiver;

    void flowBegin() override {
        ++flows;
        if (next != nullptr) next->forSuccessor<&cNodeReceiver::flowBegin>();
    }
    void receive(cRes& resource) override {
        ++flows;
        if (next != nullptr) next->passOn(resource);
    }

    cLink* next = nullptr;
    int flows = 0;
};

/// A row of links, each with a relay behind it: L0, L1 and so on.
class cFlowRowTest : public cLinkTest {
protected:
    /// Draws a row and gives its first link.
    cLink& row(int length) {
        for (int i = 0; i < length; ++i) {
            relays.push_back(std::make_unique<cRelay>("Relay" + std::to_string(i), network.messages));
            cNode& from = i == 0 ? static_cast<cNode&>(dig) : *relays[relays.size() - 2];
            cLink& link = network.addLink('L' + std::to_string(i), from, *relays.back());
            if (i > 0) relays[relays.size() - 2]->next = &link;
        }
        return *network.findElement<cLink>("L0");
    }

    std::vector<std::unique_ptr<cRelay>> relays;
};

TEST_F(cFlowRowTest, aThousandLinksInARowAreNotTooMany) {
    cLink& first = row(1000);

    first.forSuccessor<&cNodeReceiver::flowBegin>();
    first.passOn(*amountOf(soil, 1.0));

    EXPECT_EQ(relays.back()->flows, 2);
}

TEST_F(cFlowRowTest, theLinkBehindAThousandFails) {
    cLink& first = row(1001);

    const cException told = failureOf([&] { first.forSuccessor<&cNodeReceiver::flowBegin>(); });
    const cException passed = failureOf([&] { first.passOn(*amountOf(soil, 1.0)); });

    EXPECT_EQ(told.code, 2);
    EXPECT_EQ(told.message, "Endless flow through link \"L1000\".");
    EXPECT_EQ(passed.code, 2);
    EXPECT_EQ(passed.message, told.message);
    EXPECT_EQ(relays.back()->flows, 0);
}

TEST_F(cFlowRowTest, aCircleFailsAndFlowsCanGoOnAfterwards) {
    cLink& first = row(2);
    relays.back()->next = &first;

    const cException failure = failureOf([&] { first.forSuccessor<&cNodeReceiver::flowBegin>(); });
    relays.back()->next = nullptr;
    first.forSuccessor<&cNodeReceiver::flowBegin>();

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Endless flow through link \"L0\".");
    EXPECT_EQ(relays.front()->flows, 501);
}

}  // namespace
