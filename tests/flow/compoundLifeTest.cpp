#include "support/burst.h"
#include "support/holdings.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using cTexts = std::vector<std::string>;

/// Who keeps a compound and its parts alive, and what becomes of them. An Assembler of houses, Frame, in front of a
/// queue of houses, Yard, behind which stands the Combi Sell. The network can be destroyed in the midst of a test.
class cCompoundLifeTest : public ::testing::Test {
protected:
    void SetUp() override {
        network->simState = 1;
        network->addLink("L1", frame, yard);
        network->addLink("Draw", yard, sell);
    }

    cResPtr newPlank() { return instanceOf(plank); }
    cResCompound& inYard(std::size_t place) { return dynamic_cast<cResCompound&>(*yard.getContents().at(place)); }
    /// Draws what stands first in a queue.
    static cResPtr takeFrom(cNodeQueue& queue) {
        const cResPtr first = queue.getContents().at(0);
        return queue.drawInstance(first);
    }

    std::optional<cWatchedNetwork> network{std::in_place};
    cResTypeGen& nails = network->addGenericType("Nails");
    cResTypeCompound& plank = network->addCompoundType("Plank");
    cResTypeCompound& house = network->addCompoundType("House");
    cNodeAuxAssembler& frame = network->addAssembler("Frame", house);
    cNodeQueue& yard = network->addQueue("Yard", house);
    cNodeActCombi& sell = network->addCombi("Sell");
};

// ---- a compound twice in a queue

TEST_F(cCompoundLifeTest, aCompoundThatStillWaitsStandsInTheQueueTwiceWithTheNewParts) {
    const cResPtr later = newPlank();
    sendBurst(frame, {newPlank(), amountOf(nails, 2.0)});
    const std::size_t partsBefore = inYard(0).contents.size();

    sendBurst(frame, {later});

    EXPECT_EQ(partsBefore, 2U);
    EXPECT_EQ(yard.getCurCount(), 2.0);
    ASSERT_EQ(yard.getContents().size(), 2U);
    EXPECT_EQ(yard.getContents()[0], yard.getContents()[1]);
    EXPECT_EQ(inYard(0).contents.size(), 1U);
    EXPECT_EQ(heldOf(inYard(0).contents, plank), cResList{later});
}

TEST_F(cCompoundLifeTest, eachDrawTakesOnePlaceOfACompoundThatStandsTwice) {
    for (int i = 0; i < 2; ++i) sendBurst(frame, {});
    sell.setDurationText("1");

    const bool firstStarts = sell.attempt();
    const double afterFirst = yard.getCurCount();
    const bool secondStarts = sell.attempt();
    const bool thirdStarts = sell.attempt();

    EXPECT_TRUE(firstStarts);
    EXPECT_EQ(afterFirst, 1.0);
    EXPECT_TRUE(secondStarts);
    EXPECT_EQ(yard.getCurCount(), 0.0);
    EXPECT_FALSE(thirdStarts);
}

TEST_F(cCompoundLifeTest, oneDrawCanTakeBothPlacesAndTheReleaseGivesBothOut) {
    cNodeQueue& sold = network->addQueue("Sold", house);
    network->addLink("Out", sell, sold);
    network->findElement<cLink>("Draw")->setRuleText(eLinkRule::drawUntil, "0");
    for (int i = 0; i < 2; ++i) sendBurst(frame, {});

    sell.attempt();
    network->advanceClock();

    EXPECT_EQ(yard.getCurCount(), 0.0);
    ASSERT_EQ(sold.getContents().size(), 2U);
    EXPECT_EQ(sold.getContents()[0], sold.getContents()[1]);
}

// ---- parts

TEST_F(cCompoundLifeTest, partsLiveAsLongAsTheyAreListed) {
    const cResPtr part = newPlank();
    sendBurst(frame, {part});
    const std::uint32_t whileListed = part.holderCount();

    sendBurst(frame, {});

    EXPECT_EQ(whileListed, 2U);
    EXPECT_EQ(part.holderCount(), 1U);
}

TEST_F(cCompoundLifeTest, anActivityThatEndsWithoutALinkDestroysNoCompoundThatItsAssemblerKeeps) {
    const cResPtr part = newPlank();
    sendBurst(frame, {part});
    const cResPtr sent = yard.getContents()[0];

    sell.attempt();
    network->advanceClock();

    EXPECT_EQ(yard.getCurCount(), 0.0);
    EXPECT_EQ(sent.holderCount(), 2U);  // the Assembler and the test
    EXPECT_EQ(part.holderCount(), 2U);
    sendBurst(frame, {});
    EXPECT_EQ(yard.getContents().at(0), sent);
}

TEST_F(cCompoundLifeTest, aCompoundThatOutlivesItsAssemblerIsEmpty) {
    const cResPtr part = newPlank();
    sendBurst(frame, {part});

    network->elements.erase("Frame");

    EXPECT_EQ(part.holderCount(), 1U);
    ASSERT_EQ(yard.getContents().size(), 1U);
    EXPECT_EQ(inYard(0).getInstanceName(), "House_1");
    EXPECT_TRUE(inYard(0).contents.empty());
}

TEST_F(cCompoundLifeTest, aPartThatInitMadeLivesAsLongAsItIsListed) {
    network->addQueue("Stock", plank);
    network->execute("INIT Stock 1;\n");
    cNodeQueue& stock = *network->findElement<cNodeQueue>("Stock");
    const cResPtr part = takeFrom(stock);
    sendBurst(frame, {part});
    const std::uint32_t whileListed = part.holderCount();

    sendBurst(frame, {});

    EXPECT_EQ(whileListed, 2U);
    EXPECT_EQ(part.holderCount(), 1U);
}

