#include "flow/link.h"

#include "support/failureOf.h"
#include "support/recordingReceiver.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

namespace {

using cTexts = std::vector<std::string>;

/// A Combi with a release link to a node that records. The Combi holds what the test gives it; the link releases soil,
/// or trucks after `releaseTrucks`, and its texts are the defaults.
class cLinkReleaseTest : public ::testing::Test {
protected:
    void SetUp() override { link.setResType(&soil); }

    void hold(double amount) { work.addHolding(*makeCounted<cResGen>(&soil, amount)); }
    void releaseTrucks(int count) {
        link.setResType(&truck);
        for (int i = 0; i < count; ++i) work.addHolding(*makeCounted<cResCompound>(&truck));
    }
    double held(const cResType& type) const { return work.countOf("Count", &type); }
    std::vector<double> receivedAmounts() const {
        std::vector<double> amounts;
        for (const cResPtr& resource : sink.received)
            amounts.push_back(dynamic_cast<const cResGen&>(*resource).getAmount());
        return amounts;
    }
    std::vector<int> receivedTrucks() const {
        std::vector<int> numbers;
        for (const cResPtr& resource : sink.received)
            numbers.push_back(dynamic_cast<const cResChar&>(*resource).getResNum());
        return numbers;
    }

    cWatchedNetwork network;
    cResTypeGen& soil = network.addGenericType("Soil");
    cResTypeCompound& truck = network.addCompoundType("Truck");
    cNodeActCombi& work = network.addCombi("Work");
    cRecordingReceiver sink{"Sink", network.messages};
    cLink& link = network.addLink("L", work, sink);
};

// ---- amounts

struct cReleaseCase {
    const char* amount;
    double sent;
    double left;
};

class cReleasedAmountTest : public cLinkReleaseTest, public ::testing::WithParamInterface<cReleaseCase> {};

TEST_P(cReleasedAmountTest, isSentAsAskedForWhateverIsHeld) {
    hold(4.0);
    link.setRuleText(eLinkRule::releaseAmt, GetParam().amount);

    link.release();

    EXPECT_EQ(receivedAmounts(), std::vector<double>{GetParam().sent});
    EXPECT_EQ(held(soil), GetParam().left);
    EXPECT_EQ(work.getHoldings(&soil).empty(), GetParam().left == 0.0);
}

INSTANTIATE_TEST_SUITE_P(of4, cReleasedAmountTest,
                         ::testing::Values(cReleaseCase{"1", 1.0, 3.0}, cReleaseCase{"4", 4.0, 0.0},
                                           cReleaseCase{"10", 10.0, 0.0}, cReleaseCase{"0", 0.0, 4.0},
                                           cReleaseCase{"2.5", 2.5, 1.5}, cReleaseCase{"(0-1)", -1.0, 5.0},
                                           cReleaseCase{"PredNode.Soil.Count/2", 2.0, 2.0}));

TEST_F(cLinkReleaseTest, anAmountIsSentAlsoWhenNothingIsHeld) {
    link.release();

    EXPECT_EQ(receivedAmounts(), std::vector<double>{1.0});
}

TEST_F(cLinkReleaseTest, whatIsSentIsNewAndOfTheLinksType) {
    hold(1.0);
    const cResPtr holding = work.getHoldings(&soil).at(0);

    link.release();

    EXPECT_NE(sink.received.at(0), holding);
    EXPECT_EQ(sink.received.at(0)->getResType(), &soil);
}

TEST_F(cLinkReleaseTest, theAmountIsEvaluatedOnce) {
    hold(4.0);
    link.setRuleText(eLinkRule::releaseAmt, "GET(\"amount\")");
    network.answers["amount"] = 3.0;

    link.release();

    EXPECT_EQ(network.askedKeys, cTexts{"amount"});
    EXPECT_EQ(receivedAmounts(), std::vector<double>{3.0});
}

TEST_F(cLinkReleaseTest, theOtherRulesMeanNothingToAmounts) {
    hold(4.0);
    for (const eLinkRule rule : {eLinkRule::releaseUntil, eLinkRule::releaseOrder, eLinkRule::releaseWhere})
        link.setRuleText(rule, "1/0");

    link.release();

    EXPECT_EQ(receivedAmounts(), std::vector<double>{1.0});
}

TEST_F(cLinkReleaseTest, flowCodeOfAnAmountRunsBeforeTheHoldingIsLoweredWithNothingInHand) {
    hold(4.0);
    link.addOnFlowStatement("POST flow");
    double heldThen = 0.0;
    std::size_t onStack = 9;
    network.onMessage = [&](const std::string&) {
        heldThen = held(soil);
        onStack = network.symbols->getResourceStack().size();
    };

    link.release();

    EXPECT_EQ(heldThen, 4.0);
    EXPECT_EQ(onStack, 0U);
    EXPECT_EQ(network.messages, (cTexts{"flow ", "receive Sink"}));
}

// ---- instances

TEST_F(cLinkReleaseTest, theDefaultsGiveOutAllInTheOrderOfTheHoldings) {
    releaseTrucks(3);

    link.release();

    EXPECT_EQ(receivedTrucks(), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(held(truck), 0.0);
}

TEST_F(cLinkReleaseTest, nothingHeldGivesNothing) {
    releaseTrucks(0);

    link.release();

    EXPECT_TRUE(sink.received.empty());
}

TEST_F(cLinkReleaseTest, onlyTheLinksTypeIsGivenOut) {
    hold(4.0);
    work.addHolding(*makeCounted<cResCompound>(&network.addCompoundType("Crane")));
    releaseTrucks(1);

    link.release();

    EXPECT_EQ(sink.received.size(), 1U);
    EXPECT_EQ(held(soil), 4.0);
    EXPECT_EQ(work.countOf("Count", network.findResourceType("Crane")), 1.0);
}

TEST_F(cLinkReleaseTest, untilIsAskedBeforeEachAndStops) {
    releaseTrucks(3);
    link.setRuleText(eLinkRule::releaseUntil, "GET(\"until\")");
    network.onGet = [&](const std::string&) { return sink.received.size() >= 2 ? 1.0 : 0.0; };

    link.release();

    EXPECT_EQ(receivedTrucks(), (std::vector<int>{1, 2}));
    EXPECT_EQ(network.askedKeys.size(), 3U);
    EXPECT_EQ(held(truck), 1.0);
}

TEST_F(cLinkReleaseTest, whereGoesOnWithTheNext) {
    releaseTrucks(4);
    link.setRuleText(eLinkRule::releaseWhere, "GET(\"where\")");
    network.onGet = [&](const std::string&) { return network.resourceInHand()->getResNum() % 2 == 0 ? 1.0 : 0.0; };

    link.release();

    EXPECT_EQ(receivedTrucks(), (std::vector<int>{2, 4}));
    EXPECT_EQ(held(truck), 2.0);
}

TEST_F(cLinkReleaseTest, instancesAreGivenOutByAscendingOrder) {
    releaseTrucks(3);
    link.setRuleText(eLinkRule::releaseOrder, "GET(\"order\")");
    network.onGet = [&](const std::string&) { return -network.resourceInHand()->getResNum(); };

    link.release();

    EXPECT_EQ(receivedTrucks(), (std::vector<int>{3, 2, 1}));
}

TEST_F(cLinkReleaseTest, theAmountMeansNothingToInstances) {
    releaseTrucks(2);
    link.setRuleText(eLinkRule::releaseAmt, "1/0");

    link.release();

    EXPECT_EQ(receivedTrucks(), (std::vector<int>{1, 2}));
}

TEST_F(cLinkReleaseTest, whereAndOrderHaveTheResourceInHandAndUntilHasNot) {
    releaseTrucks(1);
    link.setRuleText(eLinkRule::releaseUntil, "GET(\"until\")");
    link.setRuleText(eLinkRule::releaseOrder, "GET(\"order\")");
    link.setRuleText(eLinkRule::releaseWhere, "GET(\"where\")");
    std::map<std::string, std::size_t> onStack;
    network.onGet = [&](const std::string& key) {
        onStack[key] = network.symbols->getResourceStack().size();
        return 0.0;
    };

    link.release();

    EXPECT_EQ(onStack, (std::map<std::string, std::size_t>{{"order", 1}, {"until", 0}, {"where", 1}}));
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cLinkReleaseTest, flowCodeOfAnInstanceRunsAfterItWasGivenUpWithItInHand) {
    releaseTrucks(2);
    link.addOnFlowStatement("POST flow");
    std::vector<double> heldThen;
    std::vector<int> inHand;
    network.onMessage = [&](const std::string&) {
        heldThen.push_back(held(truck));
        inHand.push_back(network.resourceInHand()->getResNum());
    };

    link.release();

    EXPECT_EQ(heldThen, (std::vector<double>{1.0, 0.0}));
    EXPECT_EQ(inHand, (std::vector<int>{1, 2}));
    EXPECT_EQ(network.messages, (cTexts{"flow ", "receive Sink", "flow ", "receive Sink"}));
}

TEST_F(cLinkReleaseTest, aReceiverHasNothingInHand) {
    cNodeQueue& yard = network.addQueue("Yard", truck);
    link.setSuccNode(&yard);
    releaseTrucks(1);
    network.execute("ONENTRY Yard POST in;\n");
    std::size_t onStack = 9;
    network.onMessage = [&](const std::string&) { onStack = network.symbols->getResourceStack().size(); };

    link.release();

    EXPECT_EQ(onStack, 1U);  // the queue's own, and not the link's besides
}

TEST_F(cLinkReleaseTest, aReleaseCountsNoDraws) {
    releaseTrucks(1);
    link.addOnFlowStatement("POST flow");
    double count = 9.0;
    network.onMessage = [&](const std::string&) { count = link.getAttribute("nDraws"); };

    link.release();

    EXPECT_EQ(count, 0.0);
}

// ---- what decides, and what fails

TEST_F(cLinkReleaseTest, theLinksOwnTypeDecidesTheCase) {
    hold(4.0);
    releaseTrucks(1);
    link.setResType(&soil);

    link.release();

    EXPECT_EQ(receivedAmounts(), std::vector<double>{1.0});
    EXPECT_EQ(held(truck), 1.0);
}

TEST_F(cLinkReleaseTest, aLinkWithoutATypeCarriesNothing) {
    hold(4.0);
    link.setResType(nullptr);

    link.release();

    EXPECT_TRUE(sink.received.empty());
    EXPECT_EQ(held(soil), 4.0);
}

TEST_F(cLinkReleaseTest, aLinkOfTheWrongFamilyIntoAQueueFailsInTheQueue) {
    cNodeQueue& yard = network.addQueue("Yard", truck);
    link.setSuccNode(&yard);
    link.setResType(&soil);

    const cException failure = failureOf([&] { link.release(); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_TRUE(failure.message.starts_with("Queue ")) << failure.message;
}

TEST_F(cLinkReleaseTest, aPredecessorThatHoldsNothingIsAFailure) {
    cNodeQueue& pile = network.addQueue("Pile", soil);
    cLink& draw = network.addLink("D", pile, work);

    const cException failure = failureOf([&] { draw.release(); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_NE(failure.message.find("\"D\""), std::string::npos);
}

TEST_F(cLinkReleaseTest, aFailingRuleEndsTheReleaseAndPassesUnchanged) {
    releaseTrucks(2);
    link.setRuleText(eLinkRule::releaseWhere, "1/0");

    const cException failure = failureOf([&] { link.release(); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(failure.expressionText, "1/0");
    EXPECT_EQ(held(truck), 2.0);
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

}  // namespace
