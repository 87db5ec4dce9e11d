#include "kernel/resultText.h"

#include "support/testNetwork.h"

#include <gtest/gtest.h>

namespace {

/// The results of a run that ended at time 20: queue Pile has had 5 of Soil, then 3; Dig lasted 4 and 6.
class cResultTextTest : public ::testing::Test {
protected:
    void SetUp() override {
        network.execute("ADDTORESULTS tons 1234567;\nADDTORESULTS cost 0.125;\n");
        pile.receive(*makeCounted<cResGen>(pile.getResType(), 5.0));
        network.simTime = 10.0;
        pile.drawAmount(2.0);
        network.simTime = 20.0;
        dig.startInstance({}, 0.0, 4.0);
        dig.startInstance({}, 3.0, 6.0);
        network.runStatistics->resetResults();
    }

    void gather() { network.runStatistics->gatherReplication(); }

    cTestNetwork network;
    cNodeQueue& pile = network.addQueue("Pile", network.addGenericType("Soil"));
    cNodeActCombi& dig = network.addCombi("Dig");
};

TEST_F(cResultTextTest, aSingleRunIsCalledSo) {
    gather();

    EXPECT_EQ(resultTitle(network), "Single Simulation Results");
    EXPECT_EQ(resultLabel(network), "Simulation has ended. \nSimTime = 20\ncost : 0.125\ntons : 1.23457e+06\n");
}

TEST_F(cResultTextTest, manyRunsAreCalledSoAndGiveTheirMeans) {
    network.replications = 2;
    gather();
    network.simTime = 21.0;
    gather();

    EXPECT_EQ(resultTitle(network), "Multiple Simulation Results");
    EXPECT_EQ(resultLabel(network),
              "The following results are the averages of multiple simulation runs. \nAverage SimTime = 20.5\n"
              "cost : 0.125\ntons : 1.23457e+06\n");
}

TEST_F(cResultTextTest, theQueueTableHasTwoDecimals) {
    gather();

    const cResultTable table = queueTable(network);

    EXPECT_EQ(table.headings,
              (std::vector<std::string>{"Queue\nName", "Resource\nType", "Current\nCount", "Total\nCount",
                                        "Average\nWait", "Average\nContent", "Minimum\nContent", "Maximum\nContent"}));
    ASSERT_EQ(table.rows.size(), 1U);
    EXPECT_EQ(table.rows.at(0),
              (std::vector<std::string>{"Pile", "Soil", "3.00", "5.00", "10.00", "2.50", "0.00", "5.00"}));
}

TEST_F(cResultTextTest, theActivityTableHasSixDigitsAndNoCurrentInstances) {
    gather();
    ASSERT_EQ(dig.getStatistics().curInst, 2);

    const cResultTable table = activityTable(network);

    EXPECT_EQ(table.headings, (std::vector<std::string>{"Activity\nName", "Total\nInstances", "Current\nInstances",
                                                        "Average\nDuration", "Std.Dev.\nDuration", "Minimum\nDuration",
                                                        "Maximum\nDuration", "Average\nInterval", "Std. Dev.\nInterval",
                                                        "Minimum\nInterval", "Maximumn\nInterval"}));
    ASSERT_EQ(table.rows.size(), 1U);
    EXPECT_EQ(table.rows.at(0),
              (std::vector<std::string>{"Dig", "2", "0", "5", "1.41421", "4", "6", "inf", "inf", "3", "3"}));
}

TEST_F(cResultTextTest, rowsFollowTheNamesOfTheElements) {
    network.addQueue("Apron", *network.findResourceType("Soil"));
    network.addCombi("Zap");
    network.runStatistics->prepare();
    gather();

    const cResultTable queues = queueTable(network);
    const cResultTable activities = activityTable(network);

    ASSERT_EQ(queues.rows.size(), 2U);
    EXPECT_EQ(queues.rows.at(0).at(0), "Apron");
    EXPECT_EQ(queues.rows.at(1).at(2), "3.00");  // Pile's, behind the columns of Apron and Dig
    ASSERT_EQ(activities.rows.size(), 2U);
    EXPECT_EQ(activities.rows.at(1),
              (std::vector<std::string>{"Zap", "0", "0", "0", "0", "1e+06", "-1", "0", "0", "1e+06", "-1"}));
}

TEST_F(cResultTextTest, aQueueWithoutATypeHasAnEmptyTypeName) {
    gather();
    network.resourceTypes.clear();

    EXPECT_EQ(queueTable(network).rows.at(0).at(1), "");
}

TEST_F(cResultTextTest, theTextOfASingleRunHoldsLabelAndBothTables) {
    gather();

    EXPECT_EQ(resultCsv(network),
              "Simulation has ended. \nSimTime = 20\ncost : 0.125\ntons : 1.23457e+06\n"
              "\n*QueueName*,*ResourceType*,*CurrentCount*,*TotalCount*,*AverageWait*,*AverageContent*,"
              "*MinimumContent*,*MaximumContent*\n"
              "Pile,Soil,3.00,5.00,10.00,2.50,0.00,5.00,\n"
              "\n*ActName*,*TotalInstances*,*CurrentInstances*,*AverageDuration*,*StdDevDuration*,*MinimumDuration*,"
              "*MaximumDuration*,*AverageInterval*,*StdDevInterval*,*MinimumInterval*,*MaximumInterval*\n"
              "Dig,2,0,5,1.41421,4,6,inf,inf,3,3,\n");
}

TEST_F(cResultTextTest, figuresThatAreNotNumbersAreShownAsSuch) {
    dig.startInstance({}, 7.0, 5.0);
    gather();

    const std::vector<std::string> row = activityTable(network).rows.at(0);

    EXPECT_EQ(row.at(7), "nan");
    EXPECT_EQ(row.at(8), "nan");
}

TEST_F(cResultTextTest, anElementThatCameAfterTheRunHasNoRow) {
    gather();
    network.addQueue("Zoo", *network.findResourceType("Soil"));

    EXPECT_EQ(queueTable(network).rows.size(), 1U);
}

TEST(cEmptyResultTextTest, aModelWithoutQueuesAndActivitiesHasEmptyTables) {
    cTestNetwork network;

    network.run();

    EXPECT_TRUE(queueTable(network).rows.empty());
    EXPECT_TRUE(activityTable(network).rows.empty());
    EXPECT_EQ(resultLabel(network), "Simulation has ended. \nSimTime = 0\n");
}

// ---- entries for other programs

std::string asText(const std::vector<cResultEntry>& entries) {
    std::string text;
    for (const cResultEntry& entry : entries)
        text += entry.key + (entry.isCount ? "=count " : "=") + std::to_string(entry.value) + '\n';
    return text;
}

TEST_F(cResultTextTest, entriesNameEveryColumnAndACountOfCurrentInstances) {
    gather();

    EXPECT_EQ(asText(resultEntries(network)),
              "SimTime=20.000000\ncost=0.125000\ntons=1234567.000000\nDig.TotInst=2.000000\nDig.AveDur=5.000000\n"
              "Dig.SDDur=1.414214\nDig.MinDur=4.000000\nDig.MaxDur=6.000000\nDig.AveInt=inf\nDig.SDInt=inf\n"
              "Dig.MinInt=3.000000\nDig.MaxInt=3.000000\nDig.CurInst=count 0.000000\nPile.CurCount=3.000000\n"
              "Pile.TotCount=5.000000\nPile.AveWait=10.000000\nPile.AveCont=2.500000\nPile.MinCont=0.000000\n"
              "Pile.MaxCont=5.000000\n");
}

TEST_F(cResultTextTest, thereAreNoEntriesBeforeAReplicationWasGathered) { EXPECT_TRUE(resultEntries(network).empty()); }

TEST_F(cResultTextTest, aLabelLikeASuffixIsPlainText) {
    network.resultExpressions = {{"Dig.AveDur", "7"}};
    network.runStatistics->prepare();
    gather();

    const std::vector<cResultEntry> entries = resultEntries(network);

    EXPECT_EQ(entries.at(1).key, "Dig.AveDur");
    EXPECT_EQ(entries.at(1).value, 7.0);
    EXPECT_EQ(entries.at(3).key, "Dig.AveDur");
    EXPECT_EQ(entries.at(3).value, 5.0);
}

}  // namespace
