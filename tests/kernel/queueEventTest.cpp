#include "support/failureOf.h"
#include "support/queueTest.h"

namespace {

using cTexts = std::vector<std::string>;

class cQueueEventTest : public cQueueTest {};

TEST_F(cQueueEventTest, anEntryLeavesABareLineFeedInTheTraceThenAnEventPointThenItsCode) {
    network.execute("ONENTRY Pile POST \"%f\" Pile.CurCount;\n");
    network.onEventPoint = [&] { network.messages.push_back("event behind " + network.traceLines().back()); };

    receiveSoil(3.0);

    EXPECT_EQ(network.messages, (cTexts{"event behind \n", "3.000000"}));
}

TEST_F(cQueueEventTest, entryCodeHasTheResourceThatCameIn) {
    network.execute("ONENTRY Yard POST in;\n");
    const cRes* seen = nullptr;
    network.onMessage = [&](const std::string&) { seen = network.symbols->currentResource; };

    const auto made = receiveTruck();

    EXPECT_EQ(seen, made.get());
    EXPECT_EQ(network.symbols->currentResource, nullptr);
}

TEST_F(cQueueEventTest, thereIsNoCurrentResourceAfterEntryCodeThatFailed) {
    network.execute("ONENTRY Yard INIT Nope 1;\n");

    failureOf([&] { receiveTruck(); });

    EXPECT_EQ(network.symbols->currentResource, nullptr);
    EXPECT_TRUE(network.symbols->getResourceStack().empty());
}

TEST_F(cQueueEventTest, entryCodeOfAnAmountHasItTooButNothingOnTheStack) {
    network.execute("ONENTRY Pile POST in;\n");
    double seen = 0.0;
    std::size_t onStack = 9;
    network.onMessage = [&](const std::string&) {
        seen = network.symbols->currentResource->quantity();
        onStack = network.symbols->getResourceStack().size();
    };

    receiveSoil(3.0);

    EXPECT_EQ(seen, 3.0);
    EXPECT_EQ(onStack, 0U);
}

TEST_F(cQueueEventTest, theResourceStaysOnTheStackWhileTheEntryCodeRuns) {
    network.execute("ONENTRY Yard POST in;\n");
    const cRes* inHand = nullptr;
    network.onMessage = [&](const std::string&) { inHand = network.resourceInHand(); };

    const auto made = receiveTruck();

    EXPECT_EQ(inHand, made.get());
}

TEST_F(cQueueEventTest, theMaximumIsTakenBehindTheEntryCode) {
    network.execute("ONENTRY Pile POST in;\n");
    double seen = 9.0;
    network.onMessage = [&](const std::string&) { seen = pile.getAttribute("MaxCont"); };

    receiveSoil(3.0);

    EXPECT_EQ(seen, 0.0);
    EXPECT_EQ(pile.getAttribute("MaxCont"), 3.0);
}

TEST_F(cQueueEventTest, aDrawIsRecordedWithTheCountsBehindItAndThenComesAnEventPoint) {
    receiveSoil(9.0);
    network.simTime = 7.0;
    network.onEventPoint = [&] { network.messages.push_back(network.traceLines().back()); };

    pile.drawAmount(5.0);

    EXPECT_EQ(network.messages, cTexts{"7.00,ONDRAWFROM,Pile,,,,4.00,9.00,\n"});
}

TEST_F(cQueueEventTest, aDrawRunsNoCode) {
    receiveSoil(9.0);
    network.execute("ONENTRY Pile POST in;\n");

    pile.drawAmount(5.0);

    EXPECT_TRUE(network.messages.empty());
}

TEST_F(cQueueEventTest, aCharacterizedDrawIsRecordedWhetherItFindsSomethingOrNot) {
    const auto made = receiveTruck();
    network.trace.restart();

    yard.drawInstance(made);
    yard.drawInstance(made);

    const std::string line = "0.00,ONDRAWFROM,Yard,,,,0.00,1.00,\n";
    EXPECT_EQ(network.tracedLines(), (cTexts{line, line}));
}

}  // namespace
