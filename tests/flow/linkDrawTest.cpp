#include "flow/link.h"

#include "support/failureOf.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using cTexts = std::vector<std::string>;

/// Takes in what was drawn.
class cTaker : public cReleasers {
public:
    const cHoldings& taken() const { return holdings; }
};

/// A queue of soil and one of trucks, each with a draw link to the same Combi. The link's texts are the defaults.
class cLinkDrawTest : public ::testing::Test {
protected:
    void fillPile(double amount) { pile.receive(*makeCounted<cResGen>(&soil, amount)); }
    void fillYard(int count) {
        for (int i = 0; i < count; ++i) yard.receive(*makeCounted<cResCompound>(&truck));
    }
    /// What a draw along a link gives, which is of one type.
    static cResList drawn(cLink& link, cResType& type) {
        cTaker taker;
        link.draw(taker);
        cResList ofType = taker.getHoldings(&type);
        EXPECT_EQ(ofType.size(), taker.taken().size());
        return ofType;
    }
    cResList drawnFromPile() { return drawn(fromPile, soil); }
    cResList drawnFromYard() { return drawn(fromYard, truck); }
    /// The amounts that a draw from the pile gives.
    std::vector<double> amounts() {
        std::vector<double> amounts;
        for (const cResPtr& resource : drawnFromPile())
            amounts.push_back(dynamic_cast<const cResGen&>(*resource).getAmount());
        return amounts;
    }
    template <typename cList>
    static std::vector<int> numbersOf(const cList& resources) {
        std::vector<int> numbers;
        for (const cResPtr& resource : resources)
            numbers.push_back(dynamic_cast<const cResChar&>(*resource).getResNum());
        return numbers;
    }
    /// The numbers of the trucks that a draw from the yard gives.
    std::vector<int> trucks() { return numbersOf(drawnFromYard()); }

    cWatchedNetwork network;
    cResTypeGen& soil = network.addGenericType("Soil");
    cResTypeCompound& truck = network.addCompoundType("Truck");
    cNodeQueue& pile = network.addQueue("Pile", soil);
    cNodeQueue& yard = network.addQueue("Yard", truck);
    cNodeActCombi& haul = network.addCombi("Haul");
    cLink& fromPile = network.addLink("P", pile, haul);
    cLink& fromYard = network.addLink("Y", yard, haul);
};

// ---- the draw condition

TEST_F(cLinkDrawTest, theDefaultConditionHoldsAsLongAsTheQueueHoldsSomething) {
    fillPile(7.0);

    EXPECT_EQ(fromPile.evaluateEnough(), 7.0);
    EXPECT_EQ(fromYard.evaluateEnough(), 0.0);
}

TEST_F(cLinkDrawTest, theConditionIsEvaluatedWithNothingInHand) {
    fromYard.setRuleText(eLinkRule::enough, "GET(\"enough\")");
    fillYard(1);
    std::size_t onStack = 9;
    network.onGet = [&](const std::string&) {
        onStack = network.symbols->getResourceStack().size();
        return 1.0;
    };

    fromYard.evaluateEnough();

    EXPECT_EQ(onStack, 0U);
}

// ---- amounts

TEST_F(cLinkDrawTest, theDefaultsTakeOneUnit) {
    fillPile(7.0);

    EXPECT_EQ(amounts(), std::vector<double>{1.0});

    EXPECT_EQ(pile.getCurCount(), 6.0);
    EXPECT_EQ(fromPile.evaluateEnough(), 6.0);
}

TEST_F(cLinkDrawTest, moreThanThereIsGivesWhatThereIs) {
    fillPile(3.0);
    fromPile.setRuleText(eLinkRule::drawAmt, "5");

    EXPECT_EQ(amounts(), std::vector<double>{3.0});

    EXPECT_EQ(pile.getCurCount(), 0.0);
}

