#include "support/burst.h"
#include "support/failureOf.h"
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
    /// The parts of a compound, by address.
    static std::vector<cResPtr> partsOf(const cResCompound& compound) {
        std::vector<cResPtr> parts;
        for (const auto& [type, part] : compound.contents) parts.push_back(part);
        return parts;
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
    EXPECT_EQ(partsOf(inYard(0)), std::vector<cResPtr>{later});
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
    cResPtr part = newPlank();
    const std::weak_ptr<cRes> watched = part;
    sendBurst(frame, {std::move(part)});
    const bool goneWhileListed = watched.expired();

    sendBurst(frame, {});

    EXPECT_FALSE(goneWhileListed);
    EXPECT_TRUE(watched.expired());
}

TEST_F(cCompoundLifeTest, anActivityThatEndsWithoutALinkDestroysNoCompoundThatItsAssemblerKeeps) {
    cResPtr part = newPlank();
    const std::weak_ptr<cRes> watchedPart = part;
    sendBurst(frame, {std::move(part)});
    const std::weak_ptr<cRes> watched = yard.getContents()[0];

    sell.attempt();
    network->advanceClock();

    EXPECT_EQ(yard.getCurCount(), 0.0);
    EXPECT_FALSE(watched.expired());
    EXPECT_FALSE(watchedPart.expired());
    sendBurst(frame, {});
    EXPECT_EQ(yard.getContents().at(0), watched.lock());
}

TEST_F(cCompoundLifeTest, aCompoundThatOutlivesItsAssemblerIsEmpty) {
    cResPtr part = newPlank();
    const std::weak_ptr<cRes> watchedPart = part;
    sendBurst(frame, {std::move(part)});

    network->elements.erase("Frame");

    EXPECT_TRUE(watchedPart.expired());
    ASSERT_EQ(yard.getContents().size(), 1U);
    EXPECT_EQ(inYard(0).getInstanceName(), "House_1");
    EXPECT_TRUE(inYard(0).contents.empty());
}

TEST_F(cCompoundLifeTest, anInstanceThatIsAPartLeavesTheListsByNameWhenItIsGone) {
    network->addQueue("Stock", plank);
    network->execute("INIT Stock 1;\n");
    cNodeQueue& stock = *network->findElement<cNodeQueue>("Stock");
    sendBurst(frame, {takeFrom(stock)});
    const bool listed = network->resources.contains("Plank_1");

    sendBurst(frame, {});

    EXPECT_TRUE(listed);
    EXPECT_TRUE(network->resources.empty());
    EXPECT_TRUE(plank.instances.empty());
}

// ---- a compound among its own parts

TEST_F(cCompoundLifeTest, aCompoundCanStandAmongItsOwnPartsAndIsGoneWithTheNetwork) {
    sendBurst(frame, {});
    cResPtr again = takeFrom(yard);
    const std::weak_ptr<cRes> watched = again;
    sendBurst(frame, {again, newPlank()});
    const std::size_t parts = inYard(0).contents.size();
    const bool isItsOwnPart = inYard(0).contents.find(&house)->second == again;

    again.reset();
    network.reset();

    EXPECT_EQ(parts, 2U);
    EXPECT_TRUE(isItsOwnPart);
    EXPECT_TRUE(watched.expired());
}

TEST_F(cCompoundLifeTest, twoCompoundsCanStandInOneAnotherAndAreGoneWithTheNetwork) {
    cNodeAuxAssembler& other = network->addAssembler("Other", house);
    network->addLink("M1", other, yard);
    sendBurst(frame, {});
    sendBurst(other, {});
    cResPtr mine = takeFrom(yard);
    cResPtr theirs = takeFrom(yard);
    const std::weak_ptr<cRes> watchedMine = mine;
    const std::weak_ptr<cRes> watchedTheirs = theirs;

    sendBurst(frame, {std::move(theirs)});
    sendBurst(other, {std::move(mine)});
    network.reset();

    EXPECT_TRUE(watchedMine.expired());
    EXPECT_TRUE(watchedTheirs.expired());
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
    const std::weak_ptr<cRes> watched = yard.getContents()[0];

    network->resetRun();
    network->simTime = 1.0;
    sendBurst(frame, {});

    ASSERT_EQ(yard.getContents().size(), 1U);
    EXPECT_EQ(yard.getContents()[0], watched.lock());
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
    EXPECT_EQ(network->resources.at("House_1"), &inYard(0));
}

TEST_F(cCompoundLifeTest, aResetKeepsThePartsInTheCompoundUntilTheNextBurst) {
    cResPtr part = newPlank();
    const std::weak_ptr<cRes> watchedPart = part;
    sendBurst(frame, {std::move(part)});

    network->resetRun();

    EXPECT_FALSE(watchedPart.expired());
    sendBurst(frame, {});
    EXPECT_TRUE(watchedPart.expired());
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

    for (int run = 0; run < 2; ++run) {
        network->run(code);

        EXPECT_EQ(network->runStatistics->getMeans().at(1), 3.0);
        EXPECT_EQ(network->runStatistics->getMeans().at(2), 3.0);
    }
    ASSERT_EQ(network->resources.size(), 1U);  // the part of the last burst, which the compound keeps
    EXPECT_TRUE(network->resources.contains("Plank_3"));
}

TEST_F(cCompoundLifeTest, aNetworkIsDestroyedWithCompoundsInQueuesInstancesAndHoldings) {
    cResPtr part = newPlank();
    cResPtr open = newPlank();
    const std::weak_ptr<cRes> watchedPart = part;
    const std::weak_ptr<cRes> watchedOpen = open;
    for (int i = 0; i < 2; ++i) sendBurst(frame, {part});
    part.reset();
    sell.attempt();
    frame.flowBegin();
    frame.receive(std::move(open));

    network.reset();

    EXPECT_TRUE(watchedPart.expired());
    EXPECT_TRUE(watchedOpen.expired());
}

}  // namespace
