#include "kernel/queue.h"

#include "support/failureOf.h"
#include "support/queueTest.h"

namespace {

/// A queue that counts how often it would be drawn anew.
class cDrawnQueue : public cNodeQueue {
public:
    void redrawQueue() override { ++redraws; }

    int redraws = 0;
};

// ---- what comes in

TEST_F(cQueueTest, amountsAddUp) {
    receiveSoil(2.5);
    receiveSoil(0.25);

    EXPECT_EQ(pile.getCurCount(), 2.75);
    EXPECT_EQ(pile.getAttribute("TotCount"), 2.75);
    ASSERT_EQ(pile.getContents().size(), 1U);
    EXPECT_EQ(pile.getContents().front()->quantity(), 2.75);
}

TEST_F(cQueueTest, anAmountThatComesInStaysAsItIs) {
    const auto load = makeCounted<cResGen>(&soil, 2.0);
    receiveSoil(3.0);

    pile.receive(*load);

    EXPECT_EQ(load->getAmount(), 2.0);
}

TEST_F(cQueueTest, resourcesCountOneEach) {
    receiveTruck();
    receiveTruck();

    EXPECT_EQ(yard.getCurCount(), 2.0);
    EXPECT_EQ(yard.getAttribute("TotCount"), 2.0);
    EXPECT_EQ(yard.getContents().size(), 2U);
}

TEST_F(cQueueTest, aResourceKnowsWhereItWaitsAndSinceWhen) {
    network.simTime = 7.0;

    const auto made = receiveTruck();

    EXPECT_EQ(made->timeIn, 7.0);
}

TEST_F(cQueueTest, aQueueWithoutOutLinksReceivesAndCounts) {
    cNodeQueue& dump = network.addQueue("Dump", soil);

    dump.receive(*makeCounted<cResGen>(&soil, 3.0));
    dump.flowSettle();
    const double drawn = dump.drawAmount(1.0);

    EXPECT_EQ(drawn, 1.0);
    EXPECT_EQ(dump.getCurCount(), 2.0);
}

TEST_F(cQueueTest, aQueueWithoutATypeTakesNothingIn) {
    cNodeQueue queue;
    network.simTime = 3.0;

    queue.receive(*makeCounted<cResGen>(&soil, 3.0));

    EXPECT_EQ(queue.getCurCount(), 0.0);
    EXPECT_EQ(queue.getAttribute("TotCount"), 0.0);
    EXPECT_TRUE(queue.getContents().empty());
}

TEST_F(cQueueTest, aCharacterizedResourceIsRefusedByAGenericQueue) {
    const cException failure = failureOf([&] { pile.receive(*makeCounted<cResCompound>(&truck)); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_TRUE(failure.message.starts_with("Queue ")) << failure.message;
    EXPECT_NE(failure.message.find("Pile"), std::string::npos);
    EXPECT_NE(failure.message.find("Soil"), std::string::npos);
}

TEST_F(cQueueTest, anAmountIsRefusedByACharacterizedQueue) {
    const cException failure = failureOf([&] { yard.receive(*makeCounted<cResGen>(&soil, 1.0)); });

    EXPECT_EQ(failure.code, 2);
    EXPECT_TRUE(failure.message.starts_with("Queue ")) << failure.message;
    EXPECT_NE(failure.message.find("Yard"), std::string::npos);
    EXPECT_NE(failure.message.find("Truck"), std::string::npos);
    EXPECT_TRUE(yard.getContents().empty());
}

TEST_F(cQueueTest, anAmountWithoutATypeIsRefusedByACharacterizedQueue) {
    const cException failure = failureOf([&] { yard.receive(*makeCounted<cResGen>(nullptr, 1.0)); });

    EXPECT_EQ(failure.code, 2);
}

// ---- what goes out

TEST_F(cQueueTest, aDrawGivesNoMoreThanIsThere) {
    receiveSoil(5.0);

    EXPECT_EQ(pile.drawAmount(7.0), 5.0);

    EXPECT_EQ(pile.getCurCount(), 0.0);
    EXPECT_EQ(pile.getContents().front()->quantity(), 0.0);
}

TEST_F(cQueueTest, aDrawTakesWhatIsAskedFor) {
    receiveSoil(5.0);

    EXPECT_EQ(pile.drawAmount(1.5), 1.5);

    EXPECT_EQ(pile.getCurCount(), 3.5);
    EXPECT_EQ(pile.getAttribute("TotCount"), 5.0);
}

TEST_F(cQueueTest, aResourceIsTakenOutFromAnywhereAndTheGapCloses) {
    receiveTruck();
    const auto second = receiveTruck();
    receiveTruck();

    EXPECT_EQ(yard.drawInstance(second), second);

    EXPECT_EQ(trucksInOrder(), (std::vector<int>{1, 3}));
    EXPECT_EQ(yard.getCurCount(), 2.0);
}

TEST_F(cQueueTest, aResourceThatIsNotThereIsNotGiven) {
    const auto first = receiveTruck();
    yard.drawInstance(first);

    EXPECT_EQ(yard.drawInstance(first), nullptr);

    EXPECT_EQ(yard.getCurCount(), 0.0);
}

TEST_F(cQueueTest, aResourceThatStandsTwiceIsDrawnOnceAtATime) {
    const auto made = receiveTruck();
    yard.receive(*made);
    EXPECT_EQ(yard.getCurCount(), 2.0);
    EXPECT_EQ(made.holderCount(), 3U);

    EXPECT_EQ(yard.drawInstance(made), made);
    EXPECT_EQ(yard.getContents(), std::deque<cResPtr>{made});
    EXPECT_EQ(yard.drawInstance(made), made);

    EXPECT_TRUE(yard.getContents().empty());
    EXPECT_EQ(made.holderCount(), 1U);
}

TEST_F(cQueueTest, aResourceThatStandsTwiceIsForgottenCleanly) {
    const auto made = receiveTruck();
    yard.receive(*made);
    ASSERT_EQ(made.holderCount(), 3U);

    yard.resetElement();

    EXPECT_EQ(made.holderCount(), 1U);
}

// ---- who is woken

TEST_F(cQueueTest, aDrawnAmountWakesTheCombisBehind) {
    pile.drawAmount(1.0);

    EXPECT_TRUE(dig.mayAttempt());
    EXPECT_FALSE(haul.mayAttempt());
}

TEST_F(cQueueTest, aSuccessfulCharacterizedDrawWakesNobody) {
    yard.drawInstance(receiveTruck());

    EXPECT_FALSE(haul.mayAttempt());
}

TEST_F(cQueueTest, aCharacterizedDrawThatFindsNothingWakesTheCombisBehind) {
    yard.drawInstance(makeCounted<cResCompound>(&truck));

    EXPECT_TRUE(haul.mayAttempt());
}

TEST_F(cQueueTest, whatComesInWakesNobodyUntilTheFiringIsOver) {
    pile.flowBegin();
    receiveSoil(3.0);
    pile.flowEnd();
    EXPECT_FALSE(dig.mayAttempt());

    pile.flowSettle();

    EXPECT_TRUE(dig.mayAttempt());
}

TEST_F(cQueueTest, everyCombiBehindIsWoken) {
    network.addLink("L3", pile, haul);

    pile.flowSettle();

    EXPECT_TRUE(dig.mayAttempt());
    EXPECT_TRUE(haul.mayAttempt());
}

TEST_F(cQueueTest, everyChangeIsDrawnAnew) {
    cDrawnQueue drawn;
    drawn.setResType(&soil);

    drawn.receive(*makeCounted<cResGen>(&soil, 3.0));
    drawn.drawAmount(1.0);
    EXPECT_EQ(drawn.redraws, 2);

    drawn.setResType(&truck);
    const auto made = makeCounted<cResCompound>(&truck);
    drawn.receive(*made);
    drawn.drawInstance(made);
    drawn.drawInstance(made);
    EXPECT_EQ(drawn.redraws, 5);
}

// ---- type

TEST_F(cQueueTest, aNewTypeIsRegisteredAndEmptiesTheContent) {
    receiveSoil(5.0);

    pile.setResType(&truck);

    EXPECT_EQ(pile.getResType(), &truck);
    EXPECT_TRUE(isCharacterized(pile.getResType()));
    EXPECT_TRUE(pile.getContents().empty());
    EXPECT_EQ(truck.getHolders().back(), &pile);
}

TEST_F(cQueueTest, aGenericTypeBringsAnEmptyAmount) {
    receiveTruck();

    yard.setResType(&soil);

    EXPECT_TRUE(isGeneric(yard.getResType()));
    ASSERT_EQ(yard.getContents().size(), 1U);
    EXPECT_EQ(yard.getContents().front()->quantity(), 0.0);
    EXPECT_EQ(yard.getContents().front()->getResType(), &soil);
}

TEST_F(cQueueTest, theTypeThatItHasChangesNothing) {
    receiveSoil(5.0);
    const std::size_t holders = soil.getHolders().size();

    pile.setResType(&soil);

    EXPECT_EQ(pile.getContents().front()->quantity(), 5.0);
    EXPECT_EQ(soil.getHolders().size(), holders);
}

TEST_F(cQueueTest, aTypeThatIsDestroyedLeavesAnUsableQueueWithoutAType) {
    receiveSoil(5.0);

    network.resourceTypes.erase("Soil");

    EXPECT_EQ(pile.getResType(), nullptr);
    EXPECT_NO_THROW(pile.receive(*makeCounted<cResGen>(nullptr, 1.0)));
    EXPECT_EQ(pile.getCurCount(), 5.0);
    pile.resetElement();
    EXPECT_TRUE(pile.getContents().empty());
}

TEST_F(cQueueTest, aTypeThatIsReplacedWhileResourcesWaitLeavesNothingDangling) {
    receiveTruck();
    auto replacement = std::make_unique<cResTypeCompound>("Truck");

    truck.moveHoldersTo(replacement.get());
    network.resourceTypes["Truck"] = std::move(replacement);

    EXPECT_EQ(yard.getResType(), network.findResourceType("Truck"));
    EXPECT_TRUE(yard.getContents().empty());
}

// ---- reset

TEST_F(cQueueTest, resetDestroysWhatWaits) {
    const cResPtr waiting = receiveTruck();
    ASSERT_EQ(waiting.holderCount(), 2U);

    yard.resetElement();

    EXPECT_EQ(waiting.holderCount(), 1U);
    EXPECT_TRUE(yard.getContents().empty());
}

TEST_F(cQueueTest, resetForgetsTheEntryCodeAndKeepsTheTexts) {
    network.execute("ONENTRY Pile POST in;\n");
    pile.setOrderKeyText("5");
    pile.setInitialContentText("6");

    pile.resetElement();
    receiveSoil(1.0);

    EXPECT_TRUE(network.messages.empty());
    EXPECT_EQ(pile.getOrderKeyText(), "5");
    EXPECT_EQ(pile.getInitialContentText(), "6");
}

TEST_F(cQueueTest, aNewQueueStartsWithNothing) {
    const cNodeQueue queue;

    EXPECT_EQ(queue.getInitialContentText(), "0");
    EXPECT_EQ(queue.evaluateInitialContent(), 0.0);
    EXPECT_EQ(queue.getResType(), nullptr);
    EXPECT_FALSE(queue.isReserved());
}

TEST_F(cQueueTest, entryCodeRunsInTheFirstReplicationOnly) {
    pile.setInitialContentText("9");

    network.run("MULTISIM 3;\nONENTRY Pile POST in;\n");

    EXPECT_EQ(network.messages, (std::vector<std::string>{"in "}));
}

}  // namespace