TEST_F(cLinkDrawTest, anEmptyQueueGivesNothingAndNoRuleIsAsked) {
    fromPile.setRuleText(eLinkRule::drawUntil, "GET(\"until\")");
    fromPile.setRuleText(eLinkRule::drawAmt, "GET(\"amount\")");
    network.trace.restart();

    EXPECT_TRUE(amounts().empty());

    EXPECT_TRUE(network.askedKeys.empty());
    EXPECT_TRUE(network.tracedLines().empty());
}

TEST_F(cLinkDrawTest, drawsGoOnUntilTheQueueIsEmptyAndAddUp) {
    fillPile(2.5);
    fromPile.setRuleText(eLinkRule::drawUntil, "0");

    EXPECT_EQ(amounts(), std::vector<double>{2.5});

    EXPECT_EQ(pile.getCurCount(), 0.0);
}

TEST_F(cLinkDrawTest, drawsOfNothingThatEndGiveNothing) {
    fillPile(7.0);
    fromPile.setRuleText(eLinkRule::drawAmt, "0");
    fromPile.setRuleText(eLinkRule::drawUntil, "nDraws>=3");
    fromPile.addOnFlowStatement("POST flow");

    EXPECT_TRUE(amounts().empty());

    EXPECT_EQ(network.messages.size(), 3U);
    EXPECT_EQ(pile.getCurCount(), 7.0);
}

TEST_F(cLinkDrawTest, untilIsAskedBeforeEachTurnAndTheAmountWithinIt) {
    fillPile(7.0);
    fromPile.setRuleText(eLinkRule::drawUntil, "GET(\"until\")");
    fromPile.setRuleText(eLinkRule::drawAmt, "GET(\"amount\")");
    network.onGet = [&](const std::string& key) { return key == "amount" ? 2.0 : pile.getCurCount() < 4.0; };

    EXPECT_EQ(amounts(), std::vector<double>{4.0});

    EXPECT_EQ(network.askedKeys, (cTexts{"until", "amount", "until", "amount", "until"}));
}

TEST_F(cLinkDrawTest, untilThatHoldsFromTheStartTakesNothing) {
    fillPile(7.0);
    fromPile.setRuleText(eLinkRule::drawUntil, "1");

    EXPECT_TRUE(amounts().empty());

    EXPECT_EQ(pile.getCurCount(), 7.0);
}

TEST_F(cLinkDrawTest, untilThatIsNotANumberHolds) {
    fillPile(7.0);
    fromPile.setRuleText(eLinkRule::drawUntil, "(0-1)^0.5");

    EXPECT_TRUE(amounts().empty());
}

TEST_F(cLinkDrawTest, aNegativeAmountFillsTheQueue) {
    fillPile(7.0);
    fromPile.setRuleText(eLinkRule::drawAmt, "(0-2)");

    EXPECT_EQ(amounts(), std::vector<double>{-2.0});

    EXPECT_EQ(pile.getCurCount(), 9.0);
}

TEST_F(cLinkDrawTest, orderAndWhereMeanNothingToAmounts) {
    fillPile(7.0);
    fromPile.setRuleText(eLinkRule::drawOrder, "1/0");
    fromPile.setRuleText(eLinkRule::drawWhere, "0");

    EXPECT_EQ(amounts(), std::vector<double>{1.0});
}

TEST_F(cLinkDrawTest, anAmountBearsTheLinksOwnType) {
    cResTypeGen& rock = network.addGenericType("Rock");
    pile.setResType(&rock);  // the link stays one of soil
    pile.receive(*makeCounted<cResGen>(&rock, 7.0));

    EXPECT_EQ(amounts(), std::vector<double>{1.0});  // of soil, and nothing else
}

TEST_F(cLinkDrawTest, theRulesOfAmountsHaveNothingInHand) {
    fillPile(7.0);
    fromPile.setRuleText(eLinkRule::drawAmt, "GET(\"amount\")");
    std::size_t onStack = 9;
    network.onGet = [&](const std::string&) {
        onStack = network.symbols->getResourceStack().size();
        return 1.0;
    };

    drawnFromPile();

    EXPECT_EQ(onStack, 0U);
}

