// The dotted paths of expressions: from an element, and from the predecessor of the owning link.

#include "support/holdings.h"
#include "support/soilScene.h"

#include <gtest/gtest.h>

namespace {

/// The scene, and Dump, a Combi that nothing leads to.
class cSymbolPathsTest : public cSoilScene {
protected:
    double resolve(const std::string& operand, const std::string& owner = {}) {
        return network.symbols->resolve(operand, owner);
    }
    void putSoil(cNodeQueue& queue, double amount) { queue.receive(*makeCounted<cResGen>(&soil, amount)); }
    /// Starts an instance and makes it the one whose event code runs.
    void enterInstance(cNodeAct& activity, cHoldings held, double duration = 4.0) {
        const std::int32_t id = activity.getStatistics().nextInstance;
        activity.startInstance(std::move(held), 0.0, duration);
        network.symbols->currentInstance = activity.findInstance(id).get();
    }
    cHoldings trucksHeld(int count) {
        cResList trucks;
        for (int i = 0; i < count; ++i) trucks.push_back(makeCounted<cResCompound>(&truck));
        return holdingsOf(trucks);
    }

    cNodeActCombi& dump = network.addCombi("Dump");
};

TEST_F(cSymbolPathsTest, activitiesAnswerFourKeywords) {
    haul.startInstance({}, 0.0, 4.0);
    enterInstance(haul, {}, 8.0);

    EXPECT_EQ(network.evaluate("Haul.CurInst"), 2.0);
    EXPECT_EQ(network.evaluate("Haul.TotInst"), 2.0);
    EXPECT_EQ(network.evaluate("Haul.AveDur"), 6.0);
    EXPECT_EQ(network.evaluate("Haul.Duration"), 8.0);
    EXPECT_EQ(network.evaluate("Haul.CurInst.whatever"), 2.0);
}

TEST_F(cSymbolPathsTest, durationIsThatOfTheCurrentInstanceWhicheverActivityIsNamed) {
    enterInstance(haul, {}, 8.0);

    EXPECT_EQ(resolve("Dump.Duration"), 8.0);
}

TEST_F(cSymbolPathsTest, durationWithoutACurrentInstanceIsZero) {
    enterInstance(haul, {}, 8.0);
    network.symbols->currentInstance = nullptr;

    EXPECT_EQ(resolve("Haul.Duration"), 0.0);
    EXPECT_EQ(resolve("PredNode.Duration", "Release1"), 0.0);
}

TEST_F(cSymbolPathsTest, aHeldResourceAnswersNumberAndCount) {
    trucksHeld(2);  // numbers 1 and 2 are used up
    enterInstance(haul, trucksHeld(2));

    EXPECT_EQ(network.evaluate("Haul.Truck.ResNum"), 3.0);  // the first of those held
    EXPECT_EQ(network.evaluate("Haul.Truck.Count"), 1.0);   // what one counts for, not how many there are
}

TEST_F(cSymbolPathsTest, otherPathsOfAHeldResourceAreZero) {
    enterInstance(haul, trucksHeld(1));

    for (const char* path :
         {"Haul.Truck", "Haul.Truck.", "Haul.Truck.BirthTime", "Haul.Truck.TimeIn", "Haul.Car.ResNum"})
        EXPECT_EQ(resolve(path), 0.0) << path;
}

TEST_F(cSymbolPathsTest, aTypeThatIsNotHeldIsZero) {
    enterInstance(haul, {});

    EXPECT_EQ(resolve("Haul.Truck.ResNum"), 0.0);
    EXPECT_EQ(resolve("Haul.Truck.Count"), 0.0);
}

TEST_F(cSymbolPathsTest, aHeldAmountIsZero) {
    enterInstance(haul, holdingsOf({makeCounted<cResGen>(&soil, 5.0)}));

    EXPECT_EQ(resolve("Haul.Soil.Count"), 0.0);
    EXPECT_EQ(resolve("Haul.Soil.ResNum"), 0.0);
}

TEST_F(cSymbolPathsTest, aPathWithATypeAnswersOnlyForTheActivityOfTheCurrentInstance) {
    enterInstance(haul, trucksHeld(1));
    ASSERT_EQ(resolve("Haul.Truck.ResNum"), 1.0);

    EXPECT_EQ(resolve("Dump.Truck.ResNum"), 0.0);
    EXPECT_EQ(resolve("Dump.Truck.Count"), 0.0);
    network.symbols->currentInstance = nullptr;
    EXPECT_EQ(resolve("Haul.Truck.ResNum"), 0.0);
}

TEST_F(cSymbolPathsTest, queuesAnswerFourKeywords) {
    network.simTime = 2.0;
    putSoil(soil1, 5.0);
    network.simTime = 6.0;
    soil1.drawAmount(3.0);
    network.simTime = 8.0;

    EXPECT_EQ(network.evaluate("Soil1.CurCount"), 2.0);
    EXPECT_EQ(network.evaluate("Soil1.TotCount"), 5.0);
    EXPECT_EQ(network.evaluate("Soil1.AveCont"), 2.5);  // 5 for 4 time units, of 8
    EXPECT_EQ(network.evaluate("Soil1.AveWait"), 4.0);
}

TEST_F(cSymbolPathsTest, maxContIsReadableByThePredecessorRouteAlone) {
    putSoil(soil1, 5.0);
    soil1.drawAmount(3.0);

    EXPECT_EQ(resolve("Soil1.MaxCont"), 0.0);
    EXPECT_EQ(resolve("Soil1.MaxCont", "Draw1"), 0.0);
    EXPECT_EQ(resolve("PredNode.MaxCont", "Draw1"), 5.0);
}

struct cKeyword {
    const char* keyword;
    double value;
};

void PrintTo(const cKeyword& row, std::ostream* stream) { *stream << row.keyword; }

class cPredecessorQueueTest : public cSymbolPathsTest, public ::testing::WithParamInterface<cKeyword> {};

TEST_P(cPredecessorQueueTest, answers) {
    network.simTime = 2.0;
    putSoil(soil1, 5.0);
    network.simTime = 6.0;
    soil1.drawAmount(3.0);
    network.simTime = 8.0;

    EXPECT_EQ(resolve(std::string("PredNode.") + GetParam().keyword, "Draw1"), GetParam().value);
}

// Nothing records the last amount received.
INSTANTIATE_TEST_SUITE_P(allKeywords, cPredecessorQueueTest,
                         ::testing::Values(cKeyword{"LastAmtReceived", 0}, cKeyword{"CurCount", 2},
                                           cKeyword{"TotCount", 5}, cKeyword{"MaxCont", 5}, cKeyword{"MinCont", 0},
                                           cKeyword{"AveCont", 2.5}, cKeyword{"AveWait", 4}));

TEST_F(cSymbolPathsTest, theAveragesOfAQueueThatNothingEnteredAreZero) {
    network.simTime = 8.0;

    EXPECT_EQ(resolve("Soil1.AveCont"), 0.0);
    EXPECT_EQ(resolve("Soil1.AveWait"), 0.0);
}

class cPredecessorActivityTest : public cSymbolPathsTest, public ::testing::WithParamInterface<cKeyword> {};

TEST_P(cPredecessorActivityTest, answers) {
    haul.startInstance({}, 0.0, 4.0);
    enterInstance(haul, {}, 8.0);
    haul.activeMark = true;

    EXPECT_EQ(resolve(std::string("PredNode.") + GetParam().keyword, "Release1"), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(allKeywordsAndZeroForOthers, cPredecessorActivityTest,
                         ::testing::Values(cKeyword{"InContext", 1}, cKeyword{"CurInst", 2}, cKeyword{"TotInst", 2},
                                           cKeyword{"AveDur", 6}, cKeyword{"Duration", 8}, cKeyword{"MaxDur", 0},
                                           cKeyword{"Nonsense", 0}));

TEST_F(cSymbolPathsTest, inContextIsReadableByThePredecessorRouteAlone) {
    haul.activeMark = true;

    EXPECT_EQ(resolve("Haul.InContext"), 0.0);
    EXPECT_EQ(resolve("PredNode.InContext", "Release1"), 1.0);
}

TEST_F(cSymbolPathsTest, aKeywordThatAPredecessorQueueDoesNotKnowFailsAsTheQueueFails) {
    const cException failure = failureOf([&] { resolve("PredNode.MaxCount", "Draw1"); });

    EXPECT_EQ(failure.message, "Invalid keyword MaxCount");
    EXPECT_EQ(failure.location, "In queue Soil1");
}

TEST_F(cSymbolPathsTest, aBadKeywordInFrontOfAnOperatorFailsWhenARuleIsSet) {
    const cException failure = failureOf([&] { draw1.setRuleText(eLinkRule::drawAmt, "PredNode.Nonsense+1"); });
    EXPECT_EQ(failure.message, "Invalid keyword Nonsense");

    draw1.setRuleText(eLinkRule::enough, "1+PredNode.Nonsense");  // the last operand escapes

    EXPECT_EQ(failureOf([&] { draw1.evaluateEnough(); }).message, "Invalid keyword Nonsense");
}

TEST_F(cSymbolPathsTest, aPredecessorWithoutAnOwningLinkIsZero) {
    putSoil(soil1, 5.0);

    EXPECT_EQ(network.evaluate("PredNode.CurCount"), 0.0);
    EXPECT_EQ(resolve("PredNode.CurCount", "Nobody"), 0.0);
    EXPECT_EQ(resolve("PredNode.CurCount", "Soil1"), 0.0);  // which is no link
    EXPECT_EQ(resolve("PredNode.Soil.Count"), 0.0);
    EXPECT_EQ(resolve("PredNode"), 0.0);
}

TEST_F(cSymbolPathsTest, aLinkWithoutAPredecessorAnswersZero) {
    draw1.setPredNode(nullptr);

    EXPECT_EQ(resolve("PredNode.CurCount", "Draw1"), 0.0);
    EXPECT_EQ(resolve("PredNode.Soil.Count", "Draw1"), 0.0);
}

TEST_F(cSymbolPathsTest, theHoldingsOfAPredecessorAreCounted) {
    haul.addHolding(*makeCounted<cResGen>(&soil, 3.5));
    for (int i = 0; i < 2; ++i) haul.addHolding(*makeCounted<cResCompound>(&truck));

    EXPECT_EQ(resolve("PredNode.Soil.Count", "Release1"), 3.5);
    EXPECT_EQ(resolve("PredNode.Truck.Count", "Release1"), 2.0);
}

TEST_F(cSymbolPathsTest, holdingsWithoutAnAnswerAreZero) {
    haul.addHolding(*makeCounted<cResCompound>(&truck));
    putSoil(soil1, 5.0);

    EXPECT_EQ(resolve("PredNode.Truck.ResNum", "Release1"), 0.0);
    EXPECT_EQ(resolve("PredNode.Soil.Count", "Release1"), 0.0);  // none is held
    EXPECT_EQ(resolve("PredNode.Car.Count", "Release1"), 0.0);   // no such type
    EXPECT_EQ(resolve("PredNode.Truck.Count.x", "Release1"), 0.0);
    EXPECT_EQ(resolve("PredNode.Soil.Count", "Draw1"), 0.0);  // a queue isn't a store to release from
}

TEST_F(cSymbolPathsTest, lookingForTheOwnerLeavesAnEntryWithoutAnElement) {
    const std::size_t before = network.elements.size();

    resolve("PredNode.CurCount");
    resolve("nDraws", "Nobody");

    EXPECT_EQ(network.elements.size(), before + 2);
    EXPECT_EQ(network.elements.at(""), nullptr);
    EXPECT_EQ(network.elements.at("Nobody"), nullptr);
}

TEST_F(cSymbolPathsTest, otherNamesLeaveNoEntry) {
    const std::size_t before = network.elements.size();

    for (const char* operand : {"x", "Nobody.CurCount", "5", "SimTime", "Haul.Nonsense"}) resolve(operand, "Nobody");

    EXPECT_EQ(network.elements.size(), before);
}

TEST_F(cSymbolPathsTest, nDrawsCountsTheDrawsOfTheOwningLink) {
    putSoil(soil1, 10.0);
    draw1.setRuleText(eLinkRule::drawAmt, "nDraws+1");
    draw1.setRuleText(eLinkRule::drawUntil, "nDraws==3");

    cReleasers taker;
    draw1.draw(taker);

    EXPECT_EQ(taker.countOf("Count", &soil), 1.0 + 2.0 + 3.0);
}

TEST_F(cSymbolPathsTest, nDrawsIsZeroOutsideADrawAndForOthers) {
    EXPECT_EQ(resolve("nDraws", "Draw1"), 0.0);
    EXPECT_EQ(resolve("nDraws"), 0.0);
    EXPECT_EQ(resolve("nDraws", "Soil1"), 0.0);
}

TEST_F(cSymbolPathsTest, aStatementOfALinkReadsNDrawsAsZero) {
    putSoil(soil1, 10.0);
    network.execute("SAVEVALUE seen 5;\nONFLOW Draw1 ASSIGN seen nDraws;");
    draw1.setRuleText(eLinkRule::drawUntil, "nDraws==2");

    cReleasers taker;
    draw1.draw(taker);

    EXPECT_EQ(resolve("seen"), 0.0);  // while the rule of the same link counted to 2
    EXPECT_EQ(soil1.getCurCount(), 8.0);
}

}  // namespace
