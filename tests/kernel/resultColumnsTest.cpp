#include "kernel/resultColumns.h"

#include "support/recordingReceiver.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

std::vector<std::string> suffixesOf(const cNetworkElement& element) {
    const auto suffixes = columnSuffixes(element);
    return {suffixes.begin(), suffixes.end()};
}

/// A queue that has seen 5, then 3, and an activity with two instances of different lengths.
class cResultColumnsTest : public ::testing::Test {
protected:
    void SetUp() override {
        queue.receive(*makeCounted<cResGen>(queue.getResType(), 5.0));
        network.simTime = 10.0;
        queue.drawAmount(2.0);
        network.simTime = 20.0;
        combi.startInstance({}, 0.0, 4.0);
        combi.startInstance({}, 3.0, 6.0);
    }

    cTestNetwork network;
    cNodeQueue& queue = network.addQueue("Q", network.addGenericType("Soil"));
    cNodeActCombi& combi = network.addCombi("C");
};

TEST_F(cResultColumnsTest, aQueueHasSix) {
    EXPECT_EQ(suffixesOf(queue),
              (std::vector<std::string>{".CurCount", ".TotCount", ".AveWait", ".AveCont", ".MinCont", ".MaxCont"}));
}

TEST_F(cResultColumnsTest, anActivityHasNine) {
    EXPECT_EQ(suffixesOf(combi), (std::vector<std::string>{".TotInst", ".AveDur", ".SDDur", ".MinDur", ".MaxDur",
                                                           ".AveInt", ".SDInt", ".MinInt", ".MaxInt"}));
}

TEST_F(cResultColumnsTest, otherElementsHaveNone) {
    std::vector<std::string> log;
    cLink link;
    cRecordingReceiver node("Node", log);
    std::vector<double> row{7.0};

    appendColumnValues(link, row);
    appendColumnValues(node, row);

    EXPECT_TRUE(columnSuffixes(link).empty());
    EXPECT_TRUE(columnSuffixes(node).empty());
    EXPECT_EQ(row, std::vector<double>{7.0});
}

TEST_F(cResultColumnsTest, theFiguresOfAQueueStandInTheOrderOfItsColumns) {
    std::vector<double> row{7.0};

    appendColumnValues(queue, row);

    EXPECT_EQ(row, (std::vector<double>{7.0, 3.0, 5.0, 50.0 / 5.0, 50.0 / 20.0, 0.0, 5.0}));
}

TEST_F(cResultColumnsTest, theFiguresOfAnActivityStandInTheOrderOfItsColumns) {
    const double infinity = std::numeric_limits<double>::infinity();
    std::vector<double> row;

    appendColumnValues(combi, row);

    EXPECT_EQ(row, (std::vector<double>{2.0, 5.0, std::sqrt(2.0), 4.0, 6.0, infinity, infinity, 3.0, 3.0}));
}

}  // namespace