TEST_F(cLinkDrawTest, drawsOfNothingWithoutEndCanBeStopped) {
    fillPile(7.0);
    fromPile.setRuleText(eLinkRule::drawAmt, "0");
    fromPile.setRuleText(eLinkRule::drawUntil, "0");
    network.stopAtHostEvent = 2;

    const cException failure = failureOf([&] { drawnFromPile(); });

    EXPECT_EQ(failure.code, failureCode::userStop);
    EXPECT_EQ(fromPile.getAttribute("nDraws"), 0.0);
}

TEST_F(cLinkDrawTest, drawsThatAreFilledUpWithoutEndCanBeStopped) {
    fillPile(7.0);
    fromPile.setRuleText(eLinkRule::drawUntil, "0");
    fromPile.addOnFlowStatement("INIT Pile 1");
    network.stopAtHostEvent = 2;

    EXPECT_EQ(failureOf([&] { drawnFromPile(); }).code, failureCode::userStop);
}

// ---- instances

TEST_F(cLinkDrawTest, theDefaultsTakeTheFirstInQueueOrder) {
    fillYard(3);

    EXPECT_EQ(trucks(), std::vector<int>{1});

    EXPECT_EQ(yard.getCurCount(), 2.0);
}

TEST_F(cLinkDrawTest, anEmptyQueueGivesNoInstances) {
    EXPECT_TRUE(trucks().empty());

    EXPECT_EQ(fromYard.getAttribute("nDraws"), 0.0);
}

TEST_F(cLinkDrawTest, untilBoundsTheNumberOfInstances) {
    fillYard(5);
    fromYard.setRuleText(eLinkRule::drawUntil, "nDraws>=3");

    EXPECT_EQ(trucks(), (std::vector<int>{1, 2, 3}));
}

TEST_F(cLinkDrawTest, untilThatNeverHoldsTakesAll) {
    fillYard(3);
    fromYard.setRuleText(eLinkRule::drawUntil, "0");

    EXPECT_EQ(trucks(), (std::vector<int>{1, 2, 3}));

    EXPECT_EQ(yard.getCurCount(), 0.0);
}

TEST_F(cLinkDrawTest, theAmountMeansNothingToInstances) {
    fillYard(3);
    fromYard.setRuleText(eLinkRule::drawAmt, "1/0");

    EXPECT_EQ(trucks(), std::vector<int>{1});
}

TEST_F(cLinkDrawTest, aWhereThatNobodyPassesVisitsAllAndTakesNone) {
    fillYard(3);
    fromYard.setRuleText(eLinkRule::drawUntil, "GET(\"until\")");
    fromYard.setRuleText(eLinkRule::drawWhere, "GET(\"where\")");

    EXPECT_TRUE(trucks().empty());

    EXPECT_EQ(network.askedKeys, (cTexts{"until", "where", "until", "where", "until", "where"}));
    EXPECT_EQ(yard.getCurCount(), 3.0);
}

TEST_F(cLinkDrawTest, aWhereThatNobodyPassesTakesNoneWithTheDefaultUntilToo) {
    fillYard(3);
    fromYard.setRuleText(eLinkRule::drawWhere, "GET(\"where\")");

    EXPECT_TRUE(trucks().empty());

    EXPECT_EQ(network.askedKeys.size(), 3U);
}

TEST_F(cLinkDrawTest, whereTakesThoseThatPass) {
    fillYard(5);
    fromYard.setRuleText(eLinkRule::drawUntil, "nDraws>=2");
    fromYard.setRuleText(eLinkRule::drawWhere, "GET(\"where\")");
    network.onGet = [&](const std::string&) { return network.resourceInHand()->getResNum() % 2 == 0 ? 1.0 : 0.0; };

    EXPECT_EQ(trucks(), (std::vector<int>{2, 4}));

    EXPECT_EQ(network.askedKeys.size(), 4U);  // the fifth is not looked at
}

TEST_F(cLinkDrawTest, aWhereThatIsNotANumberIsPassed) {
    fillYard(1);
    fromYard.setRuleText(eLinkRule::drawWhere, "(0-1)^0.5");

    EXPECT_EQ(trucks(), std::vector<int>{1});
}