// ---- a compound among its own parts

TEST_F(cCompoundLifeTest, aCompoundCanStandAmongItsOwnPartsAndIsGoneWithTheNetwork) {
    sendBurst(frame, {});
    const cResPtr again = takeFrom(yard);
    sendBurst(frame, {again, newPlank()});
    const std::size_t parts = inYard(0).contents.size();
    const bool isItsOwnPart = heldOf(inYard(0).contents, house) == cResList{again};

    network.reset();

    EXPECT_EQ(parts, 2U);
    EXPECT_TRUE(isItsOwnPart);
    EXPECT_EQ(again.holderCount(), 1U);
}

TEST_F(cCompoundLifeTest, twoCompoundsCanStandInOneAnotherAndAreGoneWithTheNetwork) {
    cNodeAuxAssembler& other = network->addAssembler("Other", house);
    network->addLink("M1", other, yard);
    sendBurst(frame, {});
    sendBurst(other, {});
    const cResPtr mine = takeFrom(yard);
    const cResPtr theirs = takeFrom(yard);

    sendBurst(frame, {theirs});
    sendBurst(other, {mine});
    network.reset();

    EXPECT_EQ(mine.holderCount(), 1U);
    EXPECT_EQ(theirs.holderCount(), 1U);
}

TEST_F(cCompoundLifeTest, aCompoundAmongItsOwnPartsLetsGoOfItselfAtTheNextBurst) {
    sendBurst(frame, {});
    cResPtr again = takeFrom(yard);
    sendBurst(frame, {std::move(again)});

    sendBurst(frame, {});

    EXPECT_TRUE(inYard(0).contents.empty());
    EXPECT_EQ(yard.getContents().size(), 2U);
}

// ---- runs and replications

TEST_F(cCompoundLifeTest, aLaterReplicationStillSendsTheCompoundOfTheFirst) {
    network->simTime = 3.0;
    sendBurst(frame, {newPlank()});
    const cResPtr sent = yard.getContents()[0];

    network->resetRun();
    network->simTime = 1.0;
    sendBurst(frame, {});

    ASSERT_EQ(yard.getContents().size(), 1U);
    EXPECT_EQ(yard.getContents()[0], sent);
    EXPECT_EQ(inYard(0).getInstanceName(), "House_1");
    EXPECT_EQ(inYard(0).getBirthTime(), 3.0);
    EXPECT_TRUE(inYard(0).contents.empty());
}

TEST_F(cCompoundLifeTest, inALaterReplicationAnotherInstanceCanHaveTheNameOfTheCompound) {
    sendBurst(frame, {});
    network->resetRun();

    network->execute("INIT Yard 1;\n");
    sendBurst(frame, {});

    ASSERT_EQ(yard.getContents().size(), 2U);
    EXPECT_EQ(inYard(0).getInstanceName(), "House_1");
    EXPECT_EQ(inYard(1).getInstanceName(), "House_1");
    EXPECT_NE(yard.getContents()[0], yard.getContents()[1]);
}

TEST_F(cCompoundLifeTest, aResetKeepsThePartsInTheCompoundUntilTheNextBurst) {
    const cResPtr part = newPlank();
    sendBurst(frame, {part});

    network->resetRun();

    EXPECT_EQ(part.holderCount(), 2U);
    sendBurst(frame, {});
    EXPECT_EQ(part.holderCount(), 1U);
}

TEST_F(cCompoundLifeTest, aRunThatStopsWithTheCompoundOnTheCalendarIsFollowedByAnother) {
    cNodeQueue& stock = network->addQueue("Stock", plank);
    cNodeActCombi& build = network->addCombi("Build");
    stock.setInitialContentText("3");
    network->addLink("In", stock, build);
    network->addLink("ToFrame", build, frame, plank);
    build.setDurationText("1");
    sell.setDurationText("100");
    const std::string code =
        "MULTISIM 2;\nSIMULATECONDITION Sell.CurInst==3;\nADDTORESULTS built Build.TotInst;\n"
        "ADDTORESULTS sold Sell.CurInst;\n";
    cResPtr sent;
    network->onEventPoint = [&] {
        if (!yard.getContents().empty()) sent = yard.getContents().front();
    };

    for (int run = 0; run < 2; ++run) {
        network->run(code);

        EXPECT_EQ(network->runStatistics->getMeans().at(1), 3.0);
        EXPECT_EQ(network->runStatistics->getMeans().at(2), 3.0);
    }
    ASSERT_NE(sent, nullptr);
    EXPECT_EQ(sent.holderCount(), 2U);  // the Assembler and the test
    const cResList parts = heldOf(dynamic_cast<const cResCompound&>(*sent).contents, plank);
    ASSERT_EQ(parts.size(), 1U);  // the part of the last burst, which the compound keeps
    EXPECT_EQ(parts.front()->asInstance()->getInstanceName(), "Plank_3");
    EXPECT_EQ(parts.front().holderCount(), 2U);
}

TEST_F(cCompoundLifeTest, aNetworkIsDestroyedWithCompoundsInQueuesInstancesAndHoldings) {
    const cResPtr part = newPlank();
    const cResPtr open = newPlank();
    for (int i = 0; i < 2; ++i) sendBurst(frame, {part});
    const cResPtr sent = yard.getContents().at(0);
    sell.attempt();
    frame.flowBegin();
    frame.receive(*open);

    network.reset();

    EXPECT_EQ(part.holderCount(), 1U);
    EXPECT_EQ(open.holderCount(), 1U);
    EXPECT_EQ(sent.holderCount(), 1U);
}

}  // namespace
