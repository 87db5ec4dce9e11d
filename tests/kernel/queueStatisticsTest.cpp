#include "support/failureOf.h"
#include "support/queueTest.h"

#include <algorithm>
#include <cmath>

namespace {

class cQueueStatisticsTest : public cQueueTest {};

TEST_F(cQueueStatisticsTest, theMaximumGrowsOnlyWhenItIsPassed) {
    receiveSoil(4.0);
    pile.drawAmount(4.0);

    receiveSoil(4.0);

    EXPECT_EQ(pile.getAttribute("MaxCont"), 4.0);
    EXPECT_EQ(pile.getAttribute("TotCount"), 8.0);
}

TEST_F(cQueueStatisticsTest, theMinimumReads0WhateverIsDrawn) {
    receiveSoil(5.0);
    for (const double amount : {2.0, 9.0, -3.0, 1.0}) pile.drawAmount(amount);

    EXPECT_EQ(pile.getAttribute("MinCont"), 0.0);
}

TEST_F(cQueueStatisticsTest, aCharacterizedDrawLeavesTheMinimumToo) {
    const auto made = receiveTruck();

    yard.drawInstance(made);

    EXPECT_EQ(yard.getAttribute("MinCont"), 0.0);
}

TEST_F(cQueueStatisticsTest, averagesUseTheAreaAsOfTheLastChange) {
    receiveSoilAt(0.0, 5.0);
    network.simTime = 10.0;
    pile.drawAmount(2.0);
    network.simTime = 20.0;

    EXPECT_EQ(pile.getAttribute("AveCont"), 50.0 / 20.0);  // the segment since time 10 isn't in it
    EXPECT_EQ(pile.getAttribute("AveWait"), 50.0 / 5.0);

    pile.drawAmount(0.0);
    EXPECT_EQ(pile.getAttribute("AveCont"), (50.0 + 30.0) / 20.0);
    EXPECT_EQ(pile.getAttribute("AveWait"), (50.0 + 30.0) / 5.0);
}

TEST_F(cQueueStatisticsTest, aCharacterizedQueueAveragesLikewise) {
    const auto made = receiveTruck();
    receiveTruck();
    network.simTime = 10.0;
    yard.drawInstance(made);
    network.simTime = 40.0;

    EXPECT_EQ(yard.getAttribute("AveCont"), 20.0 / 40.0);
    EXPECT_EQ(yard.getAttribute("AveWait"), 20.0 / 2.0);
}

TEST_F(cQueueStatisticsTest, aDrawThatFindsNothingClosesTheSegmentToo) {
    receiveTruck();
    network.simTime = 10.0;

    yard.drawInstance(nullptr);

    EXPECT_EQ(yard.getAttribute("AveCont"), 1.0);
}

TEST_F(cQueueStatisticsTest, theAverageWaitIs0WhileEverythingHappenedAtTime0) {
    receiveSoil(5.0);
    pile.drawAmount(2.0);
    network.simTime = 20.0;

    EXPECT_EQ(pile.getAttribute("AveWait"), 0.0);
}

TEST_F(cQueueStatisticsTest, theAverageWaitIsNotANumberWhenNothingCameIn) {
    network.simTime = 3.0;
    pile.drawAmount(1.0);

    EXPECT_TRUE(std::isnan(pile.getAttribute("AveWait")));
}

TEST_F(cQueueStatisticsTest, theAverageContentIsNotANumberAtTime0) {
    receiveSoil(5.0);

    EXPECT_TRUE(std::isnan(pile.getAttribute("AveCont")));
}

TEST_F(cQueueStatisticsTest, theAverageContentIs0WhenNothingCameIn) {
    EXPECT_EQ(pile.getAttribute("AveCont"), 0.0);
    EXPECT_EQ(pile.getAttribute("AveWait"), 0.0);
}

TEST_F(cQueueStatisticsTest, nothingRecordsTheLastAmount) {
    receiveSoil(5.0);

    EXPECT_EQ(pile.getAttribute("LastAmtReceived"), 0.0);
}

class cQueueKeywordTest : public cQueueTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cQueueKeywordTest, isUnknownAndNamedTogetherWithTheQueue) {
    const cException failure = failureOf([&] { pile.getAttribute(GetParam()); });

    EXPECT_EQ(failure.code, 0);
    EXPECT_EQ(failure.message, std::string("Invalid keyword ") + GetParam());
    EXPECT_EQ(failure.location, "In queue Pile");
    EXPECT_EQ(failure.expressionText, "");
}

INSTANTIATE_TEST_SUITE_P(unknown, cQueueKeywordTest,
                         ::testing::Values("", "curcount", "CurCount ", "MaxCount", "MinCount", "AveCount", "Nope"));

TEST_F(cQueueStatisticsTest, resetEmptiesTheQueueAndItsStatistics) {
    receiveSoilAt(0.0, 5.0);
    network.simTime = 10.0;
    pile.drawAmount(1.0);

    pile.resetElement();

    for (const char* keyword : {"CurCount", "TotCount", "MinCont", "MaxCont", "AveWait", "AveCont"})
        EXPECT_EQ(pile.getAttribute(keyword), 0.0) << keyword;
    ASSERT_EQ(pile.getContents().size(), 1U);
    EXPECT_EQ(pile.getContents().front()->quantity(), 0.0);
}

TEST_F(cQueueStatisticsTest, theInitialContentCountsAsReceivedAtTime0) {
    pile.setInitialContentText("9");
    dig.setDurationText("1");

    network.run("SIMULATECONDITION SimTime>=1;\n");

    const std::vector<double> means = network.runStatistics->getMeans();
    const std::vector<std::string> names = network.runStatistics->columnNames();
    const auto valueOf = [&](const std::string& name) {
        return means.at(static_cast<std::size_t>(std::ranges::find(names, name) - names.begin()));
    };
    EXPECT_EQ(valueOf("Pile.TotCount"), 9.0);
    EXPECT_EQ(valueOf("Pile.MaxCont"), 9.0);
    EXPECT_EQ(valueOf("Pile.CurCount"), 0.0);
    EXPECT_EQ(valueOf("Pile.AveWait"), 0.0);
}

}  // namespace