TEST_F(cLinkDrawTest, instancesAreDrawnByAscendingOrder) {
    fillYard(3);
    fromYard.setRuleText(eLinkRule::drawUntil, "nDraws>=2");
    fromYard.setRuleText(eLinkRule::drawOrder, "GET(\"order\")");
    const std::map<int, double> keys{{1, 5.0}, {2, 7.0}, {3, 4.0}};
    network.onGet = [&](const std::string&) { return keys.at(network.resourceInHand()->getResNum()); };

    EXPECT_EQ(trucks(), (std::vector<int>{3, 1}));

    EXPECT_EQ(numbersOf(yard.getContents()), std::vector<int>{2});
}

TEST_F(cLinkDrawTest, anOrderByWhatBelongsToTheResourceIsTheOrderOfTheQueue) {
    fillYard(3);
    fromYard.setRuleText(eLinkRule::drawUntil, "0");
    fromYard.setRuleText(eLinkRule::drawOrder, "0-ResNum");

    EXPECT_EQ(trucks(), (std::vector<int>{1, 2, 3}));
}

TEST_F(cLinkDrawTest, aRandomOrderShufflesTheDraw) {
    fillYard(12);
    fromYard.setRuleText(eLinkRule::drawUntil, "0");
    fromYard.setRuleText(eLinkRule::drawOrder, "Rnd()");

    std::vector<int> drawn = trucks();

    EXPECT_FALSE(std::ranges::is_sorted(drawn));
    std::ranges::sort(drawn);
    EXPECT_EQ(drawn, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
}

TEST_F(cLinkDrawTest, whereAndOrderHaveTheResourceInHandAndUntilHasNot) {
    fillYard(1);
    for (const auto& [rule, text] :
         {std::pair{eLinkRule::drawUntil, "GET(\"until\")"}, std::pair{eLinkRule::drawOrder, "GET(\"order\")"},
          std::pair{eLinkRule::drawWhere, "GET(\"where\")"}})
        fromYard.setRuleText(rule, text);
    std::map<std::string, std::size_t> onStack;
    network.onGet = [&](const std::string& key) {
        onStack[key] = network.symbols->getResourceStack().size();
        return 0.0;
    };

    drawnFromYard();

    EXPECT_EQ(onStack, (std::map<std::string, std::size_t>{{"order", 1}, {"until", 0}, {"where", 1}}));
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cLinkDrawTest, candidatesAreThoseThatWaitedWhenTheDrawBegan) {
    fillYard(2);
    fromYard.setRuleText(eLinkRule::drawUntil, "0");
    fromYard.addOnFlowStatement("INIT Yard 1");

    EXPECT_EQ(trucks(), (std::vector<int>{1, 2}));

    EXPECT_EQ(numbersOf(yard.getContents()), (std::vector<int>{3, 4}));
}

TEST_F(cLinkDrawTest, whatAHostPutsInDuringADrawIsNoCandidate) {
    fillYard(2);
    fromYard.setRuleText(eLinkRule::drawUntil, "0");
    int draws = 0;
    network.onEventPoint = [&] {
        if (++draws < 10) yard.receive(*makeCounted<cResCompound>(&truck));
    };

    EXPECT_EQ(trucks(), (std::vector<int>{1, 2}));
}

TEST_F(cLinkDrawTest, aResourceThatStandsTwiceIsDrawnTwice) {
    const auto made = makeCounted<cResCompound>(&truck);
    yard.receive(*made);
    yard.receive(*made);
    fromYard.setRuleText(eLinkRule::drawUntil, "0");

    EXPECT_EQ(drawnFromYard(), (cResList{made, made}));

    EXPECT_TRUE(yard.getContents().empty());
}

TEST_F(cLinkDrawTest, theQueueDecidesTheCaseWhateverTheTypeOfTheLink) {
    fillYard(2);
    fromYard.setResType(&soil);

    EXPECT_EQ(trucks(), std::vector<int>{1});
}

// ---- the count of draws and ONFLOW

TEST_F(cLinkDrawTest, theRulesSeeTheDrawsMadeSoFar) {
    fillPile(100.0);
    fromPile.setRuleText(eLinkRule::drawAmt, "nDraws+1");
    fromPile.setRuleText(eLinkRule::drawUntil, "nDraws>=3");

    EXPECT_EQ(amounts(), std::vector<double>{1.0 + 2.0 + 3.0});
}

TEST_F(cLinkDrawTest, theCountIsRaisedBeforeTheFlowCodeRuns) {
    fillPile(100.0);
    fromPile.setRuleText(eLinkRule::drawUntil, "nDraws>=2");
    fromPile.addOnFlowStatement("POST flow");
    std::vector<double> counts;
    network.onMessage = [&](const std::string&) { counts.push_back(fromPile.getAttribute("nDraws")); };

    drawnFromPile();

    EXPECT_EQ(counts, (std::vector<double>{1.0, 2.0}));
}

TEST_F(cLinkDrawTest, flowCodeBelongsToNoLinkSoTheCountReads0There) {
    fillPile(100.0);
    fromPile.addOnFlowStatement("POST \"%f\" nDraws");

    drawnFromPile();

    EXPECT_EQ(network.messages, cTexts{"0.000000"});
}

TEST_F(cLinkDrawTest, flowCodeSeesTheQueueBehindEachDraw) {
    fillPile(7.0);
    fromPile.setRuleText(eLinkRule::drawUntil, "nDraws>=2");
    fromPile.addOnFlowStatement("POST \"%f\" Pile.CurCount");

    drawnFromPile();

    EXPECT_EQ(network.messages, (cTexts{"6.000000", "5.000000"}));
}

TEST_F(cLinkDrawTest, flowCodeOfAnInstanceHasItInHand) {
    fillYard(1);
    fromYard.addOnFlowStatement("POST flow");
    const cResChar* inHand = nullptr;
    network.onMessage = [&](const std::string&) { inHand = network.resourceInHand(); };

    const cResList taken = drawnFromYard();

    EXPECT_EQ(inHand, taken.at(0).get());
}

TEST_F(cLinkDrawTest, aDrawOfOneLinkDoesNotCountForAnother) {
    fillYard(1);
    fillPile(1.0);
    fromPile.addOnFlowStatement("POST flow");
    double countOfOther = 9.0;
    network.onMessage = [&](const std::string&) { countOfOther = fromYard.getAttribute("nDraws"); };

    drawnFromPile();

    EXPECT_EQ(countOfOther, 0.0);
}

TEST_F(cLinkDrawTest, theCountIs0AfterADraw) {
    fillPile(7.0);
    fillYard(2);

    drawnFromPile();
    drawnFromYard();

    EXPECT_EQ(fromPile.getAttribute("nDraws"), 0.0);
    EXPECT_EQ(fromYard.getAttribute("nDraws"), 0.0);
}

TEST_F(cLinkDrawTest, theCountIs0AfterADrawThatFailedToo) {
    fillPile(7.0);
    fromPile.setRuleText(eLinkRule::drawUntil, "0");
    fromPile.setRuleText(eLinkRule::drawAmt, "1/(2-nDraws)");

    const cException failure = failureOf([&] { drawnFromPile(); });

    EXPECT_EQ(failure.message, "Division by 0.");
    EXPECT_EQ(failure.expressionText, "1/(2-nDraws)");
    EXPECT_EQ(fromPile.getAttribute("nDraws"), 0.0);
}

// ---- what can't be drawn from

TEST_F(cLinkDrawTest, aLinkWithoutAQueueInFrontFails) {
    cLink loose("Loose");

    const cException failure = failureOf([&] { drawn(loose, soil); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_NE(failure.message.find("Loose"), std::string::npos);
}

TEST_F(cLinkDrawTest, aQueueWithoutATypeGivesNothing) {
    cNodeQueue queue;
    cLink link("L");
    link.setPredNode(&queue);
    link.setSuccNode(&haul);

    cTaker taker;

    link.draw(taker);

    EXPECT_TRUE(taker.taken().empty());
}

}  // namespace
